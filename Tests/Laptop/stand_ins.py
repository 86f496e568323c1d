# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Own stand-ins for services that the real daemons cannot be brought to be."""

import time

from gi.repository import GLib

from bus_object import BusObject
from buses import give_up, own
from processes import LaptopError

UPOWER = "org.freedesktop.UPower"
UPOWER_PATH = "/org/freedesktop/UPower"
DEVICE = "org.freedesktop.UPower.Device"
BATTERY_PATH = f"{UPOWER_PATH}/devices/battery_BAT0"
ADAPTER_PATH = f"{UPOWER_PATH}/devices/line_power_AC"
DISPLAY_PATH = f"{UPOWER_PATH}/devices/DisplayDevice"
PORTAL = "org.freedesktop.portal.Desktop"
PORTAL_PATH = "/org/freedesktop/portal/desktop"
SETTINGS = "org.freedesktop.portal.Settings"
APPEARANCE = "org.freedesktop.appearance"

DAEMON = {"DaemonVersion": "s 0.99.20", "OnBattery": "b 1", "LidIsClosed": "b 0", "LidIsPresent": "b 1"}
BATTERY = {
    "NativePath": "s BAT0",
    "Vendor": "s Lumora",
    "Model": "s LP-50",
    "Serial": "s ",
    "UpdateTime": "t 0",
    "Type": "u 2",
    "PowerSupply": "b 1",
    "HasHistory": "b 1",
    "HasStatistics": "b 1",
    "Online": "b 0",
    "Energy": "d 27",
    "EnergyEmpty": "d 0",
    "EnergyFull": "d 45",
    "EnergyFullDesign": "d 50",
    "EnergyRate": "d 10",
    "Voltage": "d 11.4",
    "ChargeCycles": "i 120",
    "Luminosity": "d 0",
    "TimeToEmpty": "x 9720",
    "TimeToFull": "x 0",
    "Percentage": "d 60",
    "Temperature": "d 31.2",
    "IsPresent": "b 1",
    "State": "u 2",
    "IsRechargeable": "b 1",
    "Capacity": "d 90",
    "Technology": "u 1",
    "WarningLevel": "u 1",
    "BatteryLevel": "u 1",
    "IconName": "s battery-good-symbolic",
}
ADAPTER = BATTERY | {
    "NativePath": "s AC",
    "Vendor": "s ",
    "Model": "s ",
    "Type": "u 1",
    "HasHistory": "b 0",
    "HasStatistics": "b 0",
    "Energy": "d 0",
    "EnergyFull": "d 0",
    "EnergyFullDesign": "d 0",
    "EnergyRate": "d 0",
    "Voltage": "d 0",
    "ChargeCycles": "i -1",
    "TimeToEmpty": "x 0",
    "Percentage": "d 0",
    "Temperature": "d 0",
    "IsPresent": "b 0",
    "State": "u 0",
    "IsRechargeable": "b 0",
    "Capacity": "d 0",
    "Technology": "u 0",
    "IconName": "s ac-adapter-symbolic",
}
DISPLAY = BATTERY | {
    "NativePath": "s ",
    "Vendor": "s ",
    "Model": "s ",
    "EnergyFullDesign": "d 0",
    "Voltage": "d 0",
    "ChargeCycles": "i 0",
    "Temperature": "d 0",
    "Capacity": "d 0",
    "Technology": "u 0",
}
CONVERT = {"s": str, "d": float, "b": lambda text: text == "1"}


class MockUPower:
    """A UPower of one battery and one adapter, whose battery says whatever a test wants it to say."""

    def __init__(self, system, delay_ms, refusals):
        self._connection = system.connect()
        self._refusals = refusals
        BusObject(
            self._connection,
            UPOWER_PATH,
            UPOWER,
            {
                "EnumerateDevices": ("", "ao", self._devices),
                "GetDisplayDevice": ("", "o", lambda: (DISPLAY_PATH,)),
                "GetCriticalAction": ("", "s", lambda: ("HybridSleep",)),
            },
            _variants(DAEMON),
        )
        BusObject(self._connection, ADAPTER_PATH, DEVICE, _device_methods(), _variants(ADAPTER))
        BusObject(self._connection, DISPLAY_PATH, DEVICE, _device_methods(), _variants(DISPLAY))
        self._battery = BusObject(self._connection, BATTERY_PATH, DEVICE, _device_methods(), _variants(BATTERY))
        self._battery.delay_ms = delay_ms
        own(self._connection, UPOWER)

    def _devices(self):
        if self._refusals:
            self._refusals -= 1
            raise LaptopError("not now")
        return ([BATTERY_PATH, ADAPTER_PATH],)

    def remove(self):
        """Leave the bus."""
        self._connection.close_sync(None)

    def set_property(self, name, value):
        """Change a property of the battery, to a value of any type."""
        self._battery.change({name: value})

    def burst(self, count):
        """Announce `count` changes of the percentage, as fast as can be."""
        for index in range(count):
            self._battery.change({"Percentage": GLib.Variant("d", 1 + index % 99)})
        self._connection.flush_sync(None)


class MockProfiles:
    """The power-profiles daemon's two bus names, each with a profile of its own."""

    def __init__(self, system):
        self._connection = system.connect()
        self._objects = {}

    def show(self, name, profile):
        """Own a name with this profile active, or with none give it up."""
        active = GLib.Variant("s", profile)
        if name in self._objects and profile:
            self._objects[name].change({"ActiveProfile": active})
        elif profile:
            self._objects[name] = BusObject(
                self._connection, "/" + name.replace(".", "/"), name, {}, {"ActiveProfile": active}
            )
            own(self._connection, name)
        elif name in self._objects:
            give_up(self._connection, name)
            self._objects.pop(name).remove()

    def remove(self):
        """Leave the bus."""
        self._connection.close_sync(None)


class SettingsPortal:
    """The settings portal with the user's wishes for the looks of programs."""

    def __init__(self, session):
        self._bus = session
        self._connection = session.connect()
        self._object = None
        self._wishes = {}

    def set(self, key, value):
        """Announce a wish, a GLib.Variant of any type, or start with it: a portal that starts announces nothing.
        Another namespace than the one for looks stands before the key with a blank between."""
        self._keep(key, value)
        if self._object:
            self.announce(key, value)
        else:
            self.show()

    def announce(self, key, value):
        """Announce a wish, the user's or another: behind one portal several programs may answer."""
        self._object.emit("SettingChanged", GLib.Variant("(ssv)", (*self._named(key), value)))

    def offer(self, key, value, command):
        """Have a wish, and the bus run a command for it, which calls `show`, once a program wants the portal."""
        self._keep(key, value)
        self._bus.make_startable(PORTAL, command)

    def _keep(self, key, value):
        space, key = self._named(key)
        self._wishes.setdefault(space, {})[key] = value

    @staticmethod
    def _named(key):
        space, _, key = key.rpartition(" ")
        return space or APPEARANCE, key

    def show(self):
        """Start."""
        if not self._object:
            self._object = BusObject(
                self._connection,
                PORTAL_PATH,
                SETTINGS,
                {
                    "ReadAll": (
                        "as",
                        "a{sa{sv}}",
                        lambda namespaces: (
                            {space: wishes for space, wishes in self._wishes.items() if space in namespaces},
                        ),
                    )
                },
            )
            own(self._connection, PORTAL)

    def slow(self, delay_ms):
        """Think that long before it answers."""
        self._object.methods_delay_ms = delay_ms

    def hide(self):
        """Give the name up, forget the wishes, and be started by nobody."""
        self._bus.make_nothing_startable()
        if self._object:
            give_up(self._connection, PORTAL)
            self._object.remove()
            self._object = None
        self._wishes = {}


def _variants(descriptions):
    properties = {}
    for name, description in descriptions.items():
        kind, _, text = description.partition(" ")
        properties[name] = GLib.Variant(kind, CONVERT.get(kind, int)(text))
    if "UpdateTime" in properties:
        properties["UpdateTime"] = GLib.Variant("t", int(time.time()))
    return properties


def _device_methods():
    return {"Refresh": ("", "", lambda: ())}
