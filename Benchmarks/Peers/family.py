# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What a program costs, summed over all of its processes, as the kernel tells it."""

import os
import pathlib
import signal
import time

MARK = "LUMORA_COMPARED"
MEMORY = {"resident": ("Rss",), "proportional": ("Pss",), "private": ("Private_Clean", "Private_Dirty")}


class Family:
    """The processes that have one mark in their environment, whoever their parent is by now."""

    def __init__(self, mark):
        self.environment = {MARK: mark}
        self._mark = f"{MARK}={mark}".encode()

    def processes(self):
        """Their folders in /proc."""
        return [folder for folder in pathlib.Path("/proc").glob("[0-9]*") if self._mark in _environment(folder)]

    def cpu_ms(self):
        """CPU time so far, in milliseconds: of all threads, those that have ended among them."""
        return sum(_cpu_seconds(int(process.name)) for process in self.processes()) * 1000

    def wake_ups(self):
        """Voluntary context switches so far, by thread."""
        return {
            thread: _number(thread / "status", "voluntary_ctxt_switches")
            for process in self.processes()
            for thread in (process / "task").iterdir()
        }

    def threads(self):
        """How many threads there are."""
        return sum(_number(process / "status", "Threads") for process in self.processes())

    def written(self):
        """Bytes so far that the disk was given to write."""
        return sum(_number(process / "io", "write_bytes") for process in self.processes())

    def memory(self):
        """Resident, proportional and private memory, in KiB."""
        return {
            name: sum(_number(process / "smaps_rollup", part) for process in self.processes() for part in parts)
            for name, parts in MEMORY.items()
        }

    def end(self):
        """End them all, and by force those that do not obey."""
        for number, seconds in ((signal.SIGTERM, 5), (signal.SIGKILL, 5)):
            for process in self.processes():
                os.kill(int(process.name), number)
            deadline = time.monotonic() + seconds
            while self.processes() and time.monotonic() < deadline:
                time.sleep(0.05)


def _environment(folder):
    try:
        return (folder / "environ").read_bytes().split(b"\0")
    except OSError:
        return []


def _number(path, name):
    """A number of a file of lines, or 0 where its process or thread has ended meanwhile."""
    try:
        lines = path.read_text().splitlines()
    except OSError:
        return 0
    return next((int(line.split()[1]) for line in lines if line.startswith(f"{name}:")), 0)


def _cpu_seconds(process):
    # The number by which Linux knows the clock of a process's CPU time (clock_getcpuclockid).
    try:
        return time.clock_gettime((~process << 3) | 2)
    except OSError:
        return 0
