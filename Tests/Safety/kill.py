# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Kills Lumora at random moments while it starts and while it saves: every time both files are whole, old or
new, and the next start leaves nothing beside them. Run it in the simulated laptop: kill.py TIMES BUNDLE [SEED]
"""

import collections
import random
import statistics
import sys
import time

from lumora_testing.remote import PATIENCE_SECONDS
from lumora_testing.saving import Disk, Saver, leftovers, prepare, start_and_end

# How many are killed between two that are watched from the start to the end.
KILLS_BETWEEN = 8


class Lives:
    """How long it takes, on this machine and with what else it has to do, to start and to save."""

    def __init__(self, bundle):
        self._bundle = bundle
        self._starts = collections.deque(maxlen=3)
        self._saves = collections.deque(maxlen=3)

    def watch_one(self):
        """Have one start, save and end."""
        begun = time.monotonic()
        with Saver(self._bundle) as saver:
            saver.wait_until_running()
            running = time.monotonic()
            saver.save()
            saver.process.wait(PATIENCE_SECONDS)
        self._starts.append(running - begun)
        self._saves.append(time.monotonic() - running)

    def start_seconds(self):
        """From the start to its menu, of late."""
        return statistics.median(self._starts)

    def save_seconds(self):
        """From the order to the end, of late."""
        return statistics.median(self._saves)


def kill_once(bundle, dice, lives):
    """Start, order a save or not, kill; what happened in one word."""
    with Saver(bundle) as saver:
        if dice.random() < 0.25:
            time.sleep(dice.uniform(0, lives.start_seconds()))
        else:
            saver.wait_until_running()
            saver.save()
            time.sleep(dice.uniform(0, lives.save_seconds()))
        ended = saver.process.poll() is not None
        saver.process.kill()
        saver.process.wait()
    return "had ended" if ended else "amid a write" if leftovers() else "between writes"


def main():
    """Kill, look, count."""
    times, bundle = int(sys.argv[1]), sys.argv[2]
    seed = int(sys.argv[3]) if len(sys.argv) > 3 else random.randrange(2**32)
    dice = random.Random(seed)
    prepare()
    start_and_end(bundle)
    disk = Disk()
    found = collections.Counter()
    lives = Lives(bundle)
    for number in range(times):
        if number % KILLS_BETWEEN == 0:
            lives.watch_one()
        happened = kill_once(bundle, dice, lives)
        history, settings = disk.look()
        found.update(
            [happened, "history new" if history else "history old", "settings new" if settings else "settings old"]
        )
    code = start_and_end(bundle, refreshes=20)
    left = leftovers()
    print(
        f"killed {times} times (seed {seed}), each time both files whole: "
        + ", ".join(f"{name} {count}" for name, count in sorted(found.items()))
    )
    print(f"then a start and an end: exit code {code}, left beside the files: {left}")
    # Without a kill amid a write nothing was tried.
    return 0 if code == 0 and not left and found["amid a write"] >= times // 20 else 1


if __name__ == "__main__":
    sys.exit(main())
