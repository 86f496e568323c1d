# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""A keyboard for a Wayland compositor that has none: a client of the virtual keyboard protocol, version 1."""

import os
import string
import struct

from lumora_testing.wayland_client import Client, now

SEAT, MANAGER, KEYBOARD = 4, 5, 6
TEXT_OF_XKB = 1
# What a key's number in a keymap is higher by than its own.
OFFSET = 8
# One key for each character and each name in X.
KEYS = [*string.ascii_letters, *string.digits, "space", "Escape", "Return", "Tab", "Down"]


def _keymap():
    numbers = [f"<K{number}> = {number + OFFSET};" for number in range(1, len(KEYS) + 1)]
    symbols = [f"key <K{number}> {{ [ {name} ] }};" for number, name in enumerate(KEYS, 1)]
    return f"""xkb_keymap {{
      xkb_keycodes "all" {{ minimum = {OFFSET}; maximum = 255; {" ".join(numbers)} }};
      xkb_types "all" {{ include "complete" }};
      xkb_compatibility "all" {{ include "complete" }};
      xkb_symbols "all" {{ {" ".join(symbols)} }};
    }};"""


class Keyboard(Client):
    """A keyboard as long as the context lasts."""

    interfaces = "wl_seat", "zwp_virtual_keyboard_manager_v1"

    def __enter__(self):
        super().__enter__()
        self.send(MANAGER, 0, struct.pack("II", SEAT, KEYBOARD))
        keymap = _keymap().encode() + b"\0"
        file = os.memfd_create("keymap")
        try:
            os.write(file, keymap)
            self.send(KEYBOARD, 0, struct.pack("II", TEXT_OF_XKB, len(keymap)), [file])
        finally:
            os.close(file)
        return self

    def key(self, name):
        """Press and release the key of that name in X."""
        for pressed in (1, 0):
            self.send(KEYBOARD, 1, struct.pack("III", now(), KEYS.index(name) + 1, pressed))

    def type(self, text):
        """Key by key."""
        for character in text:
            self.key("space" if character == " " else character)
