# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What programs tell screen readers of their widgets: where each is, and what is written on it."""

import contextlib
import dataclasses

from gi.repository import Gio, GLib

from desktop import Box, connected

REGISTRY = "org.a11y.atspi.Registry"
ROOT = "/org/a11y/atspi/accessible/root"
PLUG = "/org/a11y/atspi/accessible/1"
ACCESSIBLE = "org.a11y.atspi.Accessible"
COMPONENT = "org.a11y.atspi.Component"
ON_SCREEN = 0
# Roles and states by their numbers, as AT-SPI has them.
BUTTONS = (43, 62)  # push button, toggle button
PUSH_BUTTON = 43
ICON_ROLE = 26  # an item of an old kind of tray
MENU_ITEM = 35
WINDOW = 69
NOTIFICATION = 101
SENSITIVE = 1 << 24
SHOWING = 1 << 25
SECONDS = 5
LOOKS = 3


@dataclasses.dataclass(frozen=True)
class Node:
    """A widget of a program. One that goes while it is asked raises GLib.Error."""

    bus: Gio.DBusConnection
    owner: str
    path: str

    def call(self, interface, method, signature="()", *arguments):
        """What it says."""
        values = GLib.Variant(signature, arguments)
        return self.bus.call_sync(
            self.owner, self.path, interface, method, values, None, 0, SECONDS * 1000, None
        ).unpack()

    def value_of(self, interface, name):
        """What one of its properties is."""
        return self.call("org.freedesktop.DBus.Properties", "Get", "(ss)", interface, name)[0]

    @property
    def name(self):
        return self.value_of(ACCESSIBLE, "Name")

    @property
    def description(self):
        return self.value_of(ACCESSIBLE, "Description")

    @property
    def role(self):
        return self.call(ACCESSIBLE, "GetRole")[0]

    @property
    def showing(self):
        return self._is(SHOWING)

    @property
    def sensitive(self):
        return self._is(SENSITIVE)

    def _is(self, state):
        return bool(self.call(ACCESSIBLE, "GetState")[0][0] & state)

    @property
    def children(self):
        return [Node(self.bus, *each) for each in self.call(ACCESSIBLE, "GetChildren")[0]]

    def box(self):
        """Where it is."""
        return Box(*self.call(COMPONENT, "GetExtents", "(u)", ON_SCREEN)[0])

    def shows(self):
        """Whether it is there and to be seen."""
        try:
            return self.showing
        except GLib.Error:
            return False

    def within(self):
        """It and all within that shows, from the top."""
        try:
            if not self.showing:
                return
            yield self
            children = self.children
        except GLib.Error:
            return
        for child in children:
            yield from child.within()


class Accessibility:
    """The bus on which programs tell it."""

    def __init__(self, desktop):
        (address,) = desktop.call("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress")
        self.bus = connected(address)

    def programs(self):
        """Each program that tells something, by its name."""
        for node in Node(self.bus, REGISTRY, ROOT).children:
            with contextlib.suppress(GLib.Error):
                yield node.name, node

    def windows(self, *names):
        """The windows of the programs of these names."""
        for name, program in self.programs():
            if name in names:
                with contextlib.suppress(GLib.Error):
                    yield from program.children

    def plugs(self, *names):
        """What programs of these names show within another's window, which does not always tell of it."""
        return [Node(self.bus, program.owner, PLUG) for name, program in self.programs() if name in names]

    def button(self, programs, condition, roles=(PUSH_BUTTON,)):
        """A button in the windows of programs for which the condition is true, or None."""
        # What is just laid out anew shows nothing for a moment.
        for _ in range(LOOKS):
            for window in [*self.windows(*programs), *self.plugs(*programs)]:
                for node in window.within():
                    with contextlib.suppress(GLib.Error):
                        if node.role in roles and condition(window, node):
                            return node
        return None


def anything(_window, _node):
    """A condition for what is the only one."""
    return True


def texts(node):
    """What is to be read in it, from top to bottom."""
    found = []
    for each in node.within():
        with contextlib.suppress(GLib.Error):
            if name := each.name.strip():
                found.append(name)
    return found


def buttons(node):
    """The buttons in it, by their labels."""
    found = {}
    for each in node.within():
        with contextlib.suppress(GLib.Error):
            if each.role in BUTTONS and each.name:
                found[each.name] = each
    return found
