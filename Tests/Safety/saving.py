# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""A Lumora that saves a month of history and a setting at the same moment, and what must then be on the disk."""

import json
import os
import pathlib
import signal
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "EndToEnd"))

from gi.repository import Gio, GLib  # noqa: E402

from bundle import MENU, Lumora  # noqa: E402
from remote import wait_for  # noqa: E402

SAMPLES = 43_200
# A little less than thirty days, so that no sample is old enough to go.
SPACING_SECONDS = 59
SETTINGS = {"limit": 85, "lowSound": "Submarine", "quietEnabled": False, "kept by somebody else": [1, 2, 3]}


def folder(variable):
    """Lumora's folder below that of the environment's variable."""
    return pathlib.Path(os.environ[variable]) / "Lumora"


HISTORY = folder("XDG_DATA_HOME") / "history.json"
DEFAULTS = folder("XDG_CONFIG_HOME") / "defaults.json"


def prepare():
    """Lay a full history and some settings."""
    first = int(time.time()) - SAMPLES * SPACING_SECONDS
    samples = ({"t": first + number * SPACING_SECONDS, "p": 20 + number // 7 % 80, "c": number % 300 < 140,
                "a": number % 300 < 150} for number in range(SAMPLES))
    for file, content in ((HISTORY, list(samples)), (DEFAULTS, SETTINGS)):
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(json.dumps(content, separators=(",", ":")))


class Disk:
    """Both files as they were found; each next finding must be old or new, and whole."""

    def __init__(self):
        self.samples = json.loads(HISTORY.read_bytes())
        self.settings = json.loads(DEFAULTS.read_bytes())

    def look(self):
        """Check what is there now; whether the history and the settings are new ones."""
        samples, settings = json.loads(HISTORY.read_bytes()), json.loads(DEFAULTS.read_bytes())
        if samples[:len(self.samples)] != self.samples:
            raise AssertionError(f"of {len(self.samples)} samples, some of {len(samples)} are others")
        if {**settings, "snoozeUntil": 0} != {**SETTINGS, "snoozeUntil": 0}:
            raise AssertionError(f"the settings are {settings}")
        new = samples != self.samples, settings != self.settings
        self.samples, self.settings = samples, settings
        return new


def leftovers():
    """What lies beside the two files."""
    return [path.name for file in (HISTORY, DEFAULTS) for path in file.parent.iterdir() if path != file]


class Saver(Lumora):
    """A running Lumora, `with Saver(bundle) as saver`, that saves when it is told."""

    def wait_until_running(self):
        """Wait until its menu can be worked."""
        self._session = Gio.bus_get_sync(Gio.BusType.SESSION)
        wait_for(self._snooze_entry, 10, "the menu")

    def save(self):
        """Have it write the settings and, as it ends, the history. It begins at once."""
        self._session.call(self.item(), *MENU, "Event", GLib.Variant(
            "(isvu)", (self._snooze_entry(), "clicked", GLib.Variant("i", 0), 0)), None, 0, -1, None, None)
        self._session.flush_sync()
        self.process.send_signal(signal.SIGTERM)

    def _snooze_entry(self):
        try:
            entries = self.menu(self._session)
        except GLib.Error:
            return None
        return next((number for number, label in entries.items() if "nooze" in label), None)


def start_and_end(bundle):
    """Once as on every other day."""
    with Saver(bundle) as saver:
        saver.wait_until_running()
        return saver.end()
