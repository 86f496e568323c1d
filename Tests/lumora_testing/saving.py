# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""A Lumora that saves a month of history and a setting at the same moment, and what must then be on the disk."""

import json
import os
import pathlib
import signal
import time

from gi.repository import Gio, GLib

from lumora_testing.bundle import MENU, Lumora
from lumora_testing.descriptors import descriptors, expect_no_more
from lumora_testing.remote import RemoteLaptop, wait_for

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
    samples = (
        {
            "t": first + number * SPACING_SECONDS,
            "p": 20 + number // 7 % 80,
            "c": number % 300 < 140,
            "a": number % 300 < 150,
        }
        for number in range(SAMPLES)
    )
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
        if samples[: len(self.samples)] != self.samples:
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
        self.session = Gio.bus_get_sync(Gio.BusType.SESSION)
        wait_for(self._snooze_entry, "the menu")

    def save(self):
        """Have it write the settings and, as it ends, the history. It begins at once."""
        self._snooze()
        self.process.send_signal(signal.SIGTERM)

    def save_in_turn(self):
        """The same, but it has begun to write the settings before it is told to end; its exit code."""
        self.snooze()
        return self.end()

    def snooze(self):
        """Have it snooze, and wait until its menu says so."""
        before = self.menu(self.session)
        self._snooze()
        wait_for(lambda: self.menu(self.session) != before, "the snooze in the menu")

    def _snooze(self):
        self.session.call(
            self.item(),
            *MENU,
            "Event",
            GLib.Variant("(isvu)", (self._snooze_entry(), "clicked", GLib.Variant("i", 0), 0)),
            None,
            0,
            -1,
            None,
            None,
        )
        self.session.flush_sync()

    def expect_to_leave_no_file_open(self, refreshes=20):
        """Have the battery change that often."""
        laptop = RemoteLaptop()
        self.refresh(laptop, 2)
        before = descriptors(self.process.pid)
        self.refresh(laptop, refreshes)
        expect_no_more(self.process.pid, before)

    def refresh(self, laptop, times):
        """Have the battery change that often, and wait until Lumora shows it."""
        for number in range(times):
            percent = 41 + number % 2
            laptop.set_battery(percent=percent)
            wait_for(lambda: any(f"{percent}%" in label for label in self.menu(self.session).values()), f"{percent} %")

    def _snooze_entry(self):
        try:
            entries = self.menu(self.session)
        except GLib.Error:
            return None
        return next((number for number, label in entries.items() if "nooze" in label), None)


def start_and_end(bundle, refreshes=0):
    """Once as on every other day, perhaps with some refreshes; none leaves a file open."""
    with Saver(bundle) as saver:
        saver.wait_until_running()
        if refreshes:
            saver.expect_to_leave_no_file_open(refreshes)
        return saver.end()
