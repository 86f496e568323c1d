# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The results of all desktops as a table, and where it stands in the documentation."""

import json

from lumora_testing.documents import put, taken
from lumora_testing.roots import PROJECT

PAGE = PROJECT / "Docs" / "Desktops.md"


def results(folder):
    """Where, what the desktop calls itself, and what came of each check, for each that there is."""
    for file in sorted(folder.glob("*/results.json")):
        told = json.loads(file.read_text(encoding="utf-8"))
        if told["checks"]:
            yield column(told["desktop"], file.parent), told["checks"]


def column(desktop, folder):
    """The head of a desktop's column."""
    return f"{desktop} on {folder.name.split('-')[0]}"


def lost(where, checks):
    """The titles of those checks that were not seen, though the documentation says that they are seen there."""
    rows = [[cell.strip() for cell in line.split("|")[1:-1]] for line in taken(PAGE, "desktops")]
    if where not in rows[0]:
        return [f"a column in {PAGE.name}"] if checks else []
    seen = {row[0] for row in rows if row[rows[0].index(where)].startswith("yes")}
    return [each["title"] for each in checks.values() if each["outcome"] != "seen" and each["title"] in seen]


def tell(folder):
    """One line for each check of one desktop."""
    told = json.loads((folder / "results.json").read_text(encoding="utf-8"))
    for name, result in told["checks"].items():
        print(f"{folder.name}, {name}: {result['outcome']}  {result['remark']}")
    print(f"{folder}/pictures", flush=True)


def cell(result):
    """What the table says of a check."""
    if not result:
        return ""
    words = "yes" if result["outcome"] == "seen" else result["outcome"]
    return f"{words}: {result['remark']}" if result["remark"] else words


def write(folder, order):
    """Put the table into the documentation: one column for each desktop, and the checks in that order."""
    found = list(results(folder))
    titles = {name: result["title"] for _, checks in found for name, result in checks.items()}
    lines = [["", *(where for where, _ in found)], ["---"] * (len(found) + 1)]
    # In the order of the checks, whichever were gone through last.
    lines += [[titles[name], *(cell(checks.get(name)) for _, checks in found)] for name in order if name in titles]
    put(PAGE, "desktops", "\n".join("| " + " | ".join(line) + " |" for line in lines))
