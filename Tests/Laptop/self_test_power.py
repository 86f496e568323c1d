# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The power supplies, and parts that end, hang and start again."""

import os

from gi.repository import GLib

from lumora_testing.remote import wait_for
from self_test_base import BATTERY, DEVICE, DEVICES, PROPERTIES, UPOWER, LaptopTest, call


class PowerTest(LaptopTest):
    """The real UPower shows what the test bed has."""

    def devices(self):
        """The paths that UPower lists."""
        return sorted(call(self.system, UPOWER, "/org/freedesktop/UPower", UPOWER, "EnumerateDevices"))

    def test_battery_at_the_start(self):
        expected = {
            "Type": 2,
            "IsPresent": True,
            "PowerSupply": True,
            "State": 2,
            "Percentage": 60.0,
            "Energy": 27.0,
            "EnergyFull": 45.0,
            "EnergyFullDesign": 50.0,
            "EnergyRate": 10.0,
            "Voltage": 11.4,
            "ChargeCycles": 120,
            "Temperature": 31.2,
            "Model": "LP-50",
        }
        for name, value in expected.items():
            self.wait_for_value(BATTERY, name, value)
        self.assertEqual(self.devices(), [BATTERY, f"{DEVICES}/line_power_AC"])

    def test_uevents_arrive(self):
        changes = self.signals(self.system, PROPERTIES, "PropertiesChanged")
        self.laptop.set_battery(percent=17, status="Charging", cycles=121)
        wait_for(lambda: any(change[1].get("Percentage") == 17.0 for change in changes))
        self.assertEqual(self.get(BATTERY, "State"), 1)
        self.assertEqual(self.get(BATTERY, "ChargeCycles"), 121)

    def test_two_batteries(self):
        self.laptop.set_battery("BAT1", percent=100, full=20.0)
        self.wait_for_value(f"{DEVICES}/DisplayDevice", "Energy", 47.0)
        self.laptop.remove_device("BAT1")
        wait_for(lambda: len(self.devices()) == 2)

    def test_no_battery(self):
        self.laptop.remove_device("BAT0")
        wait_for(lambda: self.devices() == [f"{DEVICES}/line_power_AC"])

    def test_adapter(self):
        self.laptop.set_adapter(True)
        self.wait_for_value(f"{DEVICES}/line_power_AC", "Online", True)
        self.wait_for_value("/org/freedesktop/UPower", "OnBattery", False, interface=UPOWER)
        self.laptop.remove_device("AC")
        wait_for(lambda: self.devices() == [BATTERY])
        self.laptop.add_adapter()
        self.wait_for_value(f"{DEVICES}/line_power_AC", "Online", False)

    def test_peripherals(self):
        self.laptop.add_mouse(30)
        self.laptop.add_ups(70)
        wait_for(lambda: {self.get(path, "Type") for path in self.devices()} == {1, 2, 3, 5}, what="a mouse, a UPS")

    def test_usb_charger(self):
        self.laptop.add_usb_charger(True, 20.0, 3.25)
        wait_for(lambda: any("ucsi" in path for path in self.devices()))
        supply = f"{os.environ['UMOCKDEV_DIR']}/sys/class/power_supply/ucsi-source-psy-USBC000:001"
        with open(f"{supply}/current_max", encoding="ascii") as file:
            self.assertEqual(file.read().strip(), "3250000")

    def test_a_wrong_value_is_refused(self):
        with self.assertRaises(KeyError):
            self.laptop.set_battery(percents=3)
        with self.assertRaises(GLib.Error):
            self.laptop.remove_device("BAT7")


class PartsTest(LaptopTest):
    """Parts end, hang and start again."""

    def owner(self):
        """Who owns UPower's name."""
        try:
            return call(
                self.system,
                "org.freedesktop.DBus",
                "/org/freedesktop/DBus",
                "org.freedesktop.DBus",
                "GetNameOwner",
                "(s)",
                UPOWER,
            )
        except GLib.Error:
            return None

    def test_kill_and_start(self):
        before = self.owner()
        self.laptop.kill("upower")
        self.assertIsNone(self.owner())
        self.laptop.start("upower")
        self.assertNotIn(self.owner(), (None, before))
        self.assertEqual(self.get(BATTERY, "Percentage"), 60.0)

    def test_hang_and_continue(self):
        self.laptop.hang("upower")
        with self.assertRaisesRegex(GLib.Error, "Timeout"):
            call(self.system, UPOWER, BATTERY, PROPERTIES, "GetAll", "(s)", DEVICE, milliseconds=100)
        self.assertIsNotNone(self.owner())
        self.laptop.resume("upower")
        self.assertEqual(self.get(BATTERY, "Percentage"), 60.0)

    def test_a_hung_part_can_be_killed(self):
        self.laptop.hang("upower")
        self.laptop.kill("upower")
        self.assertIsNone(self.owner())

    def test_every_part_restarts(self):
        for part in ("profiles", "logind", "permissions", "notifications", "sound"):
            with self.subTest(part):
                self.laptop.stop(part)
                self.laptop.start(part)
                percent = 60.0 if self.get(BATTERY, "Percentage") != 60.0 else 50.0
                self.laptop.set_battery(percent=int(percent))
                self.wait_for_value(BATTERY, "Percentage", percent)

    def test_burst_of_the_stand_in(self):
        self.laptop.mock_upower(True)
        changes = self.signals(self.system, PROPERTIES, "PropertiesChanged")

        def told():
            # Others on the bus tell of changes, too.
            return [changed["Percentage"] for _, changed, _ in changes if list(changed) == ["Percentage"]]

        burst = [1 + index % 99 for index in range(2000)]
        self.laptop.property_burst(len(burst))
        wait_for(lambda: told() == burst, what=f"{len(burst)} signals")
        self.laptop.set_mock_property("Percentage", GLib.Variant("s", "many"))
        wait_for(lambda: told() == [*burst, "many"])
        self.assertEqual(self.get(BATTERY, "Percentage"), "many")
        self.laptop.start("upower")
        self.assertEqual(self.get(BATTERY, "Percentage"), 60.0)
