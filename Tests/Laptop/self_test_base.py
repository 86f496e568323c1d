# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What the laptop's own tests have in common."""

import unittest

from gi.repository import Gio, GLib

from lumora_testing.remote import PATIENCE_SECONDS, RemoteLaptop, wait_for

UPOWER = "org.freedesktop.UPower"
DEVICE = "org.freedesktop.UPower.Device"
DEVICES = "/org/freedesktop/UPower/devices"
BATTERY = f"{DEVICES}/battery_BAT0"
PROPERTIES = "org.freedesktop.DBus.Properties"


class LaptopTest(unittest.TestCase):
    """A test that begins with the laptop as it was at the start."""

    @classmethod
    def setUpClass(cls):
        cls.laptop = RemoteLaptop()
        cls.system = Gio.bus_get_sync(Gio.BusType.SYSTEM, None)
        cls.session = Gio.bus_get_sync(Gio.BusType.SESSION, None)

    def setUp(self):
        self.laptop.reset()

    def get(self, path, name, interface=DEVICE, service=UPOWER):
        """A property of a service on the system bus, or None when nobody answers."""
        try:
            return call(self.system, service, path, PROPERTIES, "Get", "(ss)", interface, name)
        except GLib.Error:
            return None

    def wait_for_value(self, path, name, value, **where):
        """Wait until a property has a value."""
        wait_for(lambda: self.get(path, name, **where) == value, what=f"{name} = {value}")

    def signals(self, bus, interface, member):
        """A list that grows with the arguments of each signal."""
        received = []
        subscription = bus.signal_subscribe(
            None,
            interface,
            member,
            None,
            None,
            Gio.DBusSignalFlags.NONE,
            lambda *arguments: received.append(arguments[5].unpack()),
        )
        self.addCleanup(bus.signal_unsubscribe, subscription)
        return received


def call(bus, service, path, interface, method, signature="()", *arguments, milliseconds=PATIENCE_SECONDS * 1000):
    """Call a method and give its first result."""
    reply = bus.call_sync(
        service,
        path,
        interface,
        method,
        GLib.Variant(signature, arguments),
        None,
        Gio.DBusCallFlags.NO_AUTO_START,
        milliseconds,
        None,
    )
    return reply.unpack()[0] if reply.n_children() else None
