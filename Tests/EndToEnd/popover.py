# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The popover as a user meets it: opened by starting Lumora again, closed with Esc and by a click
elsewhere, absent where there is no display. Run it in the simulated laptop: popover.py BUNDLE
"""

import subprocess
import sys
import time
import unittest

from gi.repository import Gio, GLib

from lumora_testing.bundle import DOUBLE_CLICK_SECONDS, Lumora, forget, running, start_again, windows
from lumora_testing.remote import PATIENCE_SECONDS, RemoteLaptop, wait_for
from lumora_testing.screen import drawn, geometry, x_screen

BUNDLE = sys.argv.pop()
GAP = 8
# To programs on the display it is one that blends windows.
COMPOSITOR = """
import gi
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, Gtk
window = Gtk.Invisible()
window.realize()
Gdk.selection_owner_set(window.get_window(), Gdk.Atom.intern("_NET_WM_CM_S0", False), 0, False)
print("blending", flush=True)
Gtk.main()
"""
WITHOUT_DISPLAY = {"DISPLAY": "", "WAYLAND_DISPLAY": ""}


class PopoverStory(unittest.TestCase):
    """Each story has a Lumora of its own."""

    def setUp(self):
        self.laptop = RemoteLaptop()
        self.laptop.reset()
        forget()

    def running(self, **environment):
        """A Lumora that has taken its first reading."""
        lumora = self.enterContext(Lumora(BUNDLE, **environment))
        wait_for(lumora.history, "the first sample")
        return lumora

    def open(self):
        self.assertEqual(start_again(BUNDLE), 0)
        return wait_for(lambda: drawn(windows("Lumora")), "the popover")

    def test_opens_when_started_again_and_closes_the_next_time(self):
        lumora = self.running()
        self.assertFalse(lumora.has_loaded("lumora_views"))
        self.assertEqual(windows("Lumora"), [])
        window = self.open()
        self.assertTrue(lumora.has_loaded("lumora_views"))
        size = subprocess.check_output(["xdotool", "getwindowgeometry", "--shell", window], text=True)
        self.assertIn("WIDTH=340", size)
        self.assertEqual(start_again(BUNDLE), 0)
        wait_for(lambda: not windows("Lumora"), "its end")
        self.assertEqual(lumora.end(), 0)

    def test_closes_on_escape_and_on_a_click_elsewhere(self):
        self.running()
        self.open()
        subprocess.check_call(["xdotool", "key", "Escape"])
        wait_for(lambda: not windows("Lumora"), "the end by Esc")
        self.open()
        subprocess.check_call(["xdotool", "mousemove", "40", "700", "click", "1"])
        wait_for(lambda: not windows("Lumora"), "the end by a click")

    def test_is_round_with_a_shadow_while_windows_are_blended(self):
        self.running()
        square = geometry(self.open())
        self.assertEqual(square[2], 340)
        subprocess.check_call(["xdotool", "key", "Escape"])
        wait_for(lambda: not windows("Lumora"), "the end by Esc")
        compositor = self.enterContext(
            subprocess.Popen([sys.executable, "-c", COMPOSITOR], stdout=subprocess.PIPE, text=True)
        )
        self.addCleanup(compositor.kill)
        self.assertEqual(compositor.stdout.readline(), "blending\n")
        left, top, width, height = square
        self.wait_until_it_opens_as((left - GAP, top - GAP, width + 2 * GAP, height + 2 * GAP))
        self.assertIn("Depth: 32", subprocess.check_output(["xwininfo", "-id", windows("Lumora")[0]], text=True))
        subprocess.check_call(["xdotool", "mousemove", str(left - 4), str(top + 100), "click", "1"])
        wait_for(lambda: not windows("Lumora"), "the end by a click on the shadow")
        compositor.kill()
        time.sleep(DOUBLE_CLICK_SECONDS)
        self.wait_until_it_opens_as(square)

    def wait_until_it_opens_as(self, box):
        """The display tells of a compositor in its own time."""

        def opened():
            if geometry(self.open()) == box:
                return True
            subprocess.check_call(["xdotool", "key", "Escape"])
            wait_for(lambda: not windows("Lumora"), "the end by Esc")
            return False

        wait_for(opened, f"the popover at {box}")

    def test_follows_light_and_dark_while_it_is_open(self):
        """Told by a portal that was not there when it was opened."""
        self.running()
        left, top, _, _ = geometry(self.open())

        def is_dark():
            return sum(x_screen().pixel(left + GAP, top + GAP)) < 3 * 100

        self.assertFalse(is_dark())
        for scheme, dark in (1, True), (2, False):
            self.laptop.set_appearance("color-scheme", GLib.Variant("u", scheme))
            wait_for(lambda: is_dark() is dark, f"the color scheme {scheme}")  # noqa: B023

    def test_quits_by_its_button(self):
        lumora = self.running()
        self.open()
        subprocess.check_call(["xdotool", "key", "shift+Tab", "space"])
        self.assertEqual(lumora.process.wait(PATIENCE_SECONDS), 0)

    def test_reminds_without_a_display(self):
        lumora = self.running(**WITHOUT_DISPLAY)
        self.assertEqual(start_again(BUNDLE), 0)
        self.laptop.set_battery(percent=15)
        wait_for(lambda: len(self.laptop.notifications()) == 2, "the reminders")
        self.assertIsNone(lumora.process.poll())
        self.assertEqual(windows("Lumora"), [])

    def test_reminds_with_a_display_that_refuses(self):
        lumora = self.running(DISPLAY=":987")
        self.assertEqual(start_again(BUNDLE), 0)
        self.laptop.set_battery(percent=15)
        wait_for(lambda: len(self.laptop.notifications()) == 2, "the reminders")
        self.assertIsNone(lumora.process.poll())

    def test_takes_no_token_that_would_keep_it_from_playing_sounds(self):
        """The environment goes along to each program that it starts."""
        self.laptop.mock_notifications(["body"])
        self.laptop.clear_sounds()
        self.running()
        Gio.bus_get_sync(Gio.BusType.SESSION).call_sync(
            "org.lumora.Lumora",
            "/org/lumora/Lumora",
            "org.freedesktop.Application",
            "Activate",
            GLib.Variant("(a{sv})", ({"activation-token": GLib.Variant("s", "x" * 300_000)},)),
            None,
            0,
            PATIENCE_SECONDS * 1000,
            None,
        )
        wait_for(lambda: drawn(windows("Lumora")), "the popover")
        self.laptop.set_battery(percent=15)
        wait_for(self.laptop.sounds, "a sound")

    def test_answers_with_a_display_that_hangs(self):
        lumora = self.running()
        session = Gio.bus_get_sync(Gio.BusType.SESSION)
        # Before a window was shown, and after.
        for percent in (58, 57):
            wait_for(running, "a Lumora on the bus")
            self.laptop.hang("display")
            self.addCleanup(self.laptop.resume, "display")
            self.assertEqual(start_again(BUNDLE), 0)
            self.laptop.set_battery(percent=percent)
            wait_for(lambda: f"{percent}%" in lumora.state(session), "its menu")  # noqa: B023
            self.laptop.resume("display")
            self.open()
            self.assertEqual(start_again(BUNDLE), 0)
            wait_for(lambda: not windows("Lumora"), "the end of the popover")
            # What comes sooner may be meant for the one that is closed.
            time.sleep(DOUBLE_CLICK_SECONDS)
        self.assertEqual(lumora.end(), 0)

    def hang_beside_the_open_popover(self):
        """Where the toolkit waits for the display as it draws."""
        lumora = self.running()
        self.open()
        self.laptop.hang("display")
        self.addCleanup(self.laptop.resume, "display")
        return lumora

    def test_starts_anew_when_the_display_hangs_beside_the_open_popover(self):
        lumora = self.hang_beside_the_open_popover()
        session = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.laptop.set_battery(percent=58)
        wait_for(lambda: not lumora.has_loaded("lumora_views"), "a new start")
        wait_for(lambda: 58 in [sample["p"] for sample in lumora.history()], "the history")
        wait_for(lambda: "58%" in lumora.state(session), "its menu")
        self.laptop.set_battery(percent=15)
        wait_for(lambda: "15%" in lumora.state(session), "its menu")
        # On a screen that hangs no server shows anything.
        self.laptop.resume("display")
        wait_for(lambda: len(self.laptop.notifications()) == 2, "the reminders")
        wait_for(lambda: not windows("Lumora"), "the end of the old popover")
        self.open()
        self.assertEqual(lumora.end(), 0)

    def test_ends_while_the_display_hangs_beside_the_open_popover(self):
        lumora = self.hang_beside_the_open_popover()
        self.laptop.set_battery(percent=58)
        self.assertEqual(lumora.end(), 0)
        wait_for(lambda: not running(), "the end")


if __name__ == "__main__":
    unittest.main()
