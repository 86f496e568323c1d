# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The files that a running Lumora has open: a descriptor left over at each refresh ends it within a day."""

import os

from lumora_testing.remote import wait_for


def descriptors(process):
    """What they lead to, in order."""
    folder, found = f"/proc/{process}/fd", []
    for number in os.listdir(folder):
        try:
            found.append(os.readlink(f"{folder}/{number}"))
        except FileNotFoundError:
            pass
    return sorted(found)


def expect_no_more(process, before):
    """Wait until no more are open than those."""
    try:
        wait_for(lambda: len(descriptors(process)) <= len(before), "no more open files")
    except TimeoutError:
        raise AssertionError(f"more open than {before}: {descriptors(process)}") from None
