# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Kills, hangs and restarts every service that Lumora needs while no window is open, one by one and all at once:
its main loop answers within a tenth of a second all the while, and two seconds after their return all is well. Run it in the simulated
laptop: neighbours.py BUNDLE
"""

import os
import pathlib
import sys
import threading
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "EndToEnd"))

from gi.repository import Gio, GLib  # noqa: E402

from bundle import Lumora, forget  # noqa: E402
from remote import RemoteLaptop, wait_for  # noqa: E402
from screen import x_screen  # noqa: E402

BUNDLE = sys.argv.pop()
PARTS = ["upower", "profiles", "logind", "permissions", "notifications", "panel"]
LONGEST_ANSWER_MS = 100
TO_BE_WELL_SECONDS = 2
FAULT_SECONDS = 1.5
PANEL_HEIGHT = 28


class Pulse(threading.Thread):
    """Asks Lumora's main loop for its menu without pause: `with Pulse(lumora) as pulse`."""

    def __init__(self, lumora):
        super().__init__()
        self._lumora = lumora
        self._over = threading.Event()
        self._fault = None
        self.longest_ms = 0
        self.beats = 0

    def run(self):
        try:
            bus = Gio.DBusConnection.new_for_address_sync(
                os.environ["DBUS_SESSION_BUS_ADDRESS"], Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
                | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
            while not self._over.wait(0.005):
                begun = time.monotonic()
                self._lumora.menu(bus)
                self.longest_ms = max(self.longest_ms, (time.monotonic() - begun) * 1000)
                self.beats += 1
        except GLib.Error as fault:
            self._fault = fault

    def __enter__(self):
        self.start()
        return self

    def __exit__(self, *_):
        self._over.set()
        self.join()
        if self._fault:
            raise self._fault


class Neighbours(unittest.TestCase):
    """One Lumora for each fault, at 60 % on battery."""

    def setUp(self):
        self.laptop = RemoteLaptop()
        self.laptop.reset()
        forget()
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.lumora = self.enterContext(Lumora(BUNDLE))
        wait_for(lambda: "60%" in self.state(), 10, "the state")

    def state(self):
        """What its menu says."""
        try:
            return " ".join(self.lumora.menu(self.bus).values())
        except GLib.Error:
            return ""

    def is_well(self):
        """Wait until each service is heard and used again; how long the slowest took."""
        begun = time.monotonic()
        wait_for(lambda: self.laptop.inhibitors() and self.laptop.inhibitors()[-1]["open"], 10, "logind's lock")
        wait_for(lambda: x_screen().item_in_panel(PANEL_HEIGHT), 10, "the item in the panel")
        self.laptop.set_battery(percent=55)
        wait_for(lambda: "55%" in self.state(), 10, "UPower's news")
        self.laptop.set_profile("power-saver")
        self.laptop.clear_notifications()
        self.laptop.set_battery(percent=15)
        wait_for(lambda: [sent["summary"] for sent in self.laptop.notifications()] == ["Low battery"], 10,
                 "the reminder, and none to save power, which the machine does")
        self.laptop.set_profile("balanced")
        wait_for(lambda: len(self.laptop.notifications()) == 2, 10, "that reminder when it no longer does")
        self.laptop.set_battery(percent=60)
        wait_for(lambda: "60%" in self.state(), 10, "the charge of before")
        return time.monotonic() - begun

    def survives(self, parts, fault, mend):
        """The fault, a while, the return, and well."""
        with Pulse(self.lumora) as pulse:
            for part in parts:
                fault(part)
            time.sleep(FAULT_SECONDS)
            for part in parts:
                mend(part)
            seconds = self.is_well()
        print(f"  {' '.join(parts)}: well after {seconds:.2f} s, longest answer {pulse.longest_ms:.0f} ms "
              f"of {pulse.beats}", flush=True)
        self.assertIsNone(self.lumora.process.poll())
        self.assertLess(pulse.longest_ms, LONGEST_ANSWER_MS)
        self.assertLess(seconds, TO_BE_WELL_SECONDS)

    def test_each_killed(self):
        for part in PARTS:
            with self.subTest(part):
                self.survives([part], self.laptop.kill, self.laptop.start)

    def test_each_hung(self):
        for part in PARTS:
            with self.subTest(part):
                self.survives([part], self.laptop.hang, self.laptop.resume)

    def test_all_killed_at_once(self):
        self.survives(PARTS, self.laptop.kill, self.laptop.start)

    def test_all_hung_at_once(self):
        self.survives(PARTS, self.laptop.hang, self.laptop.resume)

    def test_says_nothing_twice_when_all_come_back(self):
        self.laptop.set_battery(percent=15)
        wait_for(lambda: len(self.laptop.notifications()) == 2, 10, "the reminders")
        for part in PARTS:
            self.laptop.kill(part)
        for part in PARTS:
            self.laptop.start(part)
        self.laptop.set_battery(percent=14)
        wait_for(lambda: "14%" in self.state(), 10, "UPower's news")
        self.assertEqual(len(self.laptop.notifications()), 2)


if __name__ == "__main__":
    unittest.main(verbosity=2)
