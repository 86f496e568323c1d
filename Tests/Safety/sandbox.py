# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Lumora without a network, without devices, without rights, and with nothing to write to but its own folders:
it does all that it does elsewhere. And what it leaves is for its user alone. Run it in the simulated laptop:
sandbox.py UNIT BUNDLE
"""

import os
import pathlib
import re
import stat
import subprocess
import sys
import tempfile
import unittest

from gi.repository import Gio

from confine import landlock_version
from lumora_testing.bundle import Lumora, forget, windows
from lumora_testing.descriptors import descriptors, expect_no_more
from lumora_testing.remote import PATIENCE_SECONDS, RemoteLaptop, wait_for

UNIT, BUNDLE = sys.argv.pop(1), sys.argv.pop()
APPLICATION = "org.lumora.Lumora"
FOLDERS = [pathlib.Path(os.environ[name]) / "Lumora" for name in ("XDG_DATA_HOME", "XDG_CONFIG_HOME")]
CONFINED = [sys.executable, pathlib.Path(__file__).with_name("confine.py"), *FOLDERS, "--"]
MOST_EXPOSED = 1.5
INTRUDER = pathlib.Path(__file__).with_name("intruder.py")


class Confined(Lumora):
    """A Lumora behind closed doors."""

    def __enter__(self):
        for folder in FOLDERS:
            folder.mkdir(parents=True, exist_ok=True)
        self.process = subprocess.Popen([*CONFINED, self._executable], env=self._environment)
        return self


def mode(path):
    """Its permissions, as chmod has them."""
    return stat.S_IMODE(path.stat().st_mode)


class Sandbox(unittest.TestCase):
    """With nothing in the folders at first."""

    def setUp(self):
        self.laptop = RemoteLaptop()
        self.laptop.reset()
        forget()

    def test_the_doors_are_closed(self):
        for folder in FOLDERS:
            folder.mkdir(parents=True, exist_ok=True)
        which = "files" if landlock_version() else "no files"
        if which == "no files":
            print("there is no Landlock here: nothing can keep a program from files")
        for folder in FOLDERS:
            opened = subprocess.check_output([*CONFINED, sys.executable, INTRUDER, folder, which], text=True)
            self.assertEqual(opened, "")

    def leaves_no_file_open(self, lumora):
        """The battery changes; the first time makes what is kept."""
        bus, before = Gio.bus_get_sync(Gio.BusType.SESSION), None
        for percent in range(40, 60):
            self.laptop.set_battery(percent=percent)
            wait_for(lambda p=percent: f"{p}%" in lumora.state(bus), f"{percent} %")
            before = before or descriptors(lumora.process.pid)
        expect_no_more(lumora.process.pid, before)

    def test_does_everything_in_there(self):
        with Confined(BUNDLE) as lumora:
            wait_for(lumora.history, "the first sample")
            self.leaves_no_file_open(lumora)
            self.laptop.set_battery(percent=15)
            wait_for(lambda: len(self.laptop.notifications()) == 2, "the reminders")
            wait_for(lambda: len(self.laptop.sounds()) == 2, "their sounds")
            subprocess.check_call(["gapplication", "launch", APPLICATION])
            wait_for(lambda: windows("Lumora"), "the popover")
            subprocess.check_call(["gapplication", "action", APPLICATION, "settings"])
            wait_for(lambda: windows("Lumora Settings"), "the settings")
            subprocess.check_call(["gapplication", "action", APPLICATION, "quit"])
            self.assertEqual(lumora.process.wait(PATIENCE_SECONDS), 0)
            self.assertEqual(lumora.history()[-1]["p"], 15)

    def test_what_it_leaves_is_for_its_user_alone(self):
        for folder in FOLDERS:
            if folder.exists():
                folder.rmdir()
        before = os.umask(0)
        try:
            with Lumora(BUNDLE) as lumora:
                wait_for(lumora.history, "the first sample")
                self.laptop.set_battery(percent=15)
                number = wait_for(lambda: [sent["id"] for sent in self.laptop.notifications()][:1], "a reminder")
                wait_for(lambda: self.laptop.notifications()[0]["id"], "its id")
                self.laptop.press_action(self.laptop.notifications()[0]["id"])
                wait_for(lumora.settings, f"the snooze of {number}")
                self.assertEqual(lumora.end(), 0)
        finally:
            os.umask(before)
        for folder in FOLDERS:
            self.assertEqual(mode(folder), 0o700, folder)
            self.assertEqual([oct(mode(file)) for file in folder.iterdir()], ["0o600"], folder)

    def test_no_text_carries_markup(self):
        with Lumora(BUNDLE) as lumora:
            wait_for(lumora.history, "the first sample")
            self.laptop.set_battery(percent=15, model="<b>&amp;</b>")
            wait_for(lambda: len(self.laptop.notifications()) == 2, "the reminders")
            for sent in self.laptop.notifications():
                self.assertNotRegex(sent["summary"] + sent["body"], "[<>&]")

    def test_the_unit_closes_nearly_all_doors(self):
        with tempfile.TemporaryDirectory() as folder:
            told = subprocess.run(
                ["systemd-analyze", "security", "--offline=true", UNIT],
                check=True,
                text=True,
                capture_output=True,
                env={**os.environ, "XDG_RUNTIME_DIR": folder},
            ).stdout
        exposed = float(re.search(r"Overall exposure level.*: ([\d.]+)", told).group(1))
        print(f"exposure {exposed}")
        self.assertLessEqual(exposed, MOST_EXPOSED)


if __name__ == "__main__":
    unittest.main(verbosity=2)
