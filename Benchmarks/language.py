# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What a language costs before the first click: language.py BUNDLE [MINUTES], in the simulated laptop with de_DE.UTF-8
in LOCPATH. Lumora is started with a full history in the C locale and in German in turn; a language that is spoken costs
at most a fiftieth more CPU and memory. The wake-ups are too few for that, and mostly waits for the disk: they are shown
side by side."""

import pathlib
import re
import statistics
import sys
import time

from lumora_testing.bundle import Lumora
from lumora_testing.figures import cpu_ms, row, wake_ups
from lumora_testing.month import write_history

LOCALES = {"C": "C.UTF-8", "German": "de_DE.UTF-8"}
STARTS = 15
SETTLE_SECONDS = 15  # Ten after its start it gives memory back.
MOST = 1.02
WAKE_UPS = "wake-ups a minute"


def memory(process):
    """Its proportional memory in MiB without the system's files of the locale, which all programs of a session share:
    here Lumora is the only one that speaks German."""
    kibibytes, counts = 0, True
    for line in pathlib.Path(f"/proc/{process}/smaps").read_text().splitlines():
        if re.match("[0-9a-f]+-", line):
            counts = "/LC_" not in line and "/usr/share/locale" not in line
        elif line.startswith("Pss:") and counts:
            kibibytes += int(line.split()[1])
    return kibibytes / 1024


def run(bundle, locale, seconds):
    """The start's CPU, the memory a while later, and the wake-ups in the time after that."""
    write_history()
    with Lumora(bundle, LC_ALL=locale, LANGUAGE="") as lumora:
        process = lumora.process.pid
        lumora.wait_until_saved(lambda sample: sample["p"] == 60, "the first sample")
        figures = {"start, CPU, ms": cpu_ms(process)}
        if seconds:
            time.sleep(SETTLE_SECONDS)
            before = wake_ups(process)
            time.sleep(seconds)
            figures[WAKE_UPS] = (wake_ups(process) - before) / seconds * 60
            figures["memory, proportional, MiB"] = memory(process)
        lumora.end()
        return figures


def main():
    """Both in turn, and the ratio of the medians."""
    minutes = float(sys.argv[2]) if len(sys.argv) > 2 else 6
    # The first one reads the disk.
    run(sys.argv[1], LOCALES["C"], 0)
    found = {name: [] for name in LOCALES}
    for index in range(STARTS):
        for name, locale in LOCALES.items():
            found[name].append(run(sys.argv[1], locale, 0 if index else 60 * minutes))
    kept = []
    for figure in found["C"][0]:
        medians = {
            name: statistics.median(figures[figure] for figures in runs if figure in figures)
            for name, runs in found.items()
        }
        for name, value in medians.items():
            row(f"{name}: {figure}", value, "")
        if figure == WAKE_UPS:
            continue
        kept.append(row(f"ratio: {figure}", medians["German"] / medians["C"], "", MOST))
    return 0 if all(kept) else 1


if __name__ == "__main__":
    sys.exit(main())
