# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""How many instructions pieces of work take, beside the kept counts, in the simulated laptop: counts.py [--keep] BUILD

Fails where one takes over a tenth more than kept, and names the function that grew: the innermost of Lumora's that
holds at least half of the rise. A fall by over a tenth fails too: unless it is kept, a later rise would hide in it.
--keep makes the counts of this run the kept ones.
"""

import argparse
import collections
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

from lumora_testing.bundle import Lumora, forget
from lumora_testing.month import write_history

KEPT = pathlib.Path(__file__).with_name("counts.json")
WORKS = ["refresh", "first launch", "launch", "save", "redraw"]
MOST_CHANGE = 0.1
LEAST_SHARE = 0.01
TOTAL = re.compile(r"^ *([\d,]+) .*PROGRAM TOTALS$", re.MULTILINE)
LINE = re.compile(r"^ *([\d,]+) +\([ \d.]+%\) +[^:]*:(lumora::[^(]*)", re.MULTILINE)
# No window, and the code that runs on every processor.
ALIKE = {
    "QT_QPA_PLATFORM": "offscreen",
    "QT_LOGGING_RULES": "default.warning=false",
    "SIMDJSON_FORCE_IMPLEMENTATION": "fallback",
}


def callgrind(profile, *options):
    """The command that counts what comes after it."""
    return ["valgrind", "--quiet", "--tool=callgrind", f"--callgrind-out-file={profile}", *options]


def launch(build, profile):
    """Start Lumora and let it end; the counts up to the end."""
    before_end = callgrind(profile, "--dump-before=lumora::AppDelegate::applicationWillTerminate()")
    with Lumora(build / "Lumora.app", before_end, **ALIKE) as lumora:
        lumora.wait_until_saved(lambda sample: sample["p"] == 60, "the first sample")
        lumora.end()
    return profile.with_name(f"{profile.name}.1")


def profile_of(work, build, folder):
    """Let the work be done under callgrind; the file of its counts."""
    profile = folder / work
    if work.endswith("launch"):
        forget()
        if work == "launch":
            write_history()
        return launch(build, profile)
    counted = callgrind(profile, "--collect-atstart=no", "--toggle-collect=counted")
    program = build / "Benchmarks" / "counted_benchmark"
    subprocess.run([*counted, program, work], check=True, env={**os.environ, **ALIKE})
    return profile


def number(text):
    """As callgrind_annotate prints it."""
    return int(text.replace(",", ""))


def counts_in(profile):
    """All instructions, and those of each larger function of Lumora's with what it calls."""
    text = subprocess.run(
        ["callgrind_annotate", "--inclusive=yes", "--auto=no", "--threshold=100", profile],
        check=True,
        capture_output=True,
        text=True,
    ).stdout.replace("(anonymous namespace)::", "")
    total = number(TOTAL.search(text)[1])
    functions = collections.Counter()
    for count, name in LINE.findall(text):
        functions[name.removesuffix("[abi:cxx11]")] += number(count)
    larger = {name: count for name, count in functions.items() if count > LEAST_SHARE * total}
    return {"total": total, "functions": larger}


def grown(kept, now):
    """The innermost function that holds at least half of the rise; the last to blame is one without a kept count."""
    half = (now["total"] - kept["total"]) / 2
    holding = [name for name, count in now["functions"].items() if count - kept["functions"].get(name, 0) >= half]
    return min(
        holding,
        key=lambda name: (name not in kept["functions"], now["functions"][name]),
        default="none of Lumora's own",
    )


def verdict(kept, now):
    """What is wrong with a work's counts, if anything."""
    change = now["total"] / kept["total"] - 1
    if change < -MOST_CHANGE:
        return "is to be kept: counts --keep"
    return f"grew in {grown(kept, now)}" if change > MOST_CHANGE else None


def main():
    """Count, then keep or compare."""
    parser = argparse.ArgumentParser()
    parser.add_argument("--keep", action="store_true")
    parser.add_argument("build", type=pathlib.Path)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        now = {work: counts_in(profile_of(work, options.build, pathlib.Path(folder))) for work in WORKS}
    if options.keep:
        KEPT.write_text(json.dumps(now, indent=2) + "\n")
    kept = json.loads(KEPT.read_text())
    failed = False
    for work, counts in now.items():
        wrong = verdict(kept[work], counts)
        failed |= wrong is not None
        print(f"{work:12} {counts['total']:12,} {counts['total'] / kept[work]['total'] - 1:+7.1%}  {wrong or ''}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
