# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Private buses, and a monitor of what is said on one."""

import itertools
import pathlib

from gi.repository import Gio, GLib

from processes import PATIENCE_SECONDS, LaptopError, Process, wait_until

CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path={socket}</listen>
  <servicedir>{services}</servicedir>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""
BUS = "org.freedesktop.DBus"


class Bus:
    """A private message bus: nothing on it starts by itself but what is made startable, and everybody may own any
    name."""

    def __init__(self, name, folder, environment):
        socket = f"{folder}/{name}"
        configuration = f"{folder}/{name}.conf"
        self._services = pathlib.Path(folder) / f"{name}-services"
        self._services.mkdir()
        with open(configuration, "w", encoding="utf-8") as file:
            file.write(CONFIGURATION.format(socket=socket, services=self._services))
        self.address = f"unix:path={socket}"
        self._process = Process(
            f"{name} bus",
            ["dbus-daemon", f"--config-file={configuration}", "--nofork", "--nopidfile"],
            environment,
            f"{folder}/{name}-bus.log",
        )
        self.connection = None

    def wait(self):
        """Wait until the bus answers."""
        wait_until(self._try_to_connect, self._process.name)

    def connect(self):
        """A new connection of the laptop to this bus."""
        flags = Gio.DBusConnectionFlags
        connection = Gio.DBusConnection.new_for_address_sync(
            self.address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None
        )
        connection.set_exit_on_close(False)
        return connection

    def make_startable(self, name, command):
        """Have the bus run a command when a program wants a service that does not run."""
        file = self._services / f"{name}.service"
        file.write_text(f"[D-BUS Service]\nName={name}\nExec={command}\n", encoding="utf-8")
        ask_bus(self.connection, "ReloadConfig", "()")

    def make_nothing_startable(self):
        """Have it run nothing by itself, as at first."""
        if files := list(self._services.iterdir()):
            for file in files:
                file.unlink()
            ask_bus(self.connection, "ReloadConfig", "()")

    def owner(self, name):
        """The unique name of a name's owner, or None."""
        try:
            return ask_bus(self.connection, "GetNameOwner", "(s)", name)
        except GLib.Error:
            return None

    def _try_to_connect(self):
        if not self._process.running():
            raise LaptopError(f"{self._process.name}: ended while starting")
        try:
            self.connection = self.connect()
        except GLib.Error:
            return False
        return True


def ask_bus(connection, method, signature, *arguments):
    """Call a method of the message bus itself."""
    values = GLib.Variant(signature, arguments)
    reply = connection.call_sync(
        BUS, "/org/freedesktop/DBus", BUS, method, values, None, 0, PATIENCE_SECONDS * 1000, None
    )
    return reply.unpack()[0] if reply.n_children() else None


def own(connection, name):
    """Take a bus name, or fail."""
    do_not_queue, primary_owner, already_owner = 4, 1, 4
    if ask_bus(connection, "RequestName", "(su)", name, do_not_queue) not in (primary_owner, already_owner):
        raise LaptopError(f"{name} is taken")


def give_up(connection, name):
    """Release a bus name."""
    ask_bus(connection, "ReleaseName", "(s)", name)


def call(connection, name, path, interface, method, arguments=None):
    """Call a service while the main loop goes on, and give its reply as a GLib.Variant."""
    replies = []

    def on_reply(source, result):
        try:
            replies.append(source.call_finish(result))
        except GLib.Error as error:
            replies.append(error)

    connection.call(
        name,
        path,
        interface,
        method,
        arguments,
        None,
        Gio.DBusCallFlags.NO_AUTO_START,
        PATIENCE_SECONDS * 1000,
        None,
        on_reply,
    )
    wait_until(lambda: replies, f"{interface}.{method}", PATIENCE_SECONDS + 1)
    if isinstance(replies[0], GLib.Error):
        raise LaptopError(f"{interface}.{method}: {replies[0].message}")
    return replies[0]


class BusMonitor:
    """Hands every message on a bus that fits one of the rules to `on_message`, in the main loop."""

    def __init__(self, bus, rules, on_message):
        self._bus = bus
        self._on_message = on_message
        self._barriers = itertools.count(1)
        self._passed = 0
        self._connection = bus.connect()
        self._connection.add_filter(self._on_any_message)
        own_signals = f"type='signal',sender='{bus.connection.get_unique_name()}',interface='{BARRIER}'"
        call(
            self._connection,
            BUS,
            "/org/freedesktop/DBus",
            "org.freedesktop.DBus.Monitoring",
            "BecomeMonitor",
            GLib.Variant("(asu)", ([*rules, own_signals], 0)),
        )

    def catch_up(self):
        """Wait until everything that was said on the bus before has been handed on."""
        barrier = next(self._barriers)
        self._bus.connection.emit_signal(
            None, "/org/lumora/Laptop", BARRIER, "Reached", GLib.Variant("(u)", (barrier,))
        )
        wait_until(lambda: self._passed >= barrier, "the bus monitor")

    def _on_any_message(self, _connection, message, incoming):
        if not incoming or message.get_sender() == BUS:
            return message
        GLib.idle_add(self._hand_on, message, priority=GLib.PRIORITY_HIGH)
        return None

    def _hand_on(self, message):
        if message.get_interface() == BARRIER:
            self._passed = message.get_body().unpack()[0]
        else:
            self._on_message(message)
        return GLib.SOURCE_REMOVE


BARRIER = "org.lumora.Laptop.Barrier"
