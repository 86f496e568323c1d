# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Every way in which Lumora ends: each saves the history and gives 0. Run it in the simulated laptop:
ending.py BUNDLE
"""

import os
import pathlib
import signal
import subprocess
import sys
import unittest

from lumora_testing.bundle import UNDER_GTK, Lumora, forget, killable_bus, start_again, windows
from lumora_testing.remote import PATIENCE_SECONDS, RemoteLaptop, wait_for

BUNDLE = sys.argv.pop()
APPLICATION = "org.lumora.Lumora"
HISTORY = pathlib.Path(os.environ["XDG_DATA_HOME"]) / "Lumora" / "history.json"


class Ending(unittest.TestCase):
    """Each time a Lumora that has something to save."""

    def setUp(self):
        RemoteLaptop().reset()

    def running(self, **environment):
        """A Lumora whose history is not in the file."""
        forget()
        lumora = self.enterContext(Lumora(BUNDLE, **environment))
        wait_for(lumora.history, "the first sample")
        HISTORY.unlink()
        return lumora

    def ends(self, lumora):
        """It ends by itself now, and well."""
        self.assertEqual(lumora.process.wait(PATIENCE_SECONDS), 0)
        self.assertEqual(len(lumora.history()), 1)

    def test_by_signals(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            lumora = self.running()
            lumora.process.send_signal(number)
            self.ends(lumora)

    def test_by_signals_with_its_windows_open(self):
        for number in (signal.SIGTERM, signal.SIGINT):
            lumora = self.running()
            subprocess.check_call(["gapplication", "action", APPLICATION, "settings"])
            wait_for(lambda: windows("Lumora Settings"), "the settings")
            self.assertEqual(start_again(BUNDLE), 0)
            wait_for(lambda: windows("Lumora"), "the popover")
            lumora.process.send_signal(number)
            self.ends(lumora)

    def test_by_the_action_of_its_desktop_entry(self):
        lumora = self.running()
        subprocess.check_call(["gapplication", "action", APPLICATION, "quit"])
        self.ends(lumora)

    def test_with_the_session(self):
        bus, address = self.enterContext(killable_bus())
        lumora = self.running(DBUS_SESSION_BUS_ADDRESS=address)
        bus.kill()
        self.ends(lumora)

    def test_with_the_display(self):
        lumora = self.running()
        self.assertEqual(start_again(BUNDLE), 0)
        wait_for(lambda: windows("Lumora"), "the popover")
        RemoteLaptop().kill("display")
        self.ends(lumora)

    def test_with_the_display_that_gtk_is_on_too(self):
        """Where Qt takes its looks from GTK, that may be the first to find the display gone."""
        lumora = self.running(**UNDER_GTK)
        self.assertEqual(start_again(BUNDLE), 0)
        wait_for(lambda: windows("Lumora"), "the popover")
        self.assertTrue(lumora.has_loaded("libgtk-3"))
        RemoteLaptop().kill("display")
        self.ends(lumora)

    def test_without_a_session(self):
        lumora = self.running(DBUS_SESSION_BUS_ADDRESS="unix:path=/nowhere")
        lumora.process.terminate()
        self.ends(lumora)


if __name__ == "__main__":
    unittest.main()
