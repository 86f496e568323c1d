# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Measure a program in the simulated laptop and keep the raw figures.

measure.py                   tells the programs' names
measure.py MINUTES PROGRAM   measures one
"""

import argparse
import itertools
import json
import os
import pathlib
import statistics
import sys
import tempfile
import time

import gi

gi.require_version("Gdk", "3.0")
from gi.repository import Gdk  # noqa: E402

from family import Family  # noqa: E402
from lumora_testing.remote import wait_for  # noqa: E402
from programs import PANEL_HEIGHT, PROGRAMS  # noqa: E402

HERE = pathlib.Path(__file__).resolve().parent
FIGURES = HERE / "figures.json"
STARTS = 7
SETTLE_SECONDS = 60
TO_SHOW_SECONDS = 20
LOOK_SECONDS = 0.002
TRAY_WIDTH = 100
MINUTES_A_DAY = 24 * 60
MARKS = itertools.count(1)


class DidNotRun(Exception):
    """A program that shows nothing in the tray or ends by itself."""


class Tray:
    """The right end of the panel, where the tray is; empty when made."""

    def __init__(self):
        Gdk.init([])
        self._root = Gdk.get_default_root_window()
        self._empty = self._picture()

    def shows_something(self):
        """Whether an item is drawn."""
        return self._picture() != self._empty

    def _picture(self):
        left = self._root.get_width() - TRAY_WIDTH
        return Gdk.pixbuf_get_from_window(self._root, left, 0, TRAY_WIDTH, PANEL_HEIGHT).get_pixels()


class Run:
    """One start of a program up to the item that is drawn: `with Run(program, tray) as run`."""

    def __init__(self, program, tray):
        self._tray = tray
        self._log = tempfile.TemporaryFile("w+")
        self.family = Family(f"{os.getpid()}-{next(MARKS)}")
        program.prepare()
        begin = time.monotonic()
        self._process = program.start(self._log, self.family.environment)
        try:
            self._wait_for_item()
        except DidNotRun:
            self.__exit__()
            raise
        self.wall_ms = (time.monotonic() - begin) * 1000
        self.cpu_ms = self.family.cpu_ms()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.family.end()
        self._process.wait()
        wait_for(lambda: not self._tray.shows_something(), "an empty tray")

    def _wait_for_item(self):
        deadline = time.monotonic() + TO_SHOW_SECONDS
        while not self._tray.shows_something():
            if time.monotonic() > deadline or self._process.poll() not in (None, 0):
                raise self.failure("no item in the tray")
            # Asked without a pause, the display would do nothing else.
            time.sleep(LOOK_SECONDS)

    def failure(self, what):
        """The error that tells what happened, the exit status, None while it runs, and its last word."""
        self._log.seek(0)
        last_word = "".join(self._log.read().splitlines()[-1:])
        return DidNotRun(f"{what}; exit status: {self._process.poll()}; last word: {last_word}")


def costs(program, tray, minutes):
    """The figures of one program."""
    starts = []
    for _ in range(STARTS):
        with Run(program, tray) as run:
            starts.append((run.cpu_ms, run.wall_ms))
    # The first one reads the disk.
    cpu, wall = map(statistics.median, zip(*starts[1:]))
    with Run(program, tray) as run:
        program.use()
        time.sleep(SETTLE_SECONDS)
        family = run.family
        cpu_before, wakes_before, written_before = family.cpu_ms(), family.wake_ups(), family.written()
        time.sleep(60 * minutes)
        if not family.processes():
            raise run.failure("ended by itself")
        wakes = sum(count - wakes_before.get(thread, 0) for thread, count in family.wake_ups().items())
        return {
            **family.memory(),
            "wake_ups": wakes / minutes,
            "cpu": (family.cpu_ms() - cpu_before) / minutes,
            "start_cpu": cpu,
            "start_wall": wall,
            "written": (family.written() - written_before) / minutes * MINUTES_A_DAY,
            "threads": family.threads(),
            "processes": len(family.processes()),
        }


def keep(name, figures):
    """Put the figures of a program into the file."""
    kept = json.loads(FIGURES.read_text()) if FIGURES.exists() else {}
    kept[name] = figures
    FIGURES.write_text(json.dumps(kept, indent=2) + "\n")


def main():
    """One program, or the names of all."""
    programs = {program.name: program for program in PROGRAMS}
    if len(sys.argv) == 1:
        print(*programs, sep="\n")
        return
    parser = argparse.ArgumentParser()
    parser.add_argument("minutes", type=int)
    parser.add_argument("name", choices=programs)
    options = parser.parse_args()
    program = programs[options.name]
    print(f"{program.name} ...", file=sys.stderr, flush=True)
    figures = {"version": program.version(), "minutes": options.minutes}
    try:
        figures |= costs(program, Tray(), options.minutes)
    except DidNotRun as error:
        figures["error"] = str(error)
    keep(program.name, figures)


if __name__ == "__main__":
    main()
