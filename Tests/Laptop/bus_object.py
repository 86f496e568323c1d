# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Objects that the laptop itself exports on its buses."""

import traceback

from gi.repository import Gio, GLib

from processes import LaptopError

PROPERTIES = "org.freedesktop.DBus.Properties"
ERROR = "org.lumora.Laptop.Error"
PROPERTIES_XML = f"""
<node><interface name="{PROPERTIES}">
  <method name="Get"><arg type="s"/><arg type="s"/><arg type="v" direction="out"/></method>
  <method name="GetAll"><arg type="s"/><arg type="a{{sv}}" direction="out"/></method>
  <method name="Set"><arg type="s"/><arg type="s"/><arg type="v"/></method>
  <signal name="PropertiesChanged"><arg type="s"/><arg type="a{{sv}}"/><arg type="as"/></signal>
</interface></node>"""


class BusObject:
    """One interface at one path.

    `methods` maps a name to (types in, types out, function), the types parted by spaces; the function
    returns the tuple of results. Properties are served as they are, so that one may hold a value of a
    wrong type.
    """

    def __init__(self, connection, path, interface, methods, properties=None):
        self._connection = connection
        self._path = path
        self._interface = interface
        self._methods = methods
        self._properties = dict(properties or {})
        self.delay_ms = 0
        self.methods_delay_ms = 0
        self._registrations = [self._register(self._description(), self._on_call)]
        if self._properties:
            self._registrations.append(self._register(PROPERTIES_XML, self._on_properties_call))

    def remove(self):
        """Take the object off the bus."""
        for registration in self._registrations:
            self._connection.unregister_object(registration)
        self._registrations = []

    def change(self, values):
        """Set properties (name to GLib.Variant) and announce them."""
        self._properties.update(values)
        self.emit("PropertiesChanged", GLib.Variant("(sa{sv}as)", (self._interface, values, [])), PROPERTIES)

    def emit(self, signal, arguments, interface=None):
        """Emit a signal to everybody."""
        self._connection.emit_signal(None, self._path, interface or self._interface, signal, arguments)

    def value(self, name):
        """The present value of a property."""
        return self._properties[name]

    def _register(self, description, on_call):
        interface = Gio.DBusNodeInfo.new_for_xml(description).interfaces[0]
        return self._connection.register_object(self._path, interface, on_call, None, None)

    def _description(self):
        members = [_method_xml(name, *signatures[:2]) for name, signatures in self._methods.items()]
        members += [
            f'<property name="{name}" type="{value.get_type_string()}" access="read"/>'
            for name, value in self._properties.items()
        ]
        return f'<node><interface name="{self._interface}">{"".join(members)}</interface></node>'

    def _on_call(self, _connection, _sender, _path, _interface, name, arguments, invocation):
        _, results, function = self._methods[name]
        GLib.timeout_add(
            self.methods_delay_ms, lambda: _answer(invocation, results, lambda: function(*unpack_shallow(arguments)))
        )

    def _on_properties_call(self, _connection, _sender, _path, _interface, name, arguments, invocation):
        call = {"Get": ("v", self._get), "GetAll": ("a{sv}", self._get_all), "Set": ("", self._set)}
        results, function = call[name]
        GLib.timeout_add(
            self.delay_ms, lambda: _answer(invocation, results, lambda: function(*unpack_shallow(arguments)))
        )

    def _get(self, _interface, name):
        return (self._properties[name],)

    def _get_all(self, interface):
        return (self._properties if interface == self._interface else {},)

    def _set(self, _interface, name, value):
        self.change({name: value})
        return ()


def unpack_shallow(value):
    """The arguments as Python values; a value in a variant stays a GLib.Variant and so keeps its type."""
    kind = value.get_type_string()
    if kind == "v":
        return value.get_variant()
    if kind.startswith("a{"):
        entries = (value.get_child_value(index) for index in range(value.n_children()))
        return {unpack_shallow(e.get_child_value(0)): unpack_shallow(e.get_child_value(1)) for e in entries}
    if kind.startswith("("):
        return tuple(unpack_shallow(value.get_child_value(index)) for index in range(value.n_children()))
    if kind.startswith("a"):
        return [unpack_shallow(value.get_child_value(index)) for index in range(value.n_children())]
    return value.unpack()


def _method_xml(name, arguments, results):
    types = [(part, "in") for part in arguments.split()] + [(part, "out") for part in results.split()]
    body = "".join(f'<arg type="{part}" direction="{direction}"/>' for part, direction in types)
    return f'<method name="{name}">{body}</method>'


def _answer(invocation, results, function):
    try:
        values = GLib.Variant(f"({results.replace(' ', '')})", tuple(function() or ()))
    except LaptopError as error:
        invocation.return_dbus_error(ERROR, str(error))
        return
    except Exception as error:  # a mistake in here has to reach the caller too
        traceback.print_exc()
        invocation.return_dbus_error(ERROR, str(error) or type(error).__name__)
        return
    invocation.return_value(values)
