# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The bundle under test, as a story starts it, looks at its files and ends it."""

import contextlib
import json
import os
import pathlib
import signal
import subprocess

from gi.repository import Gio, GLib

from lumora_testing.remote import PATIENCE_SECONDS, wait_for

MENU = "/MenuBar", "com.canonical.dbusmenu"
# As long as a click on the item may be the one that closed the popover, and a little longer.
DOUBLE_CLICK_SECONDS = 0.5
# Where Qt loads GTK, if the package is there that Debian recommends beside it.
UNDER_GTK = {"XDG_CURRENT_DESKTOP": "XFCE"}


def forget():
    """Have no history and no settings, as before the first start."""
    for folder, file in (("XDG_DATA_HOME", "history.json"), ("XDG_CONFIG_HOME", "defaults.json")):
        (pathlib.Path(os.environ[folder]) / "Lumora" / file).unlink(missing_ok=True)


@contextlib.contextmanager
def killable_bus():
    """A session bus of its own as a process, and its address."""
    command = ["dbus-daemon", "--session", "--nofork", "--print-address"]
    with subprocess.Popen(command, stdout=subprocess.PIPE, text=True) as bus:
        try:
            yield bus, bus.stdout.readline().strip()
        finally:
            bus.kill()


def running():
    """Whether a Lumora has its name on the session bus: until then another start would be the first one."""
    bus = Gio.bus_get_sync(Gio.BusType.SESSION, None)
    return bus.call_sync(
        "org.freedesktop.DBus",
        "/org/freedesktop/DBus",
        "org.freedesktop.DBus",
        "NameHasOwner",
        GLib.Variant("(s)", ("org.lumora.Lumora",)),
        None,
        0,
        10_000,
        None,
    ).unpack()[0]


def start_again(bundle):
    """What a user does who looks for the popover; the exit code. Waits until the first one can be found."""
    wait_for(running, "a running Lumora")
    return subprocess.run([pathlib.Path(bundle) / "lumora"], timeout=PATIENCE_SECONDS).returncode


def windows(title):
    """The visible windows of that title."""
    found = subprocess.run(
        ["xdotool", "search", "--onlyvisible", "--name", f"^{title}$"], capture_output=True, text=True
    )
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
        _, (_, _, entries) = session.call_sync(
            self.item(),
            *MENU,
            "GetLayout",
            GLib.Variant("(iias)", (0, -1, ["label"])),
            None,
            Gio.DBusCallFlags.NO_AUTO_START,
            10_000,
            None,
        ).unpack()
        return {number: properties.get("label", "") for number, properties, _ in entries}

    def state(self, session):
        """What its menu says in one line, nothing while it has none."""
        try:
            return " ".join(self.menu(session).values())
        except GLib.Error:
            return ""

    def item(self):
        """The name on the session bus under which it answers for its item."""
        return "org.lumora.Lumora"

    def end(self):
        """Ask it to end and give its exit code."""
        self.process.send_signal(signal.SIGTERM)
        return self.process.wait(PATIENCE_SECONDS * self._patience)

    def has_loaded(self, library):
        """Whether a library whose name begins so is in the process."""
        return f"/{library}" in pathlib.Path(f"/proc/{self.process.pid}/maps").read_text()

    def memory(self):
        """What it takes, in MiB: of what it shares with other programs its share."""
        rollup = pathlib.Path(f"/proc/{self.process.pid}/smaps_rollup").read_text()
        return int(rollup.partition("\nPss:")[2].split()[0]) / 1024

    def history(self):
        """The samples in the file, oldest first."""
        return json.loads(self._history.read_text()) if self._history.exists() else []

    def settings(self):
        """What stands in the file of settings."""
        return json.loads(self._defaults.read_text()) if self._defaults.exists() else {}

    def wait_until_saved(self, condition, what):
        """Wait until the last saved sample is as wanted."""
        wait_for(lambda: any(map(condition, self.history()[-1:])), what, PATIENCE_SECONDS * self._patience)
