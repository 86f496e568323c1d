# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The settings as a user meets them: opened from the popover, worked with the keyboard, with the real
permission store, notification server and sound server. Run it in the simulated laptop:
settings.py BUNDLE
"""

import os
import pathlib
import subprocess
import sys
import unittest

from gi.repository import Gio, GLib

from lumora_testing.bundle import Lumora, forget, start_again, windows
from lumora_testing.remote import RemoteLaptop, wait_for
from lumora_testing.screen import drawn, focused, key

BUNDLE = sys.argv.pop()
AUTOSTART = pathlib.Path(os.environ["XDG_CONFIG_HOME"]) / "autostart" / "org.lumora.Lumora.desktop"
STORE = "org.freedesktop.impl.portal.PermissionStore"
# Where each control is, counted in steps of the Tab key from the first.
CHARGE_LIMIT, LIMIT, LIMIT_SOUND, LAUNCH_AT_LOGIN, RESET = 0, 1, 3, 18, 19


def permission():
    """What the permission store says of Lumora, or None."""
    bus = Gio.bus_get_sync(Gio.BusType.SESSION, None)
    try:
        told = bus.call_sync(
            STORE,
            "/org/freedesktop/impl/portal/PermissionStore",
            STORE,
            "Lookup",
            GLib.Variant("(ss)", ("notifications", "notification")),
            None,
            0,
            5000,
            None,
        )
    except GLib.Error:
        return None
    return told.unpack()[0].get("org.lumora.Lumora")


class SettingsStory(unittest.TestCase):
    """One Lumora, one story."""

    def setUp(self):
        self.laptop = RemoteLaptop()
        self.laptop.reset()
        self.laptop.set_battery(percent=70, status="Charging")
        self.laptop.set_adapter(True)
        forget()
        self.lumora = self.enterContext(Lumora(BUNDLE))
        wait_for(self.lumora.history, "the first sample")
        self.at = -1

    def open(self):
        """From the popover's button."""
        self.assertEqual(start_again(BUNDLE), 0)
        wait_for(lambda: drawn(windows("Lumora")), "the popover")
        key("shift+Tab", "shift+Tab", "space")
        window = wait_for(lambda: windows("Lumora Settings"), "the settings")[0]
        wait_for(lambda: not windows("Lumora"), "the end of the popover")
        subprocess.check_call(["xdotool", "windowfocus", "--sync", window])
        return window

    def go_to(self, control):
        """Tab to a control."""
        steps = control - self.at
        key(*["Tab" if steps > 0 else "shift+Tab"] * abs(steps))
        self.at = control

    def wait_until_set(self, name, value):
        wait_for(lambda: self.lumora.settings().get(name) == value, f"{name} {value}")

    def test_carries_its_icon_and_the_class_of_the_desktop_entry(self):
        window = self.open()
        told = subprocess.check_output(["xprop", "-id", window, "WM_CLASS", "_NET_WM_ICON"], text=True)
        entry = (pathlib.Path(BUNDLE) / "org.lumora.Lumora.desktop").read_text()
        wanted = next(line for line in entry.splitlines() if line.startswith("StartupWMClass=")).partition("=")[2]
        self.assertRegex(told, rf'WM_CLASS\(STRING\) = "[^"]*", "{wanted}"')
        for side in (16, 24, 32, 48, 64):
            self.assertIn(f"Icon ({side} x {side})", told)

    def test_a_first_visit(self):
        window = self.open()
        size = subprocess.check_output(["xdotool", "getwindowgeometry", "--shell", window], text=True)
        self.assertIn("WIDTH=480\nHEIGHT=720", size)
        self.assertEqual(self.lumora.settings(), {})

        # Switching a reminder explains and asks, until it is decided.
        self.assertIsNone(permission())
        self.go_to(CHARGE_LIMIT)
        key("space")
        self.wait_until_set("limitEnabled", False)
        wait_for(lambda: focused(windows("Lumora")), "the question")
        key("Escape")
        wait_for(lambda: not windows("Lumora") and focused(windows("Lumora Settings")), "the end of the question")
        self.assertIsNone(permission())
        key("space")
        self.wait_until_set("limitEnabled", True)
        wait_for(lambda: focused(windows("Lumora")), "the question again")
        key("Return")
        wait_for(lambda: permission() == ["yes"], "the permission")
        wait_for(lambda: not windows("Lumora") and focused(windows("Lumora Settings")), "the end of the question")

        # A sound is heard when it is chosen, and with its reminder.
        self.go_to(LIMIT_SOUND)
        key("Down")
        self.wait_until_set("limitSound", "none")
        self.assertEqual(self.laptop.sounds(), [])
        key("Down")
        self.wait_until_set("limitSound", "Glass")
        glass = wait_for(self.laptop.sounds, "the preview")
        self.assertEqual([pathlib.Path(sound).name for sound in glass], ["Glass.oga"])
        self.go_to(LIMIT)
        key(*["Down"] * 5)
        self.wait_until_set("limit", 75)
        self.laptop.set_battery(percent=75, status="Charging")
        shown = wait_for(self.laptop.notifications, "the reminder")
        self.assertEqual(shown[0]["body"], "Battery is at 75%. Unplug to keep it healthy.")
        wait_for(lambda: len(self.laptop.sounds()) == 2, "its sound")
        self.assertEqual(self.laptop.sounds(), glass * 2)

        # Launch at login is the entry and nothing else.
        self.go_to(LAUNCH_AT_LOGIN)
        key("space")
        wait_for(AUTOSTART.exists, "the entry")
        self.assertIn(f'Exec="{pathlib.Path(BUNDLE).resolve()}/lumora"\n', AUTOSTART.read_text())
        key("space")
        wait_for(lambda: not AUTOSTART.exists(), "its end")

        self.assertTrue(self.lumora.history())
        self.go_to(RESET)
        key("space")
        wait_for(lambda: focused(windows("Lumora")), "the question")
        key("shift+Tab", "space")
        wait_for(lambda: self.lumora.history() == [], "the empty history")

        # Closed, it is only hidden.
        wait_for(lambda: not windows("Lumora") and focused(windows("Lumora Settings")), "the end of the question")
        key("Escape")
        wait_for(lambda: not windows("Lumora Settings"), "the end of the settings")
        self.open()
        self.assertEqual(self.lumora.end(), 0)


if __name__ == "__main__":
    unittest.main()
