# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The item in Xfce's panel as a user meets it: seen through a day of the battery, clicked, its menu, its
panel restarted. The pictures are kept. Run it in the simulated laptop: tray.py BUNDLE
"""

import os
import subprocess
import sys
import time
import unittest

from gi.repository import Gio, GLib

from lumora_testing.bundle import DOUBLE_CLICK_SECONDS, Lumora, forget, start_again, windows
from lumora_testing.remote import PATIENCE_SECONDS, RemoteLaptop, wait_for
from lumora_testing.screen import click, drawn, geometry, key, x_screen

BUNDLE = sys.argv.pop()
SCALE = int(os.environ.get("GDK_SCALE", "1"))
PANEL_HEIGHT = 28 * SCALE
ITEM = "org.kde.StatusNotifierItem"
POPOVER, SETTINGS = "Lumora", "Lumora Settings"


class TrayStory(unittest.TestCase):
    """Each story has a Lumora of its own in the same panel."""

    def setUp(self):
        self.laptop = RemoteLaptop()
        self.laptop.reset()
        forget()
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION, None)

    def running(self):
        """A Lumora whose item is in the panel."""
        lumora = self.enterContext(Lumora(BUNDLE))
        self.box = self.wait_for_item()
        return lumora

    @staticmethod
    def wait_for_item():
        """The rectangle of the item, once it no longer moves."""

        def box():
            return x_screen().item_in_panel(PANEL_HEIGHT)

        return wait_for(lambda: (first := box()) and first == box() and first, "the item")

    def item(self):
        """The middle of the item on the screen."""
        left, top, right, bottom = self.box
        return (left + right) // 2, (top + bottom) // 2

    def image(self):
        return x_screen().area(*self.box)

    def wait_until_it_looks_other_than(self, before, what):
        wait_for(lambda: self.image() != before, what)
        # All of it: the panel may draw in two steps.
        wait_for(lambda: self.image() == self.image(), what)
        return self.image()

    def open_again(self):
        """With a click that cannot be taken for the one that closed it."""
        time.sleep(DOUBLE_CLICK_SECONDS)
        click(*self.item())
        wait_for(lambda: drawn(windows(POPOVER)), "the popover")

    def open_menu(self):
        """With the other button; the panel draws it below the item."""
        below = (self.box[0] - 80 * SCALE, 40 * SCALE, self.box[2], 140 * SCALE)
        before = x_screen().area(*below)
        click(*self.item(), button=3)
        wait_for(lambda: x_screen().area(*below) != before, "the menu")

    def call(self, method, arguments, interface=ITEM):
        """A method of the item on the bus, as a tray calls it."""
        return self.bus.call_sync(
            "org.lumora.Lumora",
            "/org/lumora/Lumora/StatusItem",
            interface,
            method,
            arguments,
            None,
            Gio.DBusCallFlags.NO_AUTO_START,
            -1,
            None,
        )

    def property(self, name):
        """A property of the item on the bus."""
        told = self.call("Get", GLib.Variant("(ss)", (ITEM, name)), "org.freedesktop.DBus.Properties")
        return told.unpack()[0]

    def test_shows_a_day_of_the_battery(self):
        self.running()
        looks = {}
        before = self.image()
        looks["60-on-battery"] = before
        for percent, status in (
            (80, "Discharging"),
            (35, "Discharging"),
            (9, "Discharging"),
            (9, "Charging"),
            (80, "Charging"),
            (80, "Not charging"),
            (100, "Full"),
        ):
            self.laptop.set_adapter(status != "Discharging")
            self.laptop.set_battery(percent=percent, status=status)
            before = self.wait_until_it_looks_other_than(before, f"{percent} % {status}")
            name = f"{percent}-{status.lower().replace(' ', '-')}"
            looks[name] = before
            x_screen().keep(f"tray-x{SCALE}-{name}", self.box, 6 // SCALE)
        self.assertEqual(len(set(looks.values())), len(looks), "each state looks like itself")

    def test_opens_the_popover_below_itself_and_closes_it(self):
        self.running()
        click(*self.item())
        window = wait_for(lambda: windows(POPOVER), "the popover")[0]
        left, top, width, height = geometry(window)
        self.assertEqual(width, 340 * SCALE)
        self.assertGreaterEqual(top, PANEL_HEIGHT - 4)
        self.assertLess(top, PANEL_HEIGHT + 40 * SCALE)
        screen = x_screen()
        self.assertLessEqual(left + width, screen.width)
        self.assertLessEqual(top + height, screen.height)
        self.assertLess(abs(left + width / 2 - self.item()[0]), width)
        wait_for(lambda: drawn([window]), "its content")
        x_screen().keep(f"popover-x{SCALE}")
        click(*self.item())
        wait_for(lambda: not windows(POPOVER), "its end by a second click")
        self.open_again()
        key("Escape")
        wait_for(lambda: not windows(POPOVER), "its end by Esc")
        click(*self.item())
        wait_for(lambda: windows(POPOVER), "the popover")
        click(40, 700)
        wait_for(lambda: not windows(POPOVER), "its end by a click elsewhere")

    def test_keeps_the_popover_on_the_monitor_of_the_click(self):
        self.running()
        edge = 900 * SCALE
        screen = x_screen()
        for name, left, width, output in (("LEFT", 0, edge, "screen"), ("RIGHT", edge, screen.width - edge, "none")):
            subprocess.check_call(["xrandr", "--setmonitor", name, f"{width}/1x{screen.height}/1+{left}+0", output])
            self.addCleanup(subprocess.call, ["xrandr", "--delmonitor", name])
        for x, first, last in ((edge - 5, 0, edge), (edge + 5, edge, screen.width)):
            subprocess.check_call(["xdotool", "mousemove", str(x), "14"])
            self.call("Activate", GLib.Variant("(ii)", (x // SCALE, 14 // SCALE)))
            left, _, width, _ = geometry(wait_for(lambda: drawn(windows(POPOVER)), "the popover"))
            self.assertGreaterEqual(left, first)
            self.assertLessEqual(left + width, last)
            key("Escape")
            wait_for(lambda: not windows(POPOVER), "its end")

    def test_follows_the_settings(self):
        lumora = self.running()
        with_percent = self.image()
        self.assertEqual(self.property("ToolTip")[2:], ("On battery, 2 h 42 min left", ""))
        subprocess.check_call(["gapplication", "action", "org.lumora.Lumora", "settings"])
        window = wait_for(lambda: windows(SETTINGS), "the settings")[0]
        subprocess.check_call(["xdotool", "windowfocus", "--sync", window])
        key(*["Tab"] * 18, "space")
        wait_for(lambda: lumora.settings().get("showTime"), "the setting")
        wait_for(lambda: self.property("ToolTip")[3] == "60% · 2:42", "the tooltip")
        x_screen().keep(f"settings-x{SCALE}")
        key("shift+Tab", "space")
        wait_for(lambda: lumora.settings().get("showPercent") is False, "the setting")
        self.wait_until_it_looks_other_than(with_percent, "the symbol without a number")
        x_screen().keep(f"tray-x{SCALE}-symbol", self.box, 6 // SCALE)
        self.assertEqual(self.property("IconName"), "lumora-battery-50-symbolic")

    def test_has_a_menu(self):
        lumora = self.running()
        self.open_menu()
        x_screen().keep(f"menu-x{SCALE}")
        # The state cannot be chosen, so the second line is the snooze.
        key("Down", "Down", "Return")
        wait_for(lambda: lumora.settings().get("snoozeUntil"), "the snooze")
        self.open_menu()
        key("Up", "Return")
        self.assertEqual(lumora.process.wait(PATIENCE_SECONDS), 0)
        wait_for(lambda: x_screen().item_in_panel(PANEL_HEIGHT) is None, "the end of the item")

    def test_comes_back_with_the_panel(self):
        self.running()
        for end in (self.laptop.stop, self.laptop.kill):
            end("panel")
            self.laptop.start("panel")
            self.box = self.wait_for_item()
        click(*self.item())
        wait_for(lambda: windows(POPOVER), "the popover")

    def test_comes_when_the_panel_comes_later(self):
        self.laptop.stop("panel")
        lumora = self.enterContext(Lumora(BUNDLE))
        wait_for(lumora.history, "the first sample")
        self.assertEqual(start_again(BUNDLE), 0)
        wait_for(lambda: windows(POPOVER), "the popover without a tray")
        self.laptop.set_battery(percent=15)
        wait_for(lambda: len(self.laptop.notifications()) == 2, "the reminders without a tray")
        self.assertEqual(start_again(BUNDLE), 0)
        wait_for(lambda: not windows(POPOVER), "the end of the popover")
        self.laptop.start("panel")
        wait_for(lambda: x_screen().item_in_panel(PANEL_HEIGHT), "the item")


if __name__ == "__main__":
    unittest.main()
