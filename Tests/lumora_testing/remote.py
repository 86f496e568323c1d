# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The laptop as a story or a test inside it sees it: one method for each call of the control object."""

import time

from gi.repository import Gio, GLib

NAME = "org.lumora.Laptop"
PATH = "/org/lumora/Laptop"
BATTERY_TYPES = {
    "percent": "i",
    "status": "s",
    "present": "b",
    "full": "d",
    "design": "d",
    "power": "d",
    "voltage": "d",
    "cycles": "i",
    "temperature": "d",
    "model": "s",
}
# Long enough for a machine that has ten times as much to do; whoever waits sees at once when it is over.
PATIENCE_SECONDS = 60
CALL_MS = 2 * PATIENCE_SECONDS * 1000
POLL_SECONDS = 0.005


class RemoteLaptop:
    """A client of the laptop that the calling process runs in."""

    def __init__(self):
        self._bus = Gio.bus_get_sync(Gio.BusType.SESSION, None)

    def set_battery(self, name="BAT0", **values):
        """Create a battery or change it: percent, status, present, full, design, power, voltage, cycles,
        temperature, model."""
        typed = {key: GLib.Variant(BATTERY_TYPES[key], value) for key, value in values.items()}
        self._call("SetBattery", "(sa{sv})", name, typed)

    def set_adapter(self, online):
        """Plug the adapter in or out."""
        self._call("SetAdapter", "(b)", online)

    def add_adapter(self):
        """Add the adapter again, unplugged."""
        self._call("AddAdapter")

    def add_mouse(self, percent):
        """Add a wireless mouse."""
        self._call("AddMouse", "(i)", percent)

    def add_ups(self, percent):
        """Add an uninterruptible power supply."""
        self._call("AddUps", "(i)", percent)

    def add_usb_charger(self, online=True, volts=20.0, amps=3.25):
        """Add a USB-C source, or change it."""
        self._call("AddUsbCharger", "(bdd)", online, volts, amps)

    def remove_device(self, name):
        """Remove a power supply by its name in sysfs."""
        self._call("RemoveDevice", "(s)", name)

    def stop(self, part):
        """End a part politely."""
        self._call("Stop", "(s)", part)

    def kill(self, part):
        """End a part by force."""
        self._call("Kill", "(s)", part)

    def hang(self, part):
        """Let a part hang: it keeps its bus name and answers nothing."""
        self._call("Hang", "(s)", part)

    def resume(self, part):
        """Let a hung part go on."""
        self._call("Continue", "(s)", part)

    def start(self, part):
        """Start a part that does not run."""
        self._call("Start", "(s)", part)

    def set_profile(self, profile):
        """Choose a power profile."""
        self._call("SetProfile", "(s)", profile)

    def mock_profiles(self, former, current):
        """Replace the power-profiles daemon, until `start("profiles")`, by one of this profile under its former bus
        name and of that under the present one; "" leaves a name without an owner."""
        self._call("MockProfiles", "(ss)", former, current)

    def set_appearance(self, key, value):
        """Have a settings portal with this wish: "color-scheme", "accent-color", a GLib.Variant."""
        self._call("SetAppearance", "(sv)", key, value)

    def prepare_for_sleep(self, begins):
        """Say that the machine is about to sleep, or has woken up."""
        self._call("PrepareForSleep", "(b)", begins)

    def inhibitors(self):
        """Every sleep lock that was handed out, with `open`."""
        return self._call("Inhibitors")

    def notifications(self):
        """Every Notify call, oldest first."""
        return self._call("Notifications")

    def clear_notifications(self):
        """Forget the Notify calls so far."""
        self._call("ClearNotifications")

    def press_action(self, number):
        """Press the default action of a notification, or else its first."""
        self._call("PressAction", "(u)", number)

    def dismiss(self, number):
        """Click a notification away."""
        self._call("Dismiss", "(u)", number)

    def mock_notifications(self, capabilities):
        """Have a notification server with other capabilities until `start("notifications")`."""
        self._call("MockNotifications", "(as)", capabilities)

    def sounds(self):
        """The event id or file of every sound that was played."""
        return self._call("Sounds")

    def clear_sounds(self):
        """Forget the sounds so far."""
        self._call("ClearSounds")

    def mock_upower(self, owned):
        """Replace the real UPower by a stand-in, or take the stand-in away."""
        self._call("MockUPower", "(b)", owned)

    def mock_slow_upower(self, milliseconds):
        """Replace the real UPower by a stand-in whose battery thinks that long before it answers."""
        self._call("MockSlowUPower", "(i)", milliseconds)

    def set_mock_property(self, name, value):
        """Change a property of the stand-in's battery to a GLib.Variant of any type."""
        self._call("SetMockProperty", "(sv)", name, value)

    def property_burst(self, count):
        """Have the stand-in announce this many changes at once."""
        self._call("PropertyBurst", "(i)", count)

    def reset(self):
        """Put everything back to the start."""
        self._call("Reset")

    def _call(self, method, signature="()", *arguments):
        reply = self._bus.call_sync(
            NAME,
            PATH,
            NAME,
            method,
            GLib.Variant(signature, arguments),
            None,
            Gio.DBusCallFlags.NO_AUTO_START,
            CALL_MS,
            None,
        )
        return reply.unpack()[0] if reply.n_children() else None


def wait_for(condition, what="the condition", seconds=PATIENCE_SECONDS):
    """Wait until the condition gives something true, and give that; the main loop goes on meanwhile."""
    deadline = time.monotonic() + seconds
    while True:
        while GLib.MainContext.default().iteration(False):
            pass
        result = condition()
        if result:
            return result
        if time.monotonic() > deadline:
            raise TimeoutError(f"{what}: not within {seconds} s")
        time.sleep(POLL_SECONDS)
