# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Write the tables of the documents from the raw figures, each with its ratio to Lumora's."""

import json
import pathlib

from lumora_testing.documents import ROOT, put

HERE = pathlib.Path(__file__).resolve().parent
LUMORA = "Lumora"
MIB = 1024
MB = 1e6
# Title, name of the figure, what to divide it by, decimals.
ROWS = [
    ("Memory, proportional (MiB)", "proportional", MIB, 1),
    ("Memory, private (MiB)", "private", MIB, 1),
    ("Memory, resident (MiB)", "resident", MIB, 1),
    ("Wake-ups a minute", "wake_ups", 1, 1),
    ("CPU a minute (ms)", "cpu", 1, 2),
    ("Start to a drawn item, CPU (ms)", "start_cpu", 1, 1),
    ("Start to a drawn item, time (ms)", "start_wall", 1, 0),
    ("Written to the disk a day (MB)", "written", MB, 1),
    ("Threads", "threads", 1, 0),
    ("Processes", "processes", 1, 0),
    ("Minutes watched", "minutes", 1, 0),
]
PLAIN = ("threads", "processes", "minutes")
SHORT = ("proportional", "wake_ups", "cpu", "start_cpu")


def table(programs, rows):
    """A Markdown table with one column for each program."""
    base = programs[LUMORA]
    lines = [["", *programs], ["---", *["--:"] * len(programs)]]
    lines += [
        [title, *(_cell(figures, base, name, divisor, decimals) for figures in programs.values())]
        for title, name, divisor, decimals in rows
    ]
    return "\n".join("| " + " | ".join(line) + " |" for line in lines)


def section(programs, rows):
    """The table of those that ran, and what became of the others."""
    ran = {name: figures for name, figures in programs.items() if "error" not in figures}
    failed = [
        f"{name} {figures['version']} does not run there: `{figures['error']}`."
        for name, figures in programs.items()
        if "error" in figures
    ]
    return "\n\n".join([table(ran, rows), *failed])


def versions(programs):
    """Which versions were measured."""
    each = [f"{name} {figures['version']}" for name, figures in programs.items() if "," not in name]
    return f"Measured: {', '.join(each)}."


def _cell(figures, base, name, divisor, decimals):
    text = f"{figures[name] / divisor:.{decimals}f}"
    if figures is base or name in PLAIN or not base[name]:
        return text
    return f"{text} ({figures[name] / base[name]:.1f} ×)"


def main():
    """Both documents; the README has the peers only."""
    programs = json.loads((HERE / "figures.json").read_text())
    put(ROOT / "Docs" / "Performance.md", "costs", f"{section(programs, ROWS)}\n\n{versions(programs)}")
    peers = {name: figures for name, figures in programs.items() if "," not in name}
    put(ROOT / "README.md", "costs", section(peers, [row for row in ROWS if row[1] in SHORT]))


if __name__ == "__main__":
    main()
