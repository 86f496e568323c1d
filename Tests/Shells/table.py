# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The results of all desktops as a table, and where it stands in the documentation."""

import json
import re

from lumora_testing.documents import put, taken
from lumora_testing.roots import PROJECT

PAGE = PROJECT / "Docs" / "Desktops.md"


def results(folder):
    """The release, what the desktop calls itself, and what came of each check, for each that there is."""
    for file in sorted(folder.glob("*/results.json")):
        told = json.loads(file.read_text(encoding="utf-8"))
        if told["checks"]:
            yield file.parent.name.split("-")[0], told["desktop"], told["checks"]


def lost(release, desktop, checks):
    """The titles of those checks that were seen otherwise than the documentation says, or not at all."""
    head, *rows = cells(release)
    if desktop not in head:
        return [f"a column in {PAGE.name}"] if checks else []
    told = {row[0]: row[head.index(desktop)] for row in rows}
    found = {each["title"]: cell(each) for each in checks.values()}
    seen = {title: before for title, before in told.items() if before.startswith("yes") and title in found}
    return [title for title, before in seen.items() if words(before) != words(found[title])]


def words(remark):
    """It without its figures, which differ from one time to the next."""
    return re.sub(r"[\d.]+", "", remark)


def cells(release):
    """What the documentation has in the cells of a release's table, line by line."""
    lines = "\n".join(taken(PAGE, "desktops")).partition(f"## {release}\n")[2].partition("## ")[0].split("\n")
    return [[cell.strip() for cell in line.split("|")[1:-1]] for line in lines if line] or [[]]


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
    outcome = "yes" if result["outcome"] == "seen" else result["outcome"]
    return f"{outcome}: {result['remark']}" if result["remark"] else outcome


def write(folder, order):
    """Put the tables into the documentation: for each release one, with a column for each desktop."""
    found = list(results(folder))
    releases = dict.fromkeys(release for release, _, _ in found)
    put(PAGE, "desktops", "\n\n".join(of_release(release, found, order) for release in releases))


def of_release(release, found, order):
    """What was found on one release, the checks in that order, whichever were gone through last."""
    desktops = [(desktop, checks) for where, desktop, checks in found if where == release]
    titles = {name: result["title"] for _, checks in desktops for name, result in checks.items()}
    lines = [["", *(desktop for desktop, _ in desktops)], ["---"] * (len(desktops) + 1)]
    lines += [[titles[name], *(cell(checks.get(name)) for _, checks in desktops)] for name in order if name in titles]
    return f"## {release}\n\n" + "\n".join("| " + " | ".join(line) + " |" for line in lines)
