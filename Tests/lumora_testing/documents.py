# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Tables that a command writes into the documents."""

import pathlib

ROOT = pathlib.Path(__file__).resolve().parents[2]


def taken(document, marker):
    """The lines that stand in a document between the two comments of that name."""
    _, between, _ = _parted(document, marker)
    return between.strip("\n").splitlines()


def put(document, marker, text):
    """Replace what stands in a document between the two comments of that name."""
    before, _, after = _parted(document, marker)
    document.write_text(f"{before}\n{text}\n{after}", encoding="utf-8")


def _parted(document, marker):
    """What stands up to the first of the two comments, between them, and from the second on."""
    begin, end = f"<!-- {marker} -->", f"<!-- end of {marker} -->"
    before, rest = document.read_text(encoding="utf-8").split(begin)
    between, after = rest.split(end)
    return before + begin, between, end + after
