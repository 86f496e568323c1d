# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What a screen reader is told of the popover and the settings. Run it in the simulated laptop:
screen_reader.py BUNDLE
"""

import subprocess
import sys
import unittest

import gi

from lumora_testing.bundle import Lumora, forget, start_again, windows
from lumora_testing.remote import RemoteLaptop, wait_for
from lumora_testing.screen import key

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib  # noqa: E402

BUNDLE = sys.argv.pop()
LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
# As AT-SPI called it before 2.54.
PUSH_BUTTON = {"button": "push button"}
TABLE = "table", "Daily summary"
SAYS_NOTHING = {"frame", "filler", "panel", "scroll pane", "viewport", "layered pane"}


def begin_reading():
    """Have an accessibility bus, and say on it that somebody reads."""
    launcher = subprocess.Popen([LAUNCHER, "--launch-immediately"])
    session = Gio.bus_get_sync(Gio.BusType.SESSION)

    def enabled():
        # Former toolkits wait for the one; later buses have the other alone.
        for name in ("ScreenReaderEnabled", "IsEnabled"):
            try:
                session.call_sync(
                    "org.a11y.Bus",
                    "/org/a11y/bus",
                    "org.freedesktop.DBus.Properties",
                    "Set",
                    GLib.Variant("(ssv)", ("org.a11y.Status", name, GLib.Variant("b", True))),
                    None,
                    0,
                    1000,
                    None,
                )
                return True
            except GLib.Error as error:
                if not error.matches(Gio.dbus_error_quark(), Gio.DBusError.INVALID_ARGS):
                    return False
        return False

    wait_for(enabled, "the accessibility bus")
    Atspi.init()
    return launcher


def children(node):
    return [child for child in map(node.get_child_at_index, range(node.get_child_count())) if child]


def window(title):
    """The accessible window, or None."""
    for program in children(Atspi.get_desktop(0)):
        for shown in children(program):
            if shown.get_name() == title and shown.get_state_set().contains(Atspi.StateType.SHOWING):
                return shown
    return None


def value(node):
    """The number that it holds, or None."""
    counts = node.get_role_name() in ("progress bar", "slider")
    return Atspi.Value.get_current_value(node) if counts else None


def told(node):
    """All that is to be seen of it, from top to bottom: role, name, value."""
    states = node.get_state_set()
    if not states.contains(Atspi.StateType.SHOWING) and not states.contains(Atspi.StateType.VISIBLE):
        return []
    role = PUSH_BUTTON.get(node.get_role_name(), node.get_role_name())
    said = [] if role in SAYS_NOTHING else [(role, node.get_name(), value(node))]
    return said + [line for child in children(node) for line in told(child)]


def everything(node):
    """It and all within."""
    yield node
    for child in children(node):
        yield from everything(child)


def label(node):
    """The name of what it is labelled by, or None."""
    for relation in node.get_relation_set():
        if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY:
            return relation.get_target(0).get_name()
    return None


def text(node):
    """What is written in it."""
    return Atspi.Text.get_text(node, 0, Atspi.Text.get_character_count(node))


class Heard:
    """What the focus has been on."""

    def __init__(self):
        self._nodes = []
        self._listener = Atspi.EventListener.new(lambda event: event.detail1 and self._nodes.append(event.source))
        self._listener.register("object:state-changed:focused")

    def clear(self):
        self._nodes.clear()

    def wait(self, role, name):
        """Wait until the focus has been on such a one, and give it."""
        wait_for(lambda: self._find(role, name), f"the focus on {role} {name!r}")
        return self._find(role, name)

    def _find(self, role, name):
        while GLib.MainContext.default().iteration(False):
            pass
        return next((node for node in self._nodes if (node.get_role_name(), node.get_name()) == (role, name)), None)


class ScreenReader(unittest.TestCase):
    """On the laptop as it is at first: at 60 %, on battery."""

    @classmethod
    def setUpClass(cls):
        cls.launcher = begin_reading()
        cls.addClassCleanup(cls.launcher.wait)
        cls.addClassCleanup(cls.launcher.terminate)

    def setUp(self):
        RemoteLaptop().reset()
        forget()
        self.heard = Heard()
        self.lumora = self.enterContext(Lumora(BUNDLE))
        wait_for(self.lumora.history, "the first sample")

    def test_the_popover(self):
        start_again(BUNDLE)
        # Once for the first opening, when the reader learns of Lumora, and once for all the others.
        for _ in range(2):
            popover = self.heard.wait("dialog", "60%. On battery, 2 h 42 min left")
            key("Tab")
            self.heard.wait("radio button", "24 hours")
            key("Escape")
            wait_for(lambda: not windows("Lumora"), "the end of the popover")
            self.heard.clear()
            start_again(BUNDLE)
        self.assertEqual(
            wait_for(lambda: told(popover), "the popover"),
            [
                ("dialog", "60%. On battery, 2 h 42 min left", None),
                ("progress bar", "Battery level", 60),
                ("label", "On battery, 2 h 42 min left", None),
                ("label", "Cycle count", None),
                ("label", "120 of 1000", None),
                ("progress bar", "Cycle count", 120),
                ("label", "Battery health", None),
                ("label", "90% · Fair", None),
                ("label", "Temperature", None),
                ("label", "31.2 °C", None),
                ("label", "Power out", None),
                ("label", "10.0 W", None),
                ("radio button", "24 hours", None),
                ("radio button", "7 days", None),
                ("label", "Collecting history… a graph appears after a few minutes.", None),
                ("check box", "Daily summary", None),
                ("label", "Lumora can only remind you. A Mac app cannot stop the charger.", None),
                ("push button", "Settings…", None),
                ("push button", "Quit", None),
            ],
        )

    def test_the_table_of_days(self):
        start_again(BUNDLE)
        popover = self.heard.wait("dialog", "60%. On battery, 2 h 42 min left")
        key("Tab", "Tab")
        self.heard.wait("check box", "Daily summary")
        key("space")

        def table():
            nodes = everything(popover)
            return next((node for node in nodes if (node.get_role_name(), node.get_name()) == TABLE), None)

        days = wait_for(table, "the table")
        self.assertEqual((Atspi.Table.get_n_rows(days), Atspi.Table.get_n_columns(days)), (1, 4))
        headings = [Atspi.Table.get_column_header(days, column).get_name() for column in range(4)]
        self.assertEqual(headings, ["Day", "Avg", "Range", "Charging"])
        cells = [Atspi.Table.get_accessible_at(days, 0, column) for column in range(4)]
        self.assertEqual([cell.get_name() for cell in cells[1:]], ["60%", "60–60%", "–"])
        self.assertEqual(Atspi.Table.get_row_description(days, 0), cells[0].get_name())

    def test_the_settings(self):
        subprocess.check_call(["gapplication", "action", "org.lumora.Lumora", "settings"])
        wait_for(lambda: window("Lumora Settings"), "the settings")
        lines = told(window("Lumora Settings"))
        for expected in [
            ("check box", "Charge limit", None),
            ("slider", "Alert when charging reaches 80%", 80),
            ("check box", "Low battery", None),
            ("slider", "Alert on battery at 20% or less", 20),
            ("push button", "Reset History…", None),
            ("check box", "Launch at Login", None),
        ]:
            self.assertIn(expected, lines)
        self.assertEqual([line for line in lines if not line[1] and line[0] != "scroll bar"], [])

    def test_says_which_sound_and_which_time_it_is(self):
        subprocess.check_call(["gapplication", "action", "org.lumora.Lumora", "settings"])
        wait_for(lambda: window("Lumora Settings"), "the settings")
        controls = list(everything(window("Lumora Settings")))
        sounds = [node for node in controls if node.get_role_name() == "combo box"]
        self.assertEqual(
            [node.get_description() for node in sounds],
            [
                "Charge limit",
                "Low battery",
                "Suggest Low Power Mode",
                "Plugged in too long",
                "Battery health below 80% (once)",
            ],
        )
        self.assertEqual({(label(node), node.get_name()) for node in sounds}, {("Sound", "Default")})
        times = [node for node in controls if node.get_role_name() == "spin button"]
        self.assertEqual([(label(node), text(node)) for node in times], [("From", "22:00"), ("Until", "07:00")])


if __name__ == "__main__":
    unittest.main(verbosity=2)
