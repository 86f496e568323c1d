# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Cuts the power at each moment of Lumora's saves: what it did to its files is recorded, and after each call all
that a disk may then hold is tried. Names change in the order in which they were changed, any number of the last
ones not yet; of what was written and not flushed any part may be there. Both files must be whole each time. Needs
no disk to cut off, no device and no right. Run it in the simulated laptop: power_cut.py LIBRARY BUNDLE
"""

import json
import pathlib
import sys
import tempfile

from lumora_testing.saving import DEFAULTS, HISTORY, Saver, prepare

NAMES = ("create", "rename", "link", "unlink")


def parse(record):
    """The calls: name, inode, the rest of the line's words, the bytes."""
    calls, position = [], 0
    while position < len(record):
        end = record.index(b"\n", position)
        name, inode, *rest = record[position:end].decode().split(" ", 2)
        words = rest[0].split("\t" if name in NAMES else " ") if rest else []
        position, data = end + 1, b""
        if name == "write":
            data = record[position : position + int(words[1])]
            position += len(data)
        calls.append((name, int(inode), words, data))
    return calls


class Disk:
    """The files by their names, and which of them are surely on the disk: at first these contents are."""

    def __init__(self, contents):
        self._start = {str(path): f"first {path}" for path in contents}
        self._content = {f"first {path}": content for path, content in contents.items()}
        self._unflushed = set()
        self._changes = []
        self._whole = {}

    def do(self, call):
        """What that call does, as the program sees it at once."""
        name, inode, words, data = call
        if name in NAMES:
            self._changes.append(call)
        if name == "create":
            self._content[inode] = b""
        elif name == "truncate":
            self._content[inode] = b""
            self._unflushed.add(inode)
        elif name == "write":
            offset, old = int(words[0]), self._content.get(inode, b"")
            self._content[inode] = old[:offset].ljust(offset, b"\0") + data + old[offset + len(data) :]
            self._unflushed.add(inode)
        elif name == "flush":
            self._unflushed.discard(inode)

    def names_after(self, changes):
        """Which file each name leads to when that many changes of names have come to the disk."""
        names = dict(self._start)
        for name, inode, words, _ in self._changes[:changes]:
            if name == "create":
                names[words[0]] = inode
            elif name == "unlink":
                names.pop(words[0], None)
            elif words[0] in names:
                names[words[1]] = names.pop(words[0]) if name == "rename" else names[words[0]]
        return names

    def broken(self, path):
        """How often a cut of the power now would leave that file not whole."""
        found = [self.names_after(changes).get(str(path)) for changes in range(len(self._changes) + 1)]
        return sum(file is None or file in self._unflushed or not self._is_whole(file) for file in found)

    def _is_whole(self, file):
        content = self._content.get(file, b"")
        key = file, len(content)
        if key not in self._whole:
            try:
                json.loads(content)
                self._whole[key] = True
            except ValueError:
                self._whole[key] = False
        return self._whole[key]


def cut(calls, start):
    """The power cut after each call: how many files were broken then, on all disks that may be."""
    disk, broken = Disk(start), 0
    for call in calls:
        disk.do(call)
        broken += sum(disk.broken(path) for path in start)
    return broken


def without_flushes(calls):
    """As a program that flushes nothing."""
    return [call for call in calls if call[0] != "flush"]


def flushes_too_late(calls):
    """As one that flushes after it has renamed."""
    calls = list(calls)
    for number in range(len(calls) - 1):
        if calls[number][0] == "flush" and calls[number + 1][0] == "rename":
            calls[number : number + 2] = calls[number + 1], calls[number]
    return calls


def main():
    """Record a start, a save of both files and an end, and cut."""
    library, bundle = sys.argv[1:]
    prepare()
    with tempfile.TemporaryDirectory() as folder:
        before = {path: path.read_bytes() for path in (HISTORY, DEFAULTS)}
        record = pathlib.Path(folder) / "record"
        with Saver(bundle, LD_PRELOAD=library, LUMORA_RECORD=str(record)) as saver:
            saver.wait_until_running()
            saver.expect_to_leave_no_file_open()
            code = saver.save_in_turn()
        calls = parse(record.read_bytes())
        saves = {path.name: sum(call[0] == "rename" and call[2][1] == str(path) for call in calls) for path in before}
        broken = cut(calls, before)
        print(f"{len(calls)} calls in {saves} saves, the power cut after each: {broken} files broken; exit code {code}")
        # The cutting itself is tried on a program that does it wrong.
        wrong = [cut(change(calls), before) for change in (without_flushes, flushes_too_late)]
        print(f"without a flush {wrong[0]} would be broken, with one after the renaming {wrong[1]}")
    return 0 if code == 0 and broken == 0 and min(saves.values()) >= 1 and min(wrong) > 0 else 1


if __name__ == "__main__":
    sys.exit(main())
