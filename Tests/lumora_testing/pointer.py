# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""A mouse for a Wayland compositor that has none: a client of wlroots' virtual pointer protocol, version 1."""

import os
import socket
import struct
import time

DISPLAY, REGISTRY, CALLBACK, MANAGER, POINTER = 1, 2, 3, 4, 5
INTERFACE = "zwlr_virtual_pointer_manager_v1"
LEFT, RIGHT = 0x110, 0x111


def _text(value):
    data = value.encode() + b"\0"
    return struct.pack("I", len(data)) + data.ljust(-(-len(data) // 4) * 4, b"\0")


class Pointer:
    """A pointer as long as the context lasts, on a screen of a size."""

    def __init__(self, width, height):
        self._extent = width, height
        self._socket = socket.socket(socket.AF_UNIX)
        self._received = b""

    def __enter__(self):
        self._socket.connect(os.path.join(os.environ["XDG_RUNTIME_DIR"], os.environ["WAYLAND_DISPLAY"]))
        self._send(DISPLAY, 1, struct.pack("I", REGISTRY))
        self._send(DISPLAY, 0, struct.pack("I", CALLBACK))
        self._send(
            REGISTRY, 0, struct.pack("I", self._number_of(INTERFACE)) + _text(INTERFACE) + struct.pack("II", 1, MANAGER)
        )
        self._send(MANAGER, 0, struct.pack("II", 0, POINTER))
        return self

    def __exit__(self, *_):
        self._socket.close()

    def move(self, x, y):
        """Move there."""
        self._send(POINTER, 1, struct.pack("IIIII", 0, x, y, *self._extent))
        self._send(POINTER, 4)

    def click(self, x, y, button=LEFT):
        """Move there, press and release."""
        self.move(x, y)
        for pressed in (1, 0):
            # By their times a toolkit tells two clicks from a double click.
            now = time.monotonic_ns() // 1_000_000 % 2**32
            self._send(POINTER, 2, struct.pack("III", now, button, pressed))
            self._send(POINTER, 4)

    def _send(self, target, opcode, arguments=b""):
        self._socket.sendall(struct.pack("IHH", target, opcode, 8 + len(arguments)) + arguments)

    def _number_of(self, interface):
        """The number under which the compositor announces an interface."""
        while True:
            target, opcode, arguments = self._receive()
            if (target, opcode) == (REGISTRY, 0):
                number, length = struct.unpack_from("II", arguments)
                if arguments[8 : 8 + length - 1].decode() == interface:
                    return number
            elif target == CALLBACK:
                raise LookupError(f"the compositor has no {interface}")

    def _receive(self):
        while True:
            if len(self._received) >= 8:
                target, opcode, size = struct.unpack_from("IHH", self._received)
                if len(self._received) >= size:
                    message, self._received = self._received[8:size], self._received[size:]
                    return target, opcode, message
            self._received += self._socket.recv(4096)
