# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The item in Waybar and the windows on a Wayland compositor, as a user of sway meets them. The pictures
are kept. Run it in the simulated laptop with that bar: wayland.py BUNDLE
"""

import os
import pathlib
import subprocess
import sys
import time
import unittest

from lumora_testing.bundle import DOUBLE_CLICK_SECONDS, Lumora, forget
from lumora_testing.pointer import Pointer
from lumora_testing.remote import RemoteLaptop, wait_for
from lumora_testing.screen import wayland_screen
from lumora_testing.sway import windows

BUNDLE = sys.argv.pop()
BAR_HEIGHT = 28
GAP = 8
PADDING = 16
# On the bar, where nothing is.
AWAY = 600, 14
TO_OPEN_SECONDS = 15
APPLICATION = "org.lumora.Lumora"
POPOVER, SETTINGS = "Lumora", "Lumora Settings"
OTHER_WINDOW = """
import gi
gi.require_version("Gtk", "3.0")
from gi.repository import Gtk
window = Gtk.Window(title="Another window")
window.show_all()
Gtk.main()
"""


class WaylandStory(unittest.TestCase):
    """Each story has a Lumora of its own in the same bar."""

    def setUp(self):
        self.laptop = RemoteLaptop()
        self.laptop.reset()
        forget()
        self.pointer = self.enterContext(Pointer(1280, 800))
        # Its picture is not to be taken for the item.
        self.pointer.move(640, 790)
        # The compositor has no keyboard of its own, and without one no window has the focus.
        self.keyboard = self.enterContext(subprocess.Popen(["wtype", "-s", "600000"]))
        self.addCleanup(self.keyboard.kill)

    def running(self, **how):
        """A Lumora whose item is in the bar."""
        lumora = self.enterContext(Lumora(BUNDLE, **how))
        self.box = self.wait_for_item()
        return lumora

    @staticmethod
    def wait_for_item():
        """The rectangle of the item, with its text beside its symbol, once it no longer moves."""

        def box():
            found = wayland_screen().item_in_panel(BAR_HEIGHT - 4)
            if found is None:
                return None
            left, top, right, bottom = found
            # The bar makes room for it before it draws it.
            return found if right - left > 2 * (bottom - top) else None

        return wait_for(lambda: (first := box()) and first == box() and first, "the item")

    def item(self):
        """The middle of the item on the screen."""
        left, top, right, bottom = self.box
        return (left + right) // 2, (top + bottom) // 2

    def popover(self):
        """The rectangle of what lies over the screen as it was before the click, or None."""
        return wayland_screen().changed_since(self.behind, BAR_HEIGHT)

    @staticmethod
    def without_shadow(box):
        """The rectangle of the popover itself: from one side of its outline to the other."""
        screen = wayland_screen()
        left, top, right, bottom = box
        middle = (top + bottom) // 2
        ground = screen.pixel(left + GAP + PADDING // 2, middle)
        columns = [x for x in range(left, right) if screen.pixel(x, middle) == ground]
        # Between its round corner and what it shows.
        beside = min(columns) - 1 + PADDING - 2
        rows = [y for y in range(top, bottom) if screen.pixel(beside, y) == ground]
        return min(columns) - 1, min(rows) - 1, max(columns) + 2, max(rows) + 2

    def open(self):
        """With a click, and where the bar did not take it, with another; the popover's rectangle once it is whole."""
        self.pointer.move(*AWAY)
        wait_for(self.still, "the end of what the bar tells of its items")
        self.behind = wayland_screen()

        def clicked():
            self.pointer.click(*self.item())
            self.pointer.move(*AWAY)
            try:
                return wait_for(self.whole_popover, "the popover", TO_OPEN_SECONDS)
            except TimeoutError:
                return None

        return wait_for(clicked, "the popover")

    def whole_popover(self):
        """Its rectangle once it has its content."""
        box = self.popover()
        return box if box and len(set(wayland_screen().area(*box))) > 20 else None

    def wait_until_closed(self, why):
        """What was behind it is to be seen again."""
        self.pointer.move(*AWAY)
        wait_for(lambda: self.popover() is None, f"its end by {why}")

    def test_shows_the_whole_text_and_follows_the_battery(self):
        self.running()
        left, top, right, bottom = self.box
        wayland_screen().keep("wayland-bar-60", self.box, 6)
        # To its left, where a sign makes it wider, too.
        box = left - (bottom - top), top, right, bottom
        for name, change in (
            ("plugged-in", lambda: self.laptop.set_adapter(True)),
            ("charging", lambda: self.laptop.set_battery(status="Charging")),
        ):
            before = wayland_screen().area(*box)
            change()
            wait_for(lambda: wayland_screen().area(*box) != before, f"the item of a battery {name}")
            wayland_screen().keep(f"wayland-bar-{name}", box, 6)

    def test_opens_in_the_corner_of_the_tray(self):
        self.running()
        box = self.open()
        wayland_screen().keep("wayland-popover")
        left, top, right, bottom = self.without_shadow(box)
        # It lies in the gap.
        self.assertLess(box[0], left)
        self.assertGreaterEqual(box[0], left - GAP)
        self.assertEqual((right - left, right, top), (340, 1280 - GAP, BAR_HEIGHT + GAP))
        self.assertLess(bottom, 800 - GAP)
        self.pointer.click(*self.item())
        self.wait_until_closed("a second click")

    def test_opens_at_each_end_of_the_screen(self):
        """Centred on the click along the edge that is nearest, and over or under a panel there."""
        lumora = self.running()
        for x, y in (20, 780), (300, 780), (1270, 780), (300, 20):
            self.pointer.move(*AWAY)
            wait_for(self.still, "the end of what the bar tells of its items")
            self.behind = wayland_screen()
            self.activate(lumora, x, y)
            left, top, right, bottom = self.without_shadow(wait_for(self.whole_popover, "the popover"))
            self.assertEqual(left, min(max(x - 170, GAP), 1280 - 340 - GAP))
            self.assertEqual(right - left, 340)
            self.assertEqual(*((bottom, 800 - GAP) if y > 400 else (top, BAR_HEIGHT + GAP)))
            subprocess.check_call(["wtype", "-k", "Escape"])
            self.wait_until_closed("Esc")
            time.sleep(DOUBLE_CLICK_SECONDS)

    def test_takes_nothing_of_the_graphics_card(self):
        lumora = self.running()
        self.open()
        self.assertFalse(lumora.has_loaded("wayland-graphics-integration-client"))

    def test_closes_by_a_click_on_its_shadow(self):
        self.running()
        left, top, _, bottom = self.without_shadow(self.open())
        self.pointer.click(left - GAP // 2, (top + bottom) // 2)
        self.wait_until_closed("a click on its shadow")

    def test_stays_over_other_windows_until_the_user_turns_elsewhere(self):
        self.running()
        other = self.enterContext(subprocess.Popen([sys.executable, "-c", OTHER_WINDOW]))
        self.addCleanup(other.kill)
        wait_for(lambda: windows("Another window"), "another window")
        wait_for(self.still, "its picture")
        box = self.open()
        # The compositor gives the keyboard to whatever the mouse goes over.
        self.pointer.move(300, 400)
        self.wait_until_it_hears_keys(box)
        self.pointer.click(300, 400)
        self.wait_until_closed("a click elsewhere")
        self.wait_until_it_hears_keys(self.open_again())
        subprocess.check_call(["wtype", "-k", "Escape"])
        self.wait_until_closed("Esc")

    @staticmethod
    def still():
        """Whether the screen no longer changes."""
        first = wayland_screen()
        return wayland_screen().changed_since(first, 0) is None

    def open_again(self):
        """With a click that cannot be taken for the one that closed it."""
        time.sleep(DOUBLE_CLICK_SECONDS)
        return self.open()

    @staticmethod
    def wait_until_it_hears_keys(box):
        """Who has the focus for the compositor need not know it yet: only when a Tab is to be seen."""
        before = wayland_screen().area(*box)
        wait_for(
            lambda: subprocess.call(["wtype", "-k", "Tab"]) == 0 and wayland_screen().area(*box) != before,
            "the popover's answer to Tab",
        )

    def test_opens_the_settings(self):
        lumora = self.running()
        self.open()
        subprocess.check_call(["gapplication", "action", APPLICATION, "settings"])
        rectangle = wait_for(lambda: windows(SETTINGS), "the settings")[0]
        self.assertEqual((rectangle["content"]["width"], rectangle["content"]["height"]), (480, 700))
        self.assertEqual(windows(POPOVER), [])
        wayland_screen().keep("wayland-settings")
        self.assertEqual(lumora.end(), 0)

    def test_keeps_nothing_of_an_opening(self):
        told = pathlib.Path(os.environ["XDG_RUNTIME_DIR"]) / "wayland-debug"
        self.running(under=["sh", "-c", 'exec "$@" 2>"$0"', told], WAYLAND_DEBUG="1")
        counts = []
        for _ in range(3):
            self.open_again()
            subprocess.check_call(["wtype", "-k", "Escape"])
            self.wait_until_closed("Esc")
            counts.append(told.read_text().count("get_pointer("))
        self.assertGreater(counts[0], 0)
        self.assertEqual(counts, [counts[0]] * 3)

    def test_closes_by_a_mouse_that_was_not_there(self):
        lumora = self.running()
        self.pointer.__exit__(None, None, None)
        wait_for(self.still, "a screen without a mouse")
        self.behind = wayland_screen()
        self.activate(lumora, *self.item())
        wait_for(self.whole_popover, "the popover")
        self.pointer = self.enterContext(Pointer(1280, 800))

        def closes():
            # Lumora hears of the mouse a little later; on the bar the mouse is not taken for the popover.
            self.pointer.click(300, 400)
            self.pointer.move(600, 1)
            return self.popover() is None

        wait_for(closes, "its end by a click elsewhere")

    @staticmethod
    def activate(lumora, x, y):
        """As a bar does that was clicked there."""
        item = ["--dest", lumora.item(), "--object-path", "/org/lumora/Lumora/StatusItem"]
        method = ["--method", "org.kde.StatusNotifierItem.Activate", str(x), str(y)]
        subprocess.check_call(["gdbus", "call", "--session", *item, *method])

    def small_screen(self, scale):
        """What many laptops have."""
        subprocess.check_call(["swaymsg", "output", "*", "resolution", "1366x768", "scale", str(scale)])
        self.addCleanup(subprocess.check_call, ["swaymsg", "output", "*", "resolution", "1280x800", "scale", "1"])
        wait_for(lambda: wayland_screen().height == 768, "the small screen")
        wait_for(self.still, "its picture")

    def test_keeps_the_settings_off_the_panel_of_a_small_screen(self):
        self.running()
        self.small_screen(scale=1)
        subprocess.check_call(["gapplication", "action", APPLICATION, "settings"])
        rectangle = wait_for(lambda: windows(SETTINGS), "the settings")[0]
        self.assertEqual((rectangle["content"]["width"], rectangle["content"]["height"]), (480, 668))

    def test_stays_on_a_small_screen_at_a_scale(self):
        self.running()
        self.small_screen(scale=1.5)
        self.behind = wayland_screen()
        # As from the applications' menu.
        subprocess.check_call(["gapplication", "launch", APPLICATION])
        wait_for(self.whole_popover, "the popover")
        wait_for(self.still, "its picture")
        wayland_screen().keep("wayland-popover-small-screen")
        _, _, _, bottom = self.popover()
        self.assertLess(bottom, 768)

    def test_comes_back_with_the_bar(self):
        self.running()
        self.laptop.kill("waybar")
        self.laptop.start("waybar")
        self.pointer.move(640, 790)
        self.box = self.wait_for_item()
        self.open()


if __name__ == "__main__":
    unittest.main()
