# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What the checks ask of a desktop, and the bus that every desktop's session has."""

import dataclasses
import os
import pathlib
import re
import signal
import subprocess

from gi.repository import Gio, GLib

from lumora_testing.remote import PATIENCE_SECONDS, wait_for

BUS = "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus"
# What the simulated laptop sets for programs that have no desktop.
WITHOUT_DESKTOP = ("GSETTINGS_BACKEND", "DISPLAY", "WAYLAND_DISPLAY", "NO_AT_BRIDGE", "LC_ALL")


class NotSeen(Exception):
    """What the check is about does not happen here, in a few words."""


class CannotBe(Exception):
    """The desktop itself has no such thing, in a few words."""


@dataclasses.dataclass(frozen=True)
class Box:
    """A rectangle on the screen, in the pixels of its picture."""

    left: int
    top: int
    width: int
    height: int

    @property
    def right(self):
        return self.left + self.width

    @property
    def bottom(self):
        return self.top + self.height

    @property
    def middle(self):
        return self.left + self.width // 2, self.top + self.height // 2

    @property
    def corners(self):
        """As pictures take it."""
        return self.left, self.top, self.right, self.bottom


@dataclasses.dataclass(frozen=True)
class Window:
    """A window that the shell shows."""

    title: str
    box: Box
    focused: bool


@dataclasses.dataclass(frozen=True)
class MenuLine:
    """A line of the item's open menu."""

    text: str
    box: Box


@dataclasses.dataclass(frozen=True)
class Notification:
    """A notification that the shell shows or keeps; what it does not tell is empty."""

    title: str
    body: str
    buttons: tuple[str, ...] = ()
    application: str | None = ""  # None where the shell shows none of any
    icon: str = ""
    banner: bool = False  # it lies over the screen now


class Desktop:
    """One desktop's session. What a subclass leaves as it is here counts as not seen.

    Coordinates are those of the picture. From `start` on this process's environment is that of the session, and
    every program that it starts belongs to it; only the simulated laptop's own bus was taken before.
    """

    name = ""  # for people, with the version once it runs
    screen = 1366, 768
    environment = {}  # what makes programs know the desktop
    opens_with = "a click"  # what brings the popover
    # The least between a popover and the screen's edge where its box is what is drawn, which ends at the edge.
    kept = 0
    locks_by = ""  # what its lock is, if not all of it
    buttons_in = ""  # where the buttons of notifications are, if not on them

    def __init__(self, folder):
        self.folder = pathlib.Path(folder)  # for logs
        self.bus = None
        self._children = []

    def start(self):
        """Start the bus and the shell; it is there when this returns."""
        for name in WITHOUT_DESKTOP:
            os.environ.pop(name, None)
        os.environ.update(self.environment)
        socket = pathlib.Path(os.environ["XDG_RUNTIME_DIR"]) / "bus"
        address = os.environ["DBUS_SESSION_BUS_ADDRESS"] = f"unix:path={socket}"
        # One that starts services by itself, as on a real desktop: the portal, the settings, the notifications.
        self.spawn("bus", "dbus-daemon", "--session", "--nofork", "--nopidfile", f"--address={address}")
        self.bus = wait_for(lambda: connected(address), "the session bus")
        self.start_shell()

    def stop(self):
        """End what was started, the newest first."""
        for child in reversed(self._children):
            end(child)

    def spawn(self, name, *command):
        """A program of the session, with its output in a log."""
        with open(self.folder / f"{name}.log", "ab") as log:
            child = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=log, stderr=subprocess.STDOUT)
        self._children.append(child)
        return child

    def call(self, name, path, interface, method, signature="()", *arguments, seconds=PATIENCE_SECONDS):
        """Call a service of the session, and give what it says."""
        values = GLib.Variant(signature, arguments)
        return self.bus.call_sync(name, path, interface, method, values, None, 0, seconds * 1000, None).unpack()

    def owned(self, name):
        """Whether somebody has a name on the session's bus."""
        return self.call(*BUS, "NameHasOwner", "(s)", name)[0]

    def tell_bus(self, *names):
        """Have what the bus starts know these variables, too."""
        subprocess.run(["dbus-update-activation-environment", *names], check=True)

    # The shell.

    def start_shell(self):
        """Start the shell with its tray and wait for it."""
        raise NotImplementedError

    def restart_shell(self):
        """End the shell, or the panel where that is another program, and have it there again."""
        raise NotSeen("not tried")

    def lock(self):
        """Lock the session and wait until the panel is that of the lock, or gone."""
        raise NotSeen("not tried")

    def unlock(self):
        """Unlock it again."""
        raise NotSeen("not tried")

    # What is on the screen.

    def picture(self):
        """The whole screen, as a Picture."""
        raise NotImplementedError

    def item(self):
        """The box of Lumora's item in the panel, or None."""
        raise NotImplementedError

    def item_text(self):
        """The text beside the symbol, or None where the shell does not tell."""
        return None

    def windows(self):
        """The windows that are shown, the lowest first."""
        raise NotImplementedError

    def popover(self):
        """The box of the open popover, or None."""
        boxes = [window.box for window in self.windows() if window.title == "Lumora"]
        return boxes[0] if boxes else None

    def popover_focused(self):
        """Whether what is typed goes to the popover."""
        return any(window.focused for window in self.windows() if window.title == "Lumora")

    def answers_tab(self):
        """Whether the popover changes by that key, for where the focus is not told."""
        box = self.popover()
        before = self.picture()
        self.key("Tab")
        try:
            wait_for(lambda: self.picture().area(*box.corners) != before.area(*box.corners), "the ring", 3)
        except TimeoutError:
            return False
        return True

    def menu(self):
        """The lines of the item's menu while it is open, none while it is not; None where the shell does not tell."""
        return None

    def menu_open(self):
        """Whether the item's menu is open."""
        return bool(self.menu())

    def notifications(self):
        """The notifications that the shell shows or keeps, oldest first."""
        raise NotSeen("not tried")

    # What a user does.

    def move(self, x, y):
        """Move the mouse."""
        raise NotImplementedError

    def click(self, x, y, button=1):
        """Click there, with the left (1), middle (2) or right (3) button."""
        raise NotImplementedError

    def drag(self, start, end):
        """Move the mouse from one point to another with the left button pressed."""
        raise CannotBe("the desktop frames windows itself")

    def key(self, name):
        """Press and release a key by its name in X: "Escape", "Tab"."""
        raise NotImplementedError

    def wallpaper(self):
        """A point where nothing but the wallpaper is, whatever windows of Lumora's are open."""
        width, height = self.screen
        return width // 8, height * 7 // 8

    def bare_panel(self):
        """A point of the panel where nothing is."""
        raise NotSeen("not tried")

    def other_item(self):
        """A point of something else in the panel that can be clicked, the clock perhaps."""
        raise NotSeen("not tried")

    def own_battery(self):
        """The box of the desktop's own item for the battery, once it is there."""
        raise CannotBe("it has none")

    def open_own_battery(self):
        """Do what brings its panel or menu; Escape takes it away."""
        self.click(*self.own_battery().middle)

    def open_popover(self):
        """Do what brings the popover, or takes it away."""
        self.click(*self.item().middle)

    def hover(self):
        """Have the mouse rest on the item."""
        self.move(*self.item().middle)

    def open_menu(self):
        """Do what brings the menu."""
        self.click(*self.item().middle, button=3)

    def close_menu(self):
        """Do what closes the menu."""
        self.key("Escape")

    def choose(self, words, number):
        """Choose a line of the open menu by its words, or where the shell does not tell those, the line of that number
        among those that can be chosen."""
        lines = self.menu()
        if lines is not None:
            self.click(*next(line for line in lines if words in line.text).box.middle)
            return
        for name in ["Down"] * number + ["Return"]:
            self.key(name)

    def press(self, notification, label):
        """Press a button of a notification."""
        raise NotSeen("not tried")

    def clear_notifications(self):
        """Take away all notifications."""
        raise NotSeen("not tried")

    # What a user sets.

    def set_dark(self, dark):
        """Prefer dark, or light."""
        raise NotSeen("not tried")

    def set_panel_dark(self, dark):
        """Have a dark panel, or a light one."""
        raise NotSeen("not tried")

    def set_accent(self, number):
        """Choose one of two accent colours, 0 or 1; give it as (red, green, blue)."""
        raise NotSeen("not tried")

    def set_text_size(self, factor):
        """Have text larger by a factor."""
        raise NotSeen("not tried")

    def set_scale(self, factor):
        """Have everything larger by a factor, or the largest below it that the screen allows; give that."""
        raise NotSeen("not tried")

    def set_do_not_disturb(self, wanted):
        """Have the shell show no notifications."""
        raise NotSeen("not tried")


def connected(address):
    """A connection to a bus, or None as long as nobody listens there."""
    flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
    try:
        bus = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
    except GLib.Error:
        return None
    bus.set_exit_on_close(False)
    return bus


def version_of(package):
    """The first two numbers of an installed package's version."""
    told = subprocess.check_output(["dpkg-query", "--show", "--showformat", "${Version}", package], text=True)
    return ".".join(re.findall(r"\d+", told.split(":")[-1])[:2])


def end(child):
    """End a program, by force where it does not go."""
    for number in (signal.SIGTERM, signal.SIGKILL):
        if child.poll() is None:
            child.send_signal(number)
            try:
                child.wait(10)
            except subprocess.TimeoutExpired:
                pass
