# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Tables that a command writes into the documents."""

import pathlib

ROOT = pathlib.Path(__file__).resolve().parents[2]


def taken(document, marker):
    """The lines that stand in a document between the two comments of that name."""
    _, _, rest = document.read_text(encoding="utf-8").partition(f"<!-- {marker} -->\n")
    return rest.partition(f"\n<!-- end of {marker} -->")[0].splitlines()


def put(document, marker, text):
    """Replace what stands in a document between the two comments of that name."""
    begin, end = f"<!-- {marker} -->", f"<!-- end of {marker} -->"
    before, rest = document.read_text().split(begin)
    after = rest.split(end)[1]
    document.write_text(f"{before}{begin}\n{text}\n{end}{after}")
