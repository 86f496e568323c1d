# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Kills Lumora at random moments while it starts and while it saves: every time both files are whole, old or
new, and the next start leaves nothing beside them. Run it in the simulated laptop: kill.py TIMES BUNDLE [SEED]
"""

import collections
import random
import sys
import time

from saving import Disk, Saver, leftovers, prepare, start_and_end

# From the order to the end of the save, and from the start to the first save.
SAVE_SECONDS = 0.009
START_SECONDS = 0.035


def kill_once(bundle, dice):
    """Start, order a save or not, kill; what happened in one word."""
    with Saver(bundle) as saver:
        if dice.random() < 0.25:
            time.sleep(dice.uniform(0, START_SECONDS))
        else:
            saver.wait_until_running()
            saver.save()
            time.sleep(dice.uniform(0, SAVE_SECONDS))
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
    for _ in range(times):
        happened = kill_once(bundle, dice)
        history, settings = disk.look()
        found.update([happened, "history new" if history else "history old",
                      "settings new" if settings else "settings old"])
    code = start_and_end(bundle)
    left = leftovers()
    print(f"killed {times} times (seed {seed}), each time both files whole: " +
          ", ".join(f"{name} {count}" for name, count in sorted(found.items())))
    print(f"then a start and an end: exit code {code}, left beside the files: {left}")
    # Without a kill amid a write nothing was tried.
    return 0 if code == 0 and not left and found["amid a write"] >= times // 20 else 1


if __name__ == "__main__":
    sys.exit(main())
