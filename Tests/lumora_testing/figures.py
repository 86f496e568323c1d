# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What a process has cost so far, as the kernel counts it, and a line for each figure."""

import pathlib


def cpu_ms(process):
    """CPU time of all threads so far, in milliseconds."""
    threads = pathlib.Path(f"/proc/{process}/task").iterdir()
    return sum(int((thread / "schedstat").read_text().split()[0]) for thread in threads) / 1e6


def status(path, name):
    """A number of a status file."""
    return next(int(line.split()[1]) for line in path.read_text().splitlines() if line.startswith(name))


def wake_ups(process):
    """Voluntary context switches of all threads so far."""
    threads = pathlib.Path(f"/proc/{process}/task").iterdir()
    return sum(status(thread / "status", "voluntary_ctxt_switches") for thread in threads)


def threads(process):
    """How many threads there are."""
    return status(pathlib.Path(f"/proc/{process}/status"), "Threads")


def row(name, value, unit, limit=None):
    """A line of the table; whether the value keeps within its limit."""
    verdict = "" if limit is None else f"  at most {limit}" + ("" if value <= limit else "  MISSED")
    print(f"{name:44} {value:8.2f} {unit:9}{verdict}", flush=True)
    return limit is None or value <= limit
