# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""A stand-in for logind: dbusmock's, with a memory of every lock that was handed out."""

# pylint: disable=wildcard-import,unused-wildcard-import
import os

import dbus
from dbusmock.templates.logind import *
from gi.repository import GLib

LAPTOP_IFACE = "org.lumora.Laptop.Login"
LOCKS = []
REFUSALS = []


@dbus.service.method(MAIN_IFACE, in_signature="ssss", out_signature="h")
def Inhibit(_mock, what, who, why, mode):
    """Hand out a lock, and notice when the last copy of it is closed."""
    if REFUSALS:
        REFUSALS.pop()
        raise dbus.exceptions.DBusException("not now", name="org.freedesktop.DBus.Error.AccessDenied")
    reading_end, writing_end = os.pipe()
    lock = {"what": what, "who": who, "why": why, "mode": mode, "open": dbus.Boolean(True)}
    LOCKS.append(lock)

    def on_closed(descriptor, _condition):
        os.close(descriptor)
        lock["open"] = dbus.Boolean(False)
        return False

    GLib.unix_fd_add_full(GLib.PRIORITY_HIGH, reading_end, GLib.IO_HUP, on_closed)
    answer = dbus.types.UnixFd(writing_end)
    os.close(writing_end)
    return answer


@dbus.service.method(MAIN_IFACE, in_signature="", out_signature="a(ssssuu)")
def ListInhibitors(_mock):
    """The locks that are open, as logind lists them."""
    return [
        (lock["what"], lock["who"], lock["why"], lock["mode"], dbus.UInt32(0), dbus.UInt32(0))
        for lock in LOCKS
        if lock["open"]
    ]


@dbus.service.method(LAPTOP_IFACE, in_signature="", out_signature="aa{sv}")
def AllInhibitors(_mock):
    """Every lock that was handed out, with the key `open`."""
    return dbus.Array([dbus.Dictionary(lock, signature="sv") for lock in LOCKS], signature="a{sv}")


@dbus.service.method(LAPTOP_IFACE, in_signature="i", out_signature="")
def RefuseInhibit(_mock, times):
    """Hand out no lock for the next so many calls."""
    REFUSALS[:] = [True] * times


@dbus.service.method(LAPTOP_IFACE, in_signature="b", out_signature="")
def PrepareForSleep(mock, begins):
    """Tell everybody that the machine is about to sleep, or has woken up."""
    mock.props[MAIN_IFACE]["PreparingForSleep"] = begins
    mock.EmitSignal(MAIN_IFACE, "PrepareForSleep", "b", [begins])
