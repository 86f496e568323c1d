# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What all desktops on an X server have in common: the server, its mouse, keys, windows and pictures."""

import contextlib
import os
import re
import subprocess

from gi.repository import GLib

from desktop import Box, CannotBe, Desktop, Notification, Window, end
from desktops.accessibility import BUTTONS, Accessibility, buttons, texts
from lumora_testing import screen
from lumora_testing.remote import wait_for

ICON = "org.lumora.Lumora"
PASSWORD = "newcomer"
WATCHER = "org.kde.StatusNotifierWatcher"
# A line of xwininfo: number, title, size, place in its parent, place on the screen.
WINDOW = re.compile(r'\s*(0x\w+) (?:"(.*)"|\(has no name\)): \(.*\)\s+(\d+)x(\d+)\+-?\d+\+-?\d+ +\+(-?\d+)\+(-?\d+)$')


def start_x_server(desktop):
    """Start an X server that nobody sees; its name."""
    file = desktop.folder / "display"
    width, height = desktop.screen
    server = f'exec Xvfb -displayfd 3 -screen 0 {width}x{height}x24 -nolisten tcp -noreset 3>"$0"'
    desktop.spawn("xvfb", "sh", "-c", server, str(file))
    wait_for(lambda: file.exists() and file.read_text().endswith("\n"), "the X server")
    return f":{file.read_text().strip()}"


def run(*command):
    """Do what a user does in the desktop's own settings."""
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)


def wait_for_panel(desktop, dark):
    """Wait until the panel is dark, or light."""
    wait_for(lambda: (sum(desktop.picture().pixel(*desktop.bare_panel())) < 384) == dark, "the panel's colour", 20)


def said(*command):
    """What a command says, nothing where it fails: a window may go while it is looked at."""
    return subprocess.run(command, capture_output=True, text=True, check=False).stdout


def unlock_by_password(locked, display=None):
    """Type it into the lock of the screen until that goes: while it is not drawn yet it loses keys."""
    there = {**os.environ, "DISPLAY": display or os.environ["DISPLAY"]}

    def goes():
        for words in (["mousemove_relative", "1", "1"], ["type", PASSWORD], ["key", "Return"]):
            subprocess.run(["xdotool", *words], env=there, check=True)
        try:
            return wait_for(lambda: not locked(), "the end of the lock", 5)
        except TimeoutError:
            return False

    wait_for(goes, "the end of the lock")


def shows_icon(picture, box):
    """Whether Lumora's icon is to be seen in an area: nothing else there is of its green, however a shell fades it."""
    pixels = {row[at : at + 3] for row in picture.area(*box.corners) for at in range(0, len(row), 3)}
    return sum(g - r > 50 and b - r > 35 and g >= b for r, g, b in pixels) > 20


class X11(Desktop):
    """See Desktop. A subclass brings the programs of `start_shell`, and finds the item."""

    environment = {"XDG_SESSION_TYPE": "x11", "XDG_SESSION_CLASS": "user", "LIBGL_ALWAYS_SOFTWARE": "1"}
    panel = ()  # the command of the panel, where that is a program of its own
    panel_programs = ()  # as it and those that it shows call themselves
    other = ""  # what something else there that can be clicked tells of itself
    notifier = ""  # the program that shows notifications
    locker = ""  # the command that locks the screen

    def start_session(self):
        """Start what every session on X has before its programs."""
        os.environ["DISPLAY"] = start_x_server(self)
        self.tell_bus("DISPLAY", "XDG_CURRENT_DESKTOP", "XDG_SESSION_TYPE")
        self.accessibility = Accessibility(self)

    def start_panel(self):
        """Start it and wait for its tray."""
        self._panel = self.spawn("panel", *self.panel)
        self.wait_for_name(WATCHER)

    def restart_shell(self):
        end(self._panel)
        wait_for(lambda: not self.owned(WATCHER), "the end of the panel")
        self.start_panel()

    def find_item(self, condition, *programs):
        """The box of the button in the panel, or in these programs of it, for which the condition is true, or None."""
        node = self.accessibility.button(programs or self.panel_programs, condition)
        with contextlib.suppress(GLib.Error):
            return node.box() if node else None
        return None

    def other_item(self):
        def told(_, node):
            return self.other in node.name + node.description

        return self.accessibility.button(self.panel_programs, told, BUTTONS).box().middle

    def bare_panel(self):
        return self.screen[0] // 2, self.item().middle[1]

    def lock(self):
        # It answers once it is unlocked.
        self.spawn("lock", self.locker, "--lock")
        wait_for(self._locked, "the lock")

    def unlock(self):
        unlock_by_password(self._locked)

    def _locked(self):
        return " active" in said(self.locker, "--query")

    def set_scale(self, factor):
        raise CannotBe("programs on X ask for a scale when they start")

    def wait_for_name(self, name):
        """Wait until somebody has a name on the session's bus."""
        wait_for(lambda: self.owned(name), name)

    def picture(self):
        return screen.x_screen()

    def windows(self):
        return list(self._windows().values())

    def _windows(self):
        """By their numbers, the lowest first."""
        visible = set(map(int, said("xdotool", "search", "--onlyvisible", "--name", "--class", ".").split()))
        focus = said("xdotool", "getwindowfocus").strip()
        windows = {}
        for line in reversed(said("xwininfo", "-root", "-tree").splitlines()):
            if (parts := WINDOW.match(line)) and (number := int(parts[1], 16)) in visible:
                width, height, left, top = map(int, parts.groups()[2:])
                windows[number] = Window(parts[2] or "", Box(left, top, width, height), str(number) == focus)
        return windows

    def menu_open(self):
        """Of whatever program: nobody else opens one here."""
        return any("_MENU" in said("xprop", "-id", str(number), "_NET_WM_WINDOW_TYPE") for number in self._windows())

    def popover_focused(self):
        """It takes the keys, not the focus."""
        return self.answers_tab()

    def move(self, x, y):
        subprocess.run(["xdotool", "mousemove", str(x), str(y)], check=True)

    def click(self, x, y, button=1):
        screen.click(x, y, button)

    def key(self, name):
        screen.key(name)

    def notifications(self):
        """The windows of the program that shows them: a title, then a text."""
        found = []
        picture = self.picture()
        for window in self.accessibility.windows(self.notifier):
            with contextlib.suppress(GLib.Error):
                lines = [line for child in window.children for line in texts(child)]
                if window.showing and len(lines) > 1:
                    icon = ICON if shows_icon(picture, window.box()) else ""
                    found.append(Notification(lines[0], lines[1], tuple(buttons(window)), None, icon, banner=True))
        return found

    def press(self, notification, label):
        for window in self.accessibility.windows(self.notifier):
            if notification.title in texts(window):
                self.click(*buttons(window)[label].box().middle)
                return

    def clear_notifications(self):
        """By the button of each that closes it, or by a click into it."""
        for window in list(self.accessibility.windows(self.notifier)):
            if window.shows() and len(texts(window)) > 1:
                box = window.box()
                self.click(box.left + box.width // 2, box.top + 8)
                wait_for(lambda: not window.shows(), "the end of a notification", 10)  # noqa: B023
