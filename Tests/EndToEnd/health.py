# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The pack wears out while Lumora runs: from what the kernel says to the notification, once. Older
releases of UPower keep what they read of the capacity when they started. Run it in the simulated laptop:
health.py BUNDLE
"""

import json
import os
import pathlib
import sys
import unittest

from gi.repository import Gio

from Laptop.environment import with_preload
from lumora_testing.bundle import Lumora, forget
from lumora_testing.remote import RemoteLaptop, wait_for

BUNDLE = sys.argv.pop()
DESIGN = 50.0
SETTINGS = pathlib.Path(os.environ["XDG_CONFIG_HOME"]) / "Lumora" / "defaults.json"
WORN = "Battery health has fallen to 78% of its original capacity."


class Health(unittest.TestCase):
    """A battery that holds 85 % of what it was made for, and no reminders of its charge."""

    def setUp(self):
        self.laptop = RemoteLaptop()
        self.laptop.reset()
        forget()
        SETTINGS.parent.mkdir(parents=True, exist_ok=True)
        SETTINGS.write_text(json.dumps({"limitEnabled": False, "longEnabled": False}))
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.laptop.set_battery(full=0.85 * DESIGN, design=DESIGN)

    def lumora(self):
        """One that sees the laptop's power supplies in the place of the machine's."""
        preload = with_preload({})["LD_PRELOAD"]
        return self.enterContext(Lumora(BUNDLE, LD_PRELOAD=preload))

    def charge(self, lumora, percent, status):
        """The battery charges to there, or is used, and Lumora shows it."""
        self.laptop.set_adapter(status != "Discharging")
        self.laptop.set_battery(percent=percent, status=status)
        wait_for(lambda: f"{percent}%" in lumora.state(self.bus), f"{percent} %")

    def told(self):
        """The texts of the notifications."""
        return [sent["body"] for sent in self.laptop.notifications()]

    def test_is_told_once_when_the_pack_is_found_worn(self):
        lumora = self.lumora()
        wait_for(lambda: "60%" in lumora.state(self.bus), "the state")
        self.charge(lumora, 99, "Charging")
        self.laptop.set_battery(full=0.78 * DESIGN)
        self.charge(lumora, 98, "Charging")
        self.charge(lumora, 100, "Full")
        wait_for(self.told, "the reminder")
        self.assertEqual(self.told(), [WORN])
        for percent in (59, 58):
            self.charge(lumora, percent, "Discharging")
            self.charge(lumora, 100, "Full")
        self.assertEqual(self.told(), [WORN])
        self.assertIs(lumora.settings()["healthAlertSent"], True)
        self.assertEqual(lumora.end(), 0)

        again = self.lumora()
        wait_for(lambda: "100%" in again.state(self.bus), "the state")
        self.charge(again, 57, "Discharging")
        self.assertEqual(self.told(), [WORN])


if __name__ == "__main__":
    unittest.main(verbosity=2)
