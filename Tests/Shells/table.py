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
    told = columns(release).get(desktop)
    if told is None:
        return [f"a column in {PAGE.name}"] if checks else []
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
    """Put the results into the tables of the documentation, one for each release with a column for each desktop. What
    there are no results of stays as it is."""
    tables = {release: columns(release) for release in re.findall(r"(?m)^## (.*)", "\n".join(taken(PAGE, "desktops")))}
    for release, desktop, checks in results(folder):
        table = tables.setdefault(release, {})
        column = table.pop(desktop, {})
        # Of another version there is no longer any.
        for other in [each for each in table if each.split()[0] == desktop.split()[0]]:
            del table[other]
        table[desktop] = column | {each["title"]: cell(each) for each in checks.values()}
    titles = [title for title, _ in order.values()]
    put(PAGE, "desktops", "\n\n".join(of_release(release, tables[release], titles) for release in sorted(tables)))


def columns(release):
    """What the documentation says of each desktop on a release: its cells by the titles of their lines."""
    head, *rows = cells(release)
    return {desktop: {row[0]: row[at] for row in rows[1:]} for at, desktop in enumerate(head) if at > 0}


def of_release(release, table, titles):
    """What was found on one release, the lines in the order of their titles."""
    desktops = sorted(table, key=str.lower)
    lines = [["", *desktops], ["---"] * (len(desktops) + 1)]
    lines += [
        [title, *(table[desktop].get(title, "") for desktop in desktops)]
        for title in titles
        if any(title in column for column in table.values())
    ]
    return f"## {release}\n\n" + "\n".join("| " + " | ".join(line) + " |" for line in lines)
