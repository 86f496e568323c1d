# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What the running program costs: resident.py BUNDLE [MINUTES], in the simulated laptop.

After two reminders with their sounds: six minutes on battery beside the real UPower, which polls every 30 seconds,
then six with UPower held still, so that what is left is Lumora's own. Six minutes lie between two saves of the history.
Wake-ups are voluntary context switches of all threads, the waits for the disk at a save among them.
"""

import pathlib
import sys
import time

from lumora_testing.bundle import Lumora
from lumora_testing.figures import cpu_ms, row, status, threads, wake_ups
from lumora_testing.remote import RemoteLaptop, wait_for

SETTLED_THREADS = 3


def observe(process, minutes):
    """CPU milliseconds and wake-ups, each per minute."""
    before = cpu_ms(process), wake_ups(process)
    time.sleep(60 * minutes)
    after = cpu_ms(process), wake_ups(process)
    return [(now - then) / minutes for then, now in zip(before, after)]


def main():
    """Start, settle, observe, print."""
    minutes = float(sys.argv[2]) if len(sys.argv) > 2 else 6
    laptop = RemoteLaptop()
    with Lumora(sys.argv[1]) as lumora:
        process = lumora.process.pid
        lumora.wait_until_saved(lambda sample: sample["p"] == 60, "the first sample")
        start = cpu_ms(process)
        # A resident program has reminded now and then.
        laptop.set_battery(percent=15)
        wait_for(lambda: len(laptop.sounds()) == 2, "two reminders")
        kept = [row("start to first saved refresh, CPU", start, "ms", 30)]
        wait_for(lambda: threads(process) == SETTLED_THREADS, "the end of the threads of the start")
        cpu, wakes = observe(process, minutes)
        kept.append(row("CPU beside UPower", cpu, "ms/min", 1))
        row("wake-ups beside UPower", wakes, "1/min")
        laptop.hang("upower")
        cpu, wakes = observe(process, minutes)
        row("CPU with UPower silent", cpu, "ms/min")
        kept.append(row("wake-ups with UPower silent", wakes, "1/min", 2))
        laptop.resume("upower")
        memory = pathlib.Path(f"/proc/{process}/status")
        kept.append(row("resident memory, the most so far", status(memory, "VmHWM") / 1024, "MiB", 14))
        row("resident memory", status(memory, "VmRSS") / 1024, "MiB")
        row("of that its own", status(memory, "RssAnon") / 1024, "MiB")
        row("threads", threads(process), "")
        lumora.end()
    return 0 if all(kept) else 1


if __name__ == "__main__":
    sys.exit(main())
