# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The wire to a Wayland compositor, for what stands in for devices that it has not."""

import array
import os
import socket
import struct
import time

DISPLAY, REGISTRY, CALLBACK, FIRST_OWN = 1, 2, 3, 4


def _text(value):
    data = value.encode() + b"\0"
    return struct.pack("I", len(data)) + data.ljust(-(-len(data) // 4) * 4, b"\0")


def now():
    """The time of an event. By it a toolkit tells two clicks from a double click."""
    return time.monotonic_ns() // 1_000_000 % 2**32


class Client:
    """A connection as long as the context lasts. A subclass says in `interfaces` what it takes of the compositor, which
    it then has as the objects 4, 5 and so on."""

    interfaces = ()

    def __init__(self):
        self._socket = socket.socket(socket.AF_UNIX)
        self._received = b""

    def __enter__(self):
        self._socket.connect(os.path.join(os.environ["XDG_RUNTIME_DIR"], os.environ["WAYLAND_DISPLAY"]))
        self.send(DISPLAY, 1, struct.pack("I", REGISTRY))
        self.send(DISPLAY, 0, struct.pack("I", CALLBACK))
        numbers = self._numbers()
        for number, interface in enumerate(self.interfaces, FIRST_OWN):
            if interface not in numbers:
                raise LookupError(f"the compositor has no {interface}")
            bound = struct.pack("I", numbers[interface]) + _text(interface) + struct.pack("II", 1, number)
            self.send(REGISTRY, 0, bound)
        return self

    def __exit__(self, *_):
        self._socket.close()

    def send(self, target, opcode, arguments=b"", files=()):
        """A request, with files that go with it."""
        message = struct.pack("IHH", target, opcode, 8 + len(arguments)) + arguments
        with_files = [(socket.SOL_SOCKET, socket.SCM_RIGHTS, array.array("i", files))] if files else []
        self._socket.sendmsg([message], with_files)

    def _numbers(self):
        """The numbers under which the compositor announces its interfaces."""
        found = {}
        while True:
            target, opcode, arguments = self._receive()
            if (target, opcode) == (REGISTRY, 0):
                number, length = struct.unpack_from("II", arguments)
                found[arguments[8 : 8 + length - 1].decode()] = number
            elif target == CALLBACK:
                return found

    def _receive(self):
        while True:
            if len(self._received) >= 8:
                target, opcode, size = struct.unpack_from("IHH", self._received)
                if len(self._received) >= size:
                    message, self._received = self._received[8:size], self._received[size:]
                    return target, opcode, message
            self._received += self._socket.recv(4096)
