# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""A Wayland compositor that crashes after Lumora showed a window: all is saved and reminders go on; and where the
session ends with it, Lumora ends. Run it in the simulated laptop with sway: compositor.py BUNDLE
"""

import os
import pathlib
import signal
import subprocess
import sys
import time
import unittest

from gi.repository import Gio

from lumora_testing.bundle import DOUBLE_CLICK_SECONDS, UNDER_GTK, Lumora, forget, killable_bus, running
from lumora_testing.remote import PATIENCE_SECONDS, RemoteLaptop, wait_for
from lumora_testing.screen import wayland_screen

BUNDLE = sys.argv.pop()


def popover_shown():
    """Whether something lies over the empty screen, which is of one colour."""
    try:
        screen = wayland_screen()
    except subprocess.CalledProcessError:
        return False
    return len(set(screen.area(0, 0, screen.width, screen.height))) > 20


class Compositor(unittest.TestCase):
    """Each story has a compositor of its own, and a Lumora with a window and something to save."""

    def setUp(self):
        self.laptop = RemoteLaptop()
        self.laptop.reset()
        self.laptop.clear_notifications()
        self.addCleanup(self.laptop.start, "sway")
        self.addCleanup(self.laptop.kill, "sway")
        forget()

    def begin(self, **environment):
        """The Lumora, with its popover open."""
        self.environment = os.environ | environment
        self.lumora = self.enterContext(Lumora(BUNDLE, **environment))
        wait_for(self.lumora.history, "the first sample")
        wait_for(self.shown_by_another_start, "the popover")
        self.laptop.set_battery(percent=58)
        self.session = Gio.DBusConnection.new_for_address_sync(
            self.environment["DBUS_SESSION_BUS_ADDRESS"],
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION,
        )
        wait_for(lambda: "58%" in self.lumora.state(self.session), "58 %")
        self.assertFalse(self.is_saved())

    def shown_by_another_start(self):
        """Whether the popover is there then."""
        if not popover_shown():
            self.start_again()
        try:
            return wait_for(lambda: popover_shown(), "the popover", 5)
        except TimeoutError:
            return False

    def start_again(self):
        """As a user does who looks for the popover."""
        subprocess.run([pathlib.Path(BUNDLE) / "lumora"], env=self.environment, timeout=PATIENCE_SECONDS, check=True)

    def is_saved(self):
        """Whether all that the battery did is in the file."""
        return 58 in self.percents()

    def percents(self):
        """Of the samples in the file."""
        return [sample["p"] for sample in self.lumora.history()]

    def crash(self):
        """Kill the compositor, and wait until Lumora has saved and started anew, with a sample and a save."""
        before = self.percents()
        self.laptop.kill("sway")
        wait_for(lambda: len(self.percents()) >= len(before) + 2, "the whole history, and the first sample since")
        self.assertTrue(self.is_saved())
        wait_for(running, "a Lumora on the bus")

    def expect_to_go_on(self):
        """Still there, reminding, and with windows as soon as there is a compositor again."""
        self.laptop.set_battery(percent=15)
        wait_for(lambda: len(self.laptop.notifications()) == 2, "two reminders")
        self.laptop.start("sway")
        wait_for(self.shown_by_another_start, "the popover")
        self.assertIsNone(self.lumora.process.poll())
        self.assertEqual(self.lumora.end(), 0)

    def test_crashes_beside_the_open_popover(self):
        self.begin()
        self.crash()
        self.expect_to_go_on()

    def test_crashes_beside_the_open_popover_that_gtk_helps_with(self):
        self.begin(**UNDER_GTK)
        self.assertTrue(self.lumora.has_loaded("libgtk-3"))
        self.crash()
        self.expect_to_go_on()

    def test_crashes_after_the_popover_was_open(self):
        self.begin()
        self.start_again()
        wait_for(lambda: not popover_shown(), "the end of the popover")
        self.crash()
        self.expect_to_go_on()

    def test_crashes_twice(self):
        self.begin()
        self.crash()
        self.laptop.start("sway")
        wait_for(self.shown_by_another_start, "the popover")
        self.laptop.set_battery(percent=57)
        wait_for(lambda: "57%" in self.lumora.state(self.session), "57 %")
        self.crash()
        self.assertIn(57, self.percents())
        self.expect_to_go_on()

    def test_hangs_before_a_window_was_shown_and_after(self):
        self.lumora = self.enterContext(Lumora(BUNDLE, DISPLAY=""))
        self.environment = dict(os.environ)
        self.session = Gio.bus_get_sync(Gio.BusType.SESSION)
        wait_for(self.lumora.history, "the first sample")
        for percent in (58, 57):
            self.laptop.hang("sway")
            wait_for(running, "a Lumora on the bus")
            self.start_again()
            self.laptop.set_battery(percent=percent)
            wait_for(lambda: f"{percent}%" in self.lumora.state(self.session), "the menu")  # noqa: B023
            self.laptop.resume("sway")
            wait_for(self.shown_by_another_start, "the popover")
            self.start_again()
            wait_for(lambda: not popover_shown(), "the end of the popover")
            # What comes sooner may be meant for the one that is closed.
            time.sleep(DOUBLE_CLICK_SECONDS)
        self.assertEqual(self.lumora.end(), 0)

    def test_goes_with_the_bus(self):
        bus, address = self.enterContext(killable_bus())
        self.begin(DBUS_SESSION_BUS_ADDRESS=address)
        self.laptop.kill("sway")
        bus.kill()
        self.expect_to_end()

    def test_goes_with_the_bus_under_gtk(self):
        bus, address = self.enterContext(killable_bus())
        self.begin(DBUS_SESSION_BUS_ADDRESS=address, **UNDER_GTK)
        self.laptop.kill("sway")
        bus.kill()
        self.expect_to_end()

    def test_goes_with_an_order_to_end(self):
        self.begin()
        # Stopped, it hears of both at once.
        self.lumora.process.send_signal(signal.SIGSTOP)
        self.laptop.kill("sway")
        self.lumora.process.send_signal(signal.SIGTERM)
        self.lumora.process.send_signal(signal.SIGCONT)
        self.expect_to_end()

    def expect_to_end(self):
        """By itself, with all saved."""
        self.assertEqual(self.lumora.process.wait(PATIENCE_SECONDS), 0)
        self.assertTrue(self.is_saved())


if __name__ == "__main__":
    unittest.main()
