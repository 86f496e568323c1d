# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What was sent to the notification server, and the user's hand on what it shows."""

import subprocess

from gi.repository import Gio, GLib

from bus_object import unpack_shallow
from buses import BusMonitor, call
from parts import choice_file
from processes import PATIENCE_SECONDS, LaptopError, wait_until

NAME = "org.freedesktop.Notifications"
PATH = "/org/freedesktop/Notifications"
DUNST = "org.dunstproject.cmd0"
RULES = [f"type='method_call',interface='{NAME}',member='Notify'", f"sender='{NAME}'"]
FIELDS = {
    "app_name": "s",
    "replaces_id": "u",
    "icon": "s",
    "summary": "s",
    "body": "s",
    "actions": "as",
    "hints": "a{sv}",
    "expire": "i",
}
# What is known besides; `starts` where a server that does not run may be started for it.
ADDED = {"id": "u", "sender": "s", "starts": "b"}


class Notifications:
    """Every Notify call since the start, also one that no server was there to answer."""

    def __init__(self, session, environment, folder):
        self._session = session
        self._environment = environment
        self._choice = choice_file(folder)
        self._monitor = BusMonitor(session, RULES, self._on_message)
        self._calls = []
        self._shown = []
        self._signals = []

    def clear(self):
        """Forget the calls so far."""
        self._monitor.catch_up()
        self._calls = []

    def sent(self):
        """The calls, as dictionaries of name to GLib.Variant."""
        self._monitor.catch_up()
        return [
            {key: GLib.Variant(kind, entry[key]) for key, kind in {**FIELDS, **ADDED}.items()} for entry in self._calls
        ]

    def server_was_started(self):
        """A new server shows nothing yet."""
        self._monitor.catch_up()
        self._shown = []

    def press_action(self, number):
        """Choose the default action of a notification, or else its first, in dunst's menu of actions."""
        self._require_shown(number)
        keys = [entry for entry in self._calls if entry["id"] == number][-1]["actions"][::2]
        if not keys:
            raise LaptopError(f"notification {number} has no action")
        key = "default" if "default" in keys else keys[0]
        with open(self._choice, "w", encoding="utf-8") as choice:
            choice.write(f"[{number},{key}]\n")
        self._signals = []
        self._command("ContextMenuCall")
        self._await_signal("ActionInvoked", (number, key))

    def dismiss(self, number):
        """Click a notification away."""
        self._require_shown(number)
        left, top, width, height = self._window()
        row = self._shown.index(number)
        middle = top + round(height * (row + 0.5) / len(self._shown))
        self._signals = []
        self._xdotool("mousemove", left + width // 2, middle, "click", 3)
        self._await_signal("NotificationClosed", (number, 2))

    def close_all(self):
        """Take everything off the screen."""
        self._monitor.catch_up()
        if self._shown:
            self._command("NotificationCloseAll")
            wait_until(lambda: not self._shown, "an empty screen")

    def _require_shown(self, number):
        self._monitor.catch_up()
        if number not in self._shown:
            raise LaptopError(f"notification {number} is not shown; shown are {self._shown}")

    def _command(self, method):
        call(self._session.connection, NAME, PATH, DUNST, method)

    def _await_signal(self, member, arguments):
        wait_until(lambda: (member, arguments) in self._signals, f"{member}{arguments}")

    def _window(self):
        """Where dunst's window is, once it is there: dunst answers first, and draws then."""
        told = {}

        def visible():
            found = self._xdotool("search", "--onlyvisible", "--class", "Dunst", "getwindowgeometry", "--shell")
            told.update(line.split("=") for line in found.stdout.splitlines() if "=" in line)
            return found.returncode == 0

        wait_until(visible, "dunst's window")
        return [int(told[key]) for key in ("X", "Y", "WIDTH", "HEIGHT")]

    def _xdotool(self, *arguments):
        return subprocess.run(
            ["xdotool", *map(str, arguments)],
            env=self._environment,
            capture_output=True,
            text=True,
            timeout=PATIENCE_SECONDS,
            check=False,
        )

    def _on_message(self, message):
        kind = message.get_message_type()
        if kind == Gio.DBusMessageType.METHOD_CALL:
            self._on_notify(message)
        elif kind == Gio.DBusMessageType.METHOD_RETURN:
            self._on_reply(message)
        elif kind == Gio.DBusMessageType.SIGNAL and message.get_interface() == NAME:
            self._on_signal(message.get_member(), message.get_body().unpack() if message.get_body() else ())

    def _on_notify(self, message):
        if message.get_signature() != "susssasa{sv}i":
            return
        entry = dict(zip(FIELDS, unpack_shallow(message.get_body())))
        starts = not message.get_flags() & Gio.DBusMessageFlags.NO_AUTO_START
        known = {"id": 0, "sender": message.get_sender(), "serial": message.get_serial(), "starts": starts}
        self._calls.append(entry | known)

    def _on_reply(self, message):
        for entry in self._calls:
            if (entry["sender"], entry["serial"]) == (message.get_destination(), message.get_reply_serial()):
                body = message.get_body()
                entry["id"] = body.unpack()[0] if body else 0
                if entry["id"] not in self._shown:
                    self._shown.append(entry["id"])

    def _on_signal(self, member, arguments):
        self._signals.append((member, arguments))
        if member == "NotificationClosed" and arguments and arguments[0] in self._shown:
            self._shown.remove(arguments[0])
