# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The kernel's side of the power supplies: a udev and sysfs test bed."""

import gi

gi.require_version("UMockdev", "1.0")
from gi.repository import UMockdev  # noqa: E402

from processes import LaptopError  # noqa: E402

NEW_BATTERY = {
    "percent": 60,
    "status": "Discharging",
    "present": True,
    "full": 45.0,
    "design": 50.0,
    "power": 10.0,
    "voltage": 11.4,
    "cycles": 120,
    "temperature": 31.2,
    "model": "LP-50",
}
USB_CHARGER = "ucsi-source-psy-USBC000:001"


class PowerSupplies:
    """The batteries, adapters and peripherals that the kernel shows."""

    def __init__(self):
        self._bed = UMockdev.Testbed.new()
        self._batteries = {}
        self._devices = {}

    @property
    def folder(self):
        """The test bed's folder, for UMOCKDEV_DIR."""
        return self._bed.get_root_dir()

    def reset(self):
        """One adapter, offline, and one battery with the values of a new one."""
        for name in [name for name in self._devices if name not in ("AC", "BAT0")]:
            self.remove(name)
        self.set_adapter(False)
        self.set_battery("BAT0", NEW_BATTERY)

    def set_battery(self, name, values):
        """Create a battery, or change the values that are given."""
        unknown = set(values) - set(NEW_BATTERY)
        if unknown:
            raise LaptopError(f"no such battery value: {', '.join(sorted(unknown))}")
        battery = {**self._batteries.get(name, NEW_BATTERY), **values}
        self._batteries[name] = battery
        self._show(name, _battery_attributes(battery))

    def set_adapter(self, online):
        """Plug the adapter in or out; one that is missing is added."""
        self._show("AC", {"type": "Mains", "online": str(int(online))})

    def add_mouse(self, percent):
        """Add a wireless mouse, which has a battery of its own."""
        name = "hid-00:1f:20:96:33:44-battery"
        bluetooth = self._bed.add_device("bluetooth", "usb1/bluetooth/hci0/hci0:01", None, [], [])
        pointer = self._bed.add_device(
            "input", "input2/mouse3", bluetooth, [], ["DEVNAME", "input/mouse3", "ID_INPUT_MOUSE", "1"]
        )
        battery = self._add(
            name,
            bluetooth,
            {
                "type": "Battery",
                "scope": "Device",
                "present": "1",
                "online": "1",
                "status": "Discharging",
                "capacity": str(percent),
                "model_name": "Wireless mouse",
            },
        )
        self._devices[name] = [battery, pointer, bluetooth]

    def add_ups(self, percent):
        """Add an uninterruptible power supply at a USB port."""
        self._devices["hiddev0"] = [
            self._bed.add_device(
                "usbmisc",
                "hiddev0",
                None,
                [],
                [
                    "DEVNAME",
                    "null",
                    "UPOWER_VENDOR",
                    "APC",
                    "UPOWER_BATTERY_TYPE",
                    "ups",
                    "UPOWER_FAKE_DEVICE",
                    "1",
                    "UPOWER_FAKE_HID_CHARGING",
                    "0",
                    "UPOWER_FAKE_HID_PERCENTAGE",
                    str(percent),
                ],
            )
        ]
        self._bed.uevent(self._devices["hiddev0"][0], "add")

    def set_usb_charger(self, online, volts, amps):
        """Show a USB-C source with the most that it offers; it may be changed by a second call."""
        self._show(
            USB_CHARGER,
            {
                "type": "USB",
                "usb_type": "C [PD] PD_PPS",
                "online": str(int(online)),
                "voltage_max": _micro(volts),
                "current_max": _micro(amps),
                "voltage_now": _micro(volts),
                "current_now": _micro(amps),
            },
        )

    def remove(self, name):
        """Take a device away, and with it what was added for it."""
        if name not in self._devices:
            raise LaptopError(f"no device is called {name}; there are {', '.join(self._devices)}")
        for path in self._devices.pop(name):
            self._bed.uevent(path, "remove")
            self._bed.remove_device(path)
        self._batteries.pop(name, None)

    def _show(self, name, attributes):
        if name not in self._devices:
            self._devices[name] = [self._add(name, None, attributes)]
            return
        path = self._devices[name][0]
        for attribute, value in attributes.items():
            self._bed.set_attribute(path, attribute, value)
        self._bed.uevent(path, "change")

    def _add(self, name, parent, attributes):
        flat = [text for pair in attributes.items() for text in pair]
        path = self._bed.add_device("power_supply", name, parent, flat, ["POWER_SUPPLY_NAME", name])
        self._bed.uevent(path, "add")
        return path


def _battery_attributes(battery):
    return {
        "type": "Battery",
        "scope": "System",
        "technology": "Li-ion",
        "manufacturer": "Lumora",
        "present": str(int(battery["present"])),
        "status": battery["status"],
        "capacity": str(battery["percent"]),
        "energy_full": _micro(battery["full"]),
        "energy_full_design": _micro(battery["design"]),
        "energy_now": _micro(battery["full"] * battery["percent"] / 100),
        "power_now": _micro(battery["power"]),
        "voltage_now": _micro(battery["voltage"]),
        "cycle_count": str(battery["cycles"]),
        "temp": str(round(battery["temperature"] * 10)),
        "model_name": battery["model"],
    }


def _micro(value):
    return str(round(value * 1e6))
