# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The item in Waybar and the windows on a Wayland compositor, as a user of sway meets them. The pictures
are kept. Run it in the simulated laptop with that bar: wayland.py BUNDLE
"""

import json
import subprocess
import sys
import unittest

from bundle import Lumora, forget
from pointer import Pointer
from remote import RemoteLaptop, wait_for
from screen import wayland_screen

BUNDLE = sys.argv.pop()
BAR_HEIGHT = 28
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


def windows(title):
    """The windows of that title: where they are, and how large without the compositor's frame."""
    def below(node):
        yield node
        for child in [*node["nodes"], *node["floating_nodes"]]:
            yield from below(child)

    tree = json.loads(subprocess.check_output(["swaymsg", "--raw", "-t", "get_tree"]))
    return [node["rect"] | {"content": node["geometry"]} for node in below(tree) if node.get("name") == title and node.get("pid")]


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

    def running(self):
        """A Lumora whose item is in the bar."""
        lumora = self.enterContext(Lumora(BUNDLE))
        self.box = self.wait_for_item()
        return lumora

    @staticmethod
    def wait_for_item():
        """The rectangle of the item, once it no longer moves."""
        def box():
            return wayland_screen().item_in_panel(BAR_HEIGHT - 4)

        wait_for(lambda: box() and box() == box(), 10, "the item")
        return box()

    def item(self):
        """The middle of the item on the screen."""
        left, top, right, bottom = self.box
        return (left + right) // 2, (top + bottom) // 2

    def open(self):
        self.pointer.click(*self.item())
        return wait_for(lambda: windows(POPOVER), 10, "the popover")[0]

    def test_shows_the_whole_text_and_follows_the_battery(self):
        self.running()
        left, top, right, bottom = self.box
        self.assertGreater(right - left, 2 * (bottom - top), "the text is beside the symbol")
        wayland_screen().keep("wayland-bar-60", self.box, 6)
        before = wayland_screen().area(*self.box)
        self.laptop.set_adapter(True)
        self.laptop.set_battery(percent=61, status="Charging")
        wait_for(lambda: wayland_screen().area(*self.box) != before, 10, "the item of a charging battery")
        wayland_screen().keep("wayland-bar-charging", self.box, 6)

    def test_opens_as_a_floating_window_of_its_own_size(self):
        self.running()
        rectangle = self.open()
        self.assertEqual(rectangle["width"], 340)
        picture = wait_for(lambda: self.drawn(rectangle), 10, "its content")
        picture.keep("wayland-popover")
        self.pointer.click(*self.item())
        wait_for(lambda: not windows(POPOVER), 10, "its end by a second click")

    def drawn(self, rectangle):
        """The screen once the popover has its content."""
        left, top = rectangle["x"], rectangle["y"]
        picture = wayland_screen()
        rows = picture.area(left, top, left + 340, top + 200)
        return picture if len(set(rows)) > 20 else None

    def test_closes_when_it_loses_the_focus_and_on_escape(self):
        self.running()
        self.open()
        other = self.enterContext(subprocess.Popen([sys.executable, "-c", OTHER_WINDOW]))
        self.addCleanup(other.kill)
        wait_for(lambda: windows("Another window"), 10, "another window")
        wait_for(lambda: not windows(POPOVER), 10, "its end")
        self.open_again()
        self.keyboard.kill()
        self.keyboard.wait()
        wait_for(lambda: not windows(POPOVER), 10, "its end with the keyboard")

    def open_again(self):
        """With a click, and where it was so soon that it counts as the one that closed the popover, another."""
        self.pointer.click(*self.item())
        try:
            wait_for(lambda: windows(POPOVER), 1, "the popover")
        except TimeoutError:
            self.open()

    def test_opens_the_settings(self):
        lumora = self.running()
        self.open()
        subprocess.check_call(["gapplication", "action", APPLICATION, "settings"])
        rectangle = wait_for(lambda: windows(SETTINGS), 10, "the settings")[0]
        self.assertEqual((rectangle["content"]["width"], rectangle["content"]["height"]), (480, 720))
        wait_for(lambda: not windows(POPOVER), 10, "the end of the popover")
        wayland_screen().keep("wayland-settings")
        self.assertEqual(lumora.end(), 0)

    def test_comes_back_with_the_bar(self):
        self.running()
        self.laptop.kill("waybar")
        self.laptop.start("waybar")
        self.pointer.move(640, 790)
        self.box = self.wait_for_item()
        self.open()


if __name__ == "__main__":
    unittest.main()
