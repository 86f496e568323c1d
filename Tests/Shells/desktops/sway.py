# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""sway with Waybar and mako, without a screen: Waybar tells screen readers what it has, mako its own service."""

import contextlib
import dataclasses
import json
import os
import pathlib
import shutil
import struct

from gi.repository import GLib

from desktop import Box, CannotBe, Desktop, Notification, Window, end, version_of
from desktops.accessibility import ICON_ROLE, MENU_ITEM, WINDOW, Accessibility
from desktops.x11 import ICON, PASSWORD, WATCHER, run, said, shows_icon, wait_for_panel
from lumora_testing import sway
from lumora_testing.keyboard import Keyboard
from lumora_testing.pointer import LEFT, MIDDLE, RIGHT, Pointer
from lumora_testing.remote import wait_for
from lumora_testing.screen import wayland_screen

# Without a wallpaper: what is as large as the screen is darker at its edges once it is scaled, by this renderer.
CONFIGURATION = """output * resolution {width}x{height}
seat * xcursor_theme {cursors}
default_border none
exec touch {ready}
"""
WAYBAR = {
    "layer": "top",
    "modules-left": ["sway/workspaces"],
    "modules-right": ["clock", "tray"],
    # As in the configuration that it comes with.
    "tray": {"icon-size": 21, "spacing": 10},
}
STYLE = '@import "/etc/xdg/waybar/style.css";\n'
LIGHT_STYLE = STYLE + "window#waybar, #tray { background-color: #f0f0f0; color: #202020; }\n"
MAKO = """[mode={quiet}]
invisible=1
"""
QUIET = "do-not-disturb"
MAKO_SERVICE = "org.freedesktop.Notifications", "/fr/emersion/Mako", "fr.emersion.Mako"
CURSORS = "unseen"
INTERFACE = "org.gnome.desktop.interface"
BUTTONS = {1: LEFT, 2: MIDDLE, 3: RIGHT}
# By so much the bar's edge is blurred where its scale is no whole number.
BLUR = 2
# A tooltip is smaller.
LEAST_POPOVER = 200


def write(path, text):
    """A file, with the folders that it lies in."""
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text)


def unseen_cursors(folder):
    """A theme of cursors that nobody sees: without a screen's own plane for it the cursor is in every picture."""
    side, hot, pixels = 1, 0, bytes(4)
    image = 0xFFFD0002
    header = struct.pack("<4s3I", b"Xcur", 16, 0x10000, 1) + struct.pack("<3I", image, side, 28)
    chunk = struct.pack("<9I", 36, image, side, 1, side, side, hot, hot, 0) + pixels
    for name in ("default", "left_ptr", "text", "xterm", "pointer", "hand2"):
        file = folder / CURSORS / "cursors" / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(header + chunk)
    write(folder / CURSORS / "index.theme", "[Icon Theme]\nName=Unseen\n")


class Sway(Desktop):
    """See Desktop."""

    name = "sway"
    environment = {
        "XDG_SESSION_TYPE": "wayland",
        "XDG_SESSION_CLASS": "user",
        "XDG_CURRENT_DESKTOP": "sway",
        "XDG_SESSION_DESKTOP": "sway",
        "DESKTOP_SESSION": "sway",
        "WLR_BACKENDS": "headless",
        "WLR_LIBINPUT_NO_DEVICES": "1",
        "WLR_RENDERER": "pixman",
        "XCURSOR_THEME": CURSORS,
    }
    kept = 1
    buttons_in = "mako's menu"
    _factor = 1  # as many pixels of the picture are one of the shell's
    _before = None  # the screen before the last click with nothing open, and what was on it

    def start_shell(self):
        self.name = f"sway {version_of('sway')} with Waybar {version_of('waybar')}"
        runtime = pathlib.Path(os.environ["XDG_RUNTIME_DIR"])
        os.environ |= {"SWAYSOCK": str(runtime / "sway.sock"), "WAYLAND_DISPLAY": "wayland-1"}
        icons = pathlib.Path(os.environ["XDG_DATA_HOME"]) / "icons"
        os.environ["XCURSOR_PATH"] = f"{icons}:/usr/share/icons"
        unseen_cursors(icons)
        self._set("cursor-theme", CURSORS)
        self._configuration = pathlib.Path(os.environ["XDG_CONFIG_HOME"])
        write(self._configuration / "waybar/config", json.dumps(WAYBAR))
        write(self._configuration / "waybar/style.css", STYLE)
        write(self._configuration / "mako/config", MAKO.format(quiet=QUIET))
        width, height = self.screen
        ready, file = runtime / "sway-is-ready", self._configuration / "sway/config"
        write(file, CONFIGURATION.format(width=width, height=height, cursors=CURSORS, ready=ready))
        self.spawn("sway", "env", "-u", "WAYLAND_DISPLAY", "sway", "--config", str(file))
        wait_for(lambda: ready.exists() and (runtime / "wayland-1").exists(), "sway")
        self.tell_bus("WAYLAND_DISPLAY", "SWAYSOCK", "XDG_CURRENT_DESKTOP", "XDG_SESSION_TYPE", "XCURSOR_THEME")
        self.accessibility = Accessibility(self)
        self._pointer = Pointer(width, height).__enter__()
        self._keyboard = Keyboard().__enter__()
        self._start_panel()

    def _start_panel(self):
        self._panel = self.spawn("waybar", "waybar")
        wait_for(lambda: self.owned(WATCHER), "the tray")

    def restart_shell(self):
        end(self._panel)
        wait_for(lambda: not self.owned(WATCHER), "the end of Waybar")
        self._start_panel()

    def lock(self):
        run("swaylock", "--daemonize", "--color", "000000")
        wait_for(lambda: not self._bar_drawn(), "the lock")

    def unlock(self):
        def goes():
            self._keyboard.type(PASSWORD)
            self.key("Return")
            with contextlib.suppress(TimeoutError):
                return wait_for(lambda: not said("pidof", "swaylock"), "the end of the lock", 8)
            # What it had of the password before it had the keyboard.
            self.key("Escape")
            return False

        wait_for(goes, "the end of the lock")
        wait_for(self._bar_drawn, "the bar")

    def _bar_drawn(self):
        """Whether more than one colour is to be seen where Waybar is, which does not know of a lock over it."""
        picture, (x, y) = self.picture(), self._bar().middle
        return len({picture.pixel(each, y) for each in range(2 * x)}) > 1

    def picture(self):
        return wayland_screen()

    def item(self):
        """The only picture in the tray; what holds it has its tooltip for a description."""
        with contextlib.suppress(GLib.Error):
            return next((self._box(node.box()) for node in self._nodes() if self._role(node) == ICON_ROLE), None)
        return None

    def _nodes(self):
        """All that Waybar shows."""
        for window in self.accessibility.windows("waybar"):
            yield from window.within()

    @staticmethod
    def _role(node):
        """What kind of widget it is, or None once it has gone."""
        with contextlib.suppress(GLib.Error):
            return node.role
        return None

    def _bar(self):
        return self._box(next(self.accessibility.windows("waybar")).box())

    def windows(self):
        return [
            Window(each["name"], Box(*each["rect"].values()), each["focused"])
            for each in sway.nodes()
            if each.get("pid") and each["visible"]
        ]

    def popover(self):
        """sway does not tell of layers: what lies over the screen as it was before the click."""
        if not self._before or self.menu_open() or self._others() != self._before[1]:
            return None
        changed = self.picture().changed_since(self._before[0], self._bar().bottom + BLUR)
        if not changed:
            return None
        left, top, right, bottom = changed
        return Box(left, top, right - left, bottom - top) if bottom - top > LEAST_POPOVER else None

    def _others(self):
        """What else may lie over the screen."""
        return [each.title for each in self.windows()], [each.title for each in self.notifications()]

    def popover_focused(self):
        return self.answers_tab()

    def menu_open(self):
        return bool(self._lines())

    def _lines(self):
        """The lines of the open menu. Of what changes in them GTK tells nothing: their texts are the first ones."""
        return [node for node in self._nodes() if self._role(node) == MENU_ITEM]

    def open_menu(self):
        """And have no tooltip lie over it."""
        self._without_menu = self.picture()
        super().open_menu()
        wait_for(self.menu_open, "the menu")
        self.move(*self.wallpaper())

    def choose(self, words, number):
        """Waybar's has no keyboard."""
        chosen = [node for node in self._lines() if node.sensitive][number - 1]
        self.click(*self._on_screen(self._box(chosen.box())).middle)

    def _on_screen(self, line):
        """Waybar before 0.10 tells where in its menu a line is, not where that is: what is new below the bar."""
        menu = next(self._box(node.box()) for node in self._nodes() if self._role(node) == WINDOW)
        if menu.left > 0:
            return line
        left, _, _, bottom = self.picture().changed_since(self._without_menu, self._bar().bottom)
        return dataclasses.replace(line, left=left + line.left, top=bottom - menu.height + line.top)

    def close_menu(self):
        self.click(*self.wallpaper())

    def bare_panel(self):
        return self.screen[0] // 2, self._bar().height // 2

    def other_item(self):
        """The button of the first workspace."""
        return next(self._box(node.box()).middle for node in self._nodes() if node.name == "1")

    def notifications(self):
        listed = self.call(*MAKO_SERVICE, "ListNotifications")[0]
        if not listed:
            return []
        picture, bar = self.picture(), self._bar()
        right = Box(bar.right // 2, bar.bottom, bar.right - bar.right // 2, self.screen[1] // 2)
        banner = len(set(picture.area(*right.corners))) > 1
        icon = ICON if shows_icon(picture, right) else ""
        return [
            Notification(each["summary"], each["body"], tuple(each["actions"].values()), None, icon, banner)
            for each in reversed(listed)
        ]

    def press(self, notification, label):
        """mako draws no buttons: they are in a menu that sway's users start by a key."""
        before = self.picture()
        menu = self.spawn("menu", "makoctl", "menu", shutil.which("wmenu") or "bemenu")
        # What is typed before it has the keyboard goes elsewhere.
        wait_for(lambda: self.picture().changed_since(before, 0), "the menu")

        self._keyboard.type(label)
        self.key("Return")
        wait_for(lambda: menu.poll() is not None, "the end of the menu")

    def clear_notifications(self):
        run("makoctl", "dismiss", "--all")
        wait_for(lambda: not self.notifications(), "the end of the notifications")

    def move(self, x, y):
        self._pointer.move(x, y)

    def click(self, x, y, button=1):
        if not self.popover() and not self.menu_open():
            self._before = self.picture(), self._others()
        self._pointer.click(x, y, BUTTONS[button])

    def key(self, name):
        self._keyboard.key(name)

    def set_panel_dark(self, dark):
        write(self._configuration / "waybar/style.css", STYLE if dark else LIGHT_STYLE)
        self.restart_shell()
        wait_for_panel(self, dark)
        wait_for(self.item, "the item")

    def set_dark(self, dark):
        self._set("color-scheme", "prefer-dark" if dark else "default")

    def set_accent(self, number):
        raise CannotBe("sway has none, and GTK's portal tells of none")

    def set_text_size(self, factor):
        self._set("text-scaling-factor", str(factor))

    def set_scale(self, factor):
        run("swaymsg", "output", "*", "scale", str(factor))
        self._factor = factor
        return factor

    def set_do_not_disturb(self, wanted):
        run("makoctl", "mode", "-a" if wanted else "-r", QUIET)

    @staticmethod
    def _set(key, value):
        """In a session without a settings program, what GTK and the portal go by."""
        run("gsettings", "set", INTERFACE, key, value)

    def _box(self, box):
        return Box(*(round(value * self._factor) for value in (box.left, box.top, box.width, box.height)))


DESKTOP = Sway
