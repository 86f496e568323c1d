# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The bundle under test, as a story starts it, looks at its files and ends it."""

import json
import os
import pathlib
import signal
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "Laptop"))

from gi.repository import Gio, GLib  # noqa: E402

from remote import wait_for  # noqa: E402

MENU = "/MenuBar", "com.canonical.dbusmenu"
TO_END_SECONDS = 10
REFRESH_SECONDS = 20


def forget():
    """Have no history and no settings, as before the first start."""
    for folder, file in (("XDG_DATA_HOME", "history.json"), ("XDG_CONFIG_HOME", "defaults.json")):
        (pathlib.Path(os.environ[folder]) / "Lumora" / file).unlink(missing_ok=True)


def start_again(bundle):
    """What a user does who looks for the popover; the exit code."""
    return subprocess.run([pathlib.Path(bundle) / "lumora"], timeout=TO_END_SECONDS).returncode


def windows(title):
    """The visible windows of that title."""
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{title}$"], capture_output=True, text=True)
    return found.stdout.split()


class Lumora:
    """A running Lumora: `with Lumora(bundle) as lumora`, `under` another command if wanted. On leaving it is gone."""

    def __init__(self, bundle, under=(), **environment):
        self._under = under
        self._patience = 10 if under else 1
        self._environment = {**os.environ, "G_DEBUG": "fatal-warnings", **environment}
        self._executable = pathlib.Path(bundle).resolve() / "lumora"
        self._history = pathlib.Path(os.environ["XDG_DATA_HOME"]) / "Lumora" / "history.json"
        self._defaults = pathlib.Path(os.environ["XDG_CONFIG_HOME"]) / "Lumora" / "defaults.json"
        self.process = None

    def __enter__(self):
        self.process = subprocess.Popen([*self._under, self._executable], env=self._environment)
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()

    def menu(self, session):
        """Its menu as its main loop answers now: the labels by their numbers. Raises while it has none."""
        _, (_, _, entries) = session.call_sync(self.item(), *MENU, "GetLayout", GLib.Variant(
            "(iias)", (0, -1, ["label"])), None, Gio.DBusCallFlags.NO_AUTO_START, 10_000, None).unpack()
        return {number: properties.get("label", "") for number, properties, _ in entries}

    def item(self):
        """The name of its item on the session bus."""
        return f"org.kde.StatusNotifierItem-{self.process.pid}-1"

    def end(self):
        """Ask it to end and give its exit code."""
        self.process.send_signal(signal.SIGTERM)
        return self.process.wait(TO_END_SECONDS * self._patience)

    def history(self):
        """The samples in the file, oldest first."""
        return json.loads(self._history.read_text()) if self._history.exists() else []

    def settings(self):
        """What stands in the file of settings."""
        return json.loads(self._defaults.read_text()) if self._defaults.exists() else {}

    def wait_until_saved(self, condition, what):
        """Wait until the last saved sample is as wanted."""
        wait_for(lambda: any(map(condition, self.history()[-1:])), REFRESH_SECONDS * self._patience, what)
