#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Which rooms the code of a room can include: those below it in the house, and no other.

rooms_test.py COMPILE_COMMANDS
"""

import json
import os
import re
import shlex
import subprocess
import sys
import tempfile
import unittest

APP = os.path.join(os.path.dirname(os.path.realpath(__file__)), "..", "..", "App")
CORE = {"Base", "Storage", "Platform", "Battery", "Preferences", "Alerts", "History", "Content", "AppModel"}
# What each room sees besides itself. A line more here is a decision about the house.
SEES = {
    "Base": set(),
    "Storage": {"Base"},
    "Platform": {"Base"},
    "Battery": {"Base", "Platform"},
    "Preferences": {"Base", "Storage"},
    "Alerts": {"Base", "Storage", "Platform", "Battery", "Preferences"},
    "History": {"Base", "Storage", "Platform", "Battery"},
    "Content": {"Base", "Storage", "Platform", "Battery", "Preferences", "History"},
    "AppModel": CORE - {"Content", "AppModel"},
    # Battery for the rules by which packs and adapter become one account.
    "Linux": {"Base", "Storage", "Platform", "Battery"},
    "TrayIcon": {"Base", "Platform"},
    "Views": CORE,
}
LIBRARIES = {"giomm.h": {"Linux"}, "QWidget": {"Views"}, "qcustomplot.h": {"Views"}, "cairo.h": {"TrayIcon"}}


def commands(file):
    """A compile command of each room, without its source and its output."""
    found = {}
    with open(file, encoding="utf-8") as entries:
        for entry in json.load(entries):
            room = os.path.relpath(entry["file"], os.path.realpath(APP)).split(os.sep)[0]
            words = shlex.split(entry["command"])
            del words[words.index("-o") :]
            found.setdefault(room, [word for word in words if word != "ccache"])
    return found


def headers(room):
    """All headers of a room, as they are included."""
    for folder, _, files in os.walk(os.path.join(APP, room)):
        for name in sorted(files):
            if name.endswith(".h"):
                yield os.path.relpath(os.path.join(folder, name), APP)


class Rooms(unittest.TestCase):
    """Each border of the house, tried from each room."""

    commands = {}

    def compile(self, room, text, *options):
        """Runs the compiler as for a source of the room."""
        with tempfile.NamedTemporaryFile("w", suffix=".cpp") as source:
            source.write(text)
            source.flush()
            return subprocess.run(
                [*self.commands[room], *options, source.name],
                text=True,
                check=False,
                stdout=subprocess.PIPE,
                stderr=subprocess.PIPE,
            )

    def seen(self, room, includes):
        """Those of the includes, by name, that the compiler finds for a source of the room."""
        lines = [f"#if __has_include({include})\nseen {name}\n#endif" for name, include in includes]
        result = self.compile(room, "\n".join(lines) + "\n", "-E", "-P")
        self.assertEqual(result.returncode, 0, result.stderr)
        return set(re.findall(r"^seen (\S+)$", result.stdout, re.MULTILINE))

    def test_every_room_has_its_line_here(self):
        rooms = {entry.name for entry in os.scandir(APP) if entry.is_dir()}
        self.assertEqual(rooms, set(SEES) | {"Sound"})
        # Interfaces alone: nothing of it is compiled by itself.
        self.assertEqual(rooms - set(self.commands), {"Platform"})

    def test_rooms(self):
        for room, others in SEES.items():
            if room not in self.commands:
                continue
            includes = [(header, f'"{header}"') for other in SEES for header in headers(other)]
            expected = {header for other in others | {room} for header in headers(other)}
            with self.subTest(room):
                self.assertEqual(self.seen(room, includes), expected)

    def test_libraries(self):
        for room in self.commands.keys() & SEES.keys():
            with self.subTest(room):
                found = self.seen(room, [(name, f"<{name}>") for name in LIBRARIES])
                missing = {name for name, rooms in LIBRARIES.items() if room in rooms} - found
                self.assertEqual(missing, set())
        for room in self.commands.keys() & CORE:
            with self.subTest(room):
                self.assertEqual(self.seen(room, [("giomm.h", "<giomm.h>"), ("QWidget", "<QWidget>")]), set())

    def test_a_forbidden_include_does_not_compile(self):
        result = self.compile("Alerts", '#include "Linux/System/SystemClock.h"\n', "-fsyntax-only")
        self.assertNotEqual(result.returncode, 0)
        self.assertIn("SystemClock.h: No such file", result.stderr)
        result = self.compile("Alerts", '#include "Battery/BatteryState.h"\n', "-fsyntax-only")
        self.assertEqual(result.returncode, 0, result.stderr)

    def test_no_include_climbs_over_a_border(self):
        for folder, _, files in os.walk(APP):
            for name in files:
                if name.endswith((".h", ".cpp")):
                    with open(os.path.join(folder, name), encoding="utf-8") as source:
                        self.assertNotIn('#include "..', source.read(), name)


if __name__ == "__main__":
    Rooms.commands = commands(sys.argv.pop())
    unittest.main()
