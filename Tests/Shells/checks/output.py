# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What Lumora says that is for nobody."""

from checks.check import check
from desktop import NotSeen


@check("Says nothing on its standard error")
def says_nothing(tour):
    if said := tour.said().splitlines():
        raise NotSeen(said[-1])
