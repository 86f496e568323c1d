# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""A mouse for a Wayland compositor that has none: a client of wlroots' virtual pointer protocol, version 1."""

import struct

from lumora_testing.wayland_client import Client, now

MANAGER, POINTER = 4, 5
LEFT, RIGHT, MIDDLE = 0x110, 0x111, 0x112


class Pointer(Client):
    """A pointer as long as the context lasts, on a screen of a size."""

    interfaces = ("zwlr_virtual_pointer_manager_v1",)

    def __init__(self, width, height):
        super().__init__()
        self._extent = width, height

    def __enter__(self):
        super().__enter__()
        self.send(MANAGER, 0, struct.pack("II", 0, POINTER))
        return self

    def move(self, x, y):
        """Move there."""
        self.send(POINTER, 1, struct.pack("IIIII", 0, x, y, *self._extent))
        self.send(POINTER, 4)

    def click(self, x, y, button=LEFT):
        """Move there, press and release."""
        self.move(x, y)
        for pressed in (1, 0):
            self.send(POINTER, 2, struct.pack("III", now(), button, pressed))
            self.send(POINTER, 4)
