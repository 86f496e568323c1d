# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""A stand-in for a notification server: dbusmock's, which here closes as the protocol says, and tells
whether it is not to disturb, as Plasma's does."""

# pylint: disable=wildcard-import,unused-wildcard-import
import dbus
from dbusmock.templates import notification_daemon
from dbusmock.templates.notification_daemon import *

CLOSED_BY_CALL = 3


def load(mock, parameters):
    """Make the server with the capabilities in `parameters`."""
    notification_daemon.load(mock, parameters)
    mock.AddProperty(MAIN_IFACE, "Inhibited", dbus.Boolean(False))
    mock.AddMethod(
        MAIN_IFACE,
        "CloseNotification",
        "u",
        "",
        f'self.EmitSignal("", "NotificationClosed", "uu", [args[0], {CLOSED_BY_CALL}])',
    )
