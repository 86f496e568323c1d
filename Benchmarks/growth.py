# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What the history costs and how it grows, as a table in Docs/Performance.md; fails where a goal is missed:
growth.py BENCHMARK
"""

import json
import math
import subprocess
import sys

from lumora_testing.documents import ROOT, put

LENGTHS = [1_000, 10_000, 43_200, 432_000]
MONTH = 43_200
# Operation, title, what it is compared with, the most microseconds for a month.
OPERATIONS = [
    ("load", "load", "Parses", 6_000),
    ("encode", "encode", "Writes", 4_000),
    ("save", "save, to memory", "Writes", None),
    ("samplesOfADay", "samples of a day", None, None),
    ("summariesOfAWeek", "summaries of seven days", None, 60),
    ("pointsOfADay", "points of a day", None, 20),
    ("pointsOfAWeek", "points of seven days", None, None),
]
MOST_GROWTH = 1.1


def measured(program):
    """Microseconds of CPU by operation and length: the middle of five runs."""
    output = subprocess.run(
        [
            program,
            "--benchmark_format=json",
            "--benchmark_repetitions=5",
            "--benchmark_report_aggregates_only=true",
            "--benchmark_min_time=0.1",
        ],
        check=True,
        capture_output=True,
        text=True,
    ).stdout
    found = {}
    for run in json.loads(output)["benchmarks"]:
        if run["aggregate_name"] == "median":
            operation, length = run["run_name"].split("/")
            found[operation, int(length)] = run["cpu_time"] / 1000
    return found


def growth(times, operation):
    """The power of the length with which it grows, from the shortest to the longest."""
    first, last = LENGTHS[0], LENGTHS[-1]
    return math.log(times[operation, last] / times[operation, first]) / math.log(last / first)


def row(times, operation, title, library):
    """A line of the table."""
    month = times[operation, MONTH]
    ratios = [
        f"{times[name, MONTH] / month:.1f} ×" if library else ""
        for name in (f"nlohmann{library}", f"rapidjson{library}")
    ]
    return [
        title,
        *(f"{times[operation, length]:,.2f}" for length in LENGTHS),
        f"{growth(times, operation):.2f}",
        f"{month / times['copyTheText', MONTH]:.2f} ×",
        *ratios,
    ]


def main():
    """Measure, write the table, compare with the goals."""
    times = measured(sys.argv[1])
    lines = [
        [
            "µs of CPU",
            *(f"{length:,}" for length in LENGTHS),
            "grows with",
            "to a copy of the text",
            "nlohmann/json takes",
            "RapidJSON takes",
        ]
    ]
    lines.append(["---"] + ["--:"] * (len(lines[0]) - 1))
    lines += [row(times, operation, title, library) for operation, title, library, _ in OPERATIONS]
    lines.append(row(times, "copyTheText", "a copy of the text", None))
    put(ROOT / "Docs" / "Performance.md", "growth", "\n".join("| " + " | ".join(line) + " |" for line in lines))
    missed = [
        f"{title}: {times[operation, MONTH]:.1f} µs, at most {most}"
        for operation, title, _, most in OPERATIONS
        if most and times[operation, MONTH] > most
    ]
    # Where the processor's caches end, a plain copy grows faster than its length, too.
    most = max(MOST_GROWTH, growth(times, "copyTheText"))
    missed += [
        f"{title}: grows with the power {growth(times, operation):.2f}"
        for operation, title, _, _ in OPERATIONS
        if growth(times, operation) > most
    ]
    print("\n".join(" ".join(f"{cell:>14}" for cell in line) for line in lines))
    print("\n".join(missed) or "all goals are met")
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
