# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""How a check is marked."""


def check(title):
    """A check, with the title of its line in the table."""

    def marked(function):
        function.line = title
        return function

    return marked
