# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""How many instructions four pieces of work take, beside the kept counts, in the simulated laptop: counts.py BUILD [--keep]

Fails where one takes over a tenth more than kept, and names the function that grew: the innermost of Lumora's that
holds at least half of the rise. --keep makes the counts of this run the kept ones.
"""

import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "Tests" / "EndToEnd"))

from bundle import Lumora  # noqa: E402
from month import write_history  # noqa: E402

KEPT = pathlib.Path(__file__).with_name("counts.json")
WORKS = ["refresh", "launch", "save", "redraw"]
MOST_RISE = 1.1
LEAST_SHARE = 0.01
LINE = re.compile(r"^ *([\d,]+) +\([ \d.]+%\) +[^:]*:(lumora::[^(]*)")


def callgrind(profile, *options):
    """The command that counts what comes after it."""
    return ["valgrind", "--quiet", "--tool=callgrind", f"--callgrind-out-file={profile}", *options]


def profile_of(work, build, folder):
    """Let the work be done under callgrind; the file of its counts."""
    profile = folder / work
    if work == "launch":
        write_history()
        at_end = "--dump-before=lumora::AppDelegate::applicationWillTerminate()"
        with Lumora(build / "Lumora.app", callgrind(profile, at_end)) as lumora:
            lumora.wait_until_saved(lambda sample: sample["p"] == 60, "the first sample")
            lumora.end()
        return profile.with_name("launch.1")
    options = ["--collect-atstart=no", "--toggle-collect=counted"]
    subprocess.run([*callgrind(profile, *options), build / "Benchmarks" / "counted_benchmark", work], check=True,
                   env={**os.environ, "QT_QPA_PLATFORM": "offscreen",
                                                "QT_LOGGING_RULES": "default.warning=false"})
    return profile


def counts_in(profile):
    """All instructions, and those of each function of Lumora's and what it calls."""
    text = subprocess.run(["callgrind_annotate", "--inclusive=yes", "--auto=no", "--threshold=100", profile],
                          check=True, capture_output=True, text=True).stdout
    total = int(re.search(r"^ *([\d,]+) .*PROGRAM TOTALS", text, re.MULTILINE)[1].replace(",", ""))
    functions = {}
    for line in text.replace("(anonymous namespace)::", "").splitlines():
        if found := LINE.match(line):
            name = found[2].removesuffix("[abi:cxx11]")
            functions[name] = max(functions.get(name, 0), int(found[1].replace(",", "")))
    return {"total": total, "functions": {name: count for name, count in functions.items() if count > LEAST_SHARE * total}}


def grown(kept, now):
    """The innermost function that holds at least half of the rise."""
    half = (now["total"] - kept["total"]) / 2
    holding = [name for name, count in now["functions"].items() if count - kept["functions"].get(name, 0) >= half]
    return min(holding, key=now["functions"].get, default="none of Lumora's own")


def main():
    """Count, print, compare or keep."""
    build = pathlib.Path(sys.argv[1])
    with tempfile.TemporaryDirectory() as folder:
        now = {work: counts_in(profile_of(work, build, pathlib.Path(folder))) for work in WORKS}
    kept = json.loads(KEPT.read_text()) if KEPT.exists() else {}
    if "--keep" in sys.argv:
        KEPT.write_text(json.dumps(now, indent=2) + "\n")
    failed = False
    for work, counts in now.items():
        rise = counts["total"] / kept[work]["total"] if work in kept else 1
        print(f"{work:8} {counts['total']:12,} instructions, {rise - 1:+.1%}")
        if rise > MOST_RISE:
            failed = "--keep" not in sys.argv
            print(f"         grew in {grown(kept[work], counts)}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
