# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""A month's work in some minutes, with a full history: a hundred thousand changes of the battery's properties and
ten thousand openings of the popover, then quiet. Prints what Lumora takes, and fails where it grows or does not
become quiet. Run it in the simulated laptop: soak.py BUNDLE [QUIET_MINUTES]
"""

import os
import pathlib
import sys
import time

from gi.repository import Gio, GLib

from lumora_testing.figures import status
from lumora_testing.remote import RemoteLaptop
from lumora_testing.saving import SAMPLES, Saver, leftovers, prepare

PARTS = 30
CHANGES = 100_000
OPENINGS = 10_000
MOST_GROWTH_KB = 1024
MOST_WAKE_UPS = 2
APPLICATION = "org.lumora.Lumora"


def taken(process):
    """Kilobytes that are its own and lie in no file, and open files."""
    rollup = pathlib.Path(f"/proc/{process}/smaps_rollup").read_text().splitlines()
    private = sum(int(line.split()[1]) for line in rollup if line.startswith("Private_Dirty"))
    return private, len(os.listdir(f"/proc/{process}/fd"))


def wake_ups(process):
    """Voluntary context switches so far, by thread."""
    return {
        thread.name: status(thread / "status", "voluntary_ctxt_switches")
        for thread in pathlib.Path(f"/proc/{process}/task").iterdir()
    }


class Work:
    """The changes and openings, in parts."""

    def __init__(self, lumora):
        self._lumora = lumora
        self._laptop = RemoteLaptop()
        self._bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.changes = self.openings = 0

    def toggle(self):
        """Open the popover, or close it; it is done when this returns."""
        self._bus.call_sync(
            APPLICATION,
            "/org/lumora/Lumora",
            "org.freedesktop.Application",
            "Activate",
            GLib.Variant("(a{sv})", ({},)),
            None,
            0,
            10_000,
            None,
        )

    def do_part(self):
        """A thirtieth of all; what is taken then."""
        openings = OPENINGS // PARTS + 1
        burst = CHANGES // PARTS // openings + 1
        for _ in range(openings):
            self._laptop.property_burst(burst)
            self.toggle()
            self.toggle()
        self.openings += openings
        self.changes += burst * openings
        return taken(self._lumora.process.pid)

    def rest(self, minutes):
        """Nothing happens; the wake-ups a minute, of the threads that stay."""
        before = wake_ups(self._lumora.process.pid)
        time.sleep(minutes * 60)
        after = wake_ups(self._lumora.process.pid)
        return sum(count - before.get(thread, 0) for thread, count in after.items()) / minutes


def main():
    """Work and rest."""
    bundle = sys.argv[1]
    minutes = int(sys.argv[2]) if len(sys.argv) > 2 else 12
    RemoteLaptop().mock_upower(True)
    prepare()
    with Saver(bundle) as lumora:
        lumora.wait_until_running()
        work = Work(lumora)
        found = []
        for part in range(1, PARTS + 1):
            found.append(work.do_part())
            print(f"part {part:2}: {found[-1][0]} kB of its own, {found[-1][1]} files open", flush=True)
        work.rest(1)
        woken = work.rest(minutes)
        code = lumora.end()
        samples = len(lumora.history()) - SAMPLES
    first, last = found[0], found[-1]
    growth, files = last[0] - first[0], last[1] - first[1]
    print(
        f"{work.changes} changes and {work.openings} openings: {growth:+} kB, {samples} samples among them, and "
        f"{files:+} files since the first part; {woken:.2f} wake-ups a minute when nothing happens; exit code {code}"
    )
    well = growth <= MOST_GROWTH_KB and files <= 0 and woken <= MOST_WAKE_UPS and code == 0 and not leftovers()
    return 0 if well else 1


if __name__ == "__main__":
    sys.exit(main())
