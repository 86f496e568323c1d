# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The window of the settings."""

from checks import require
from checks.check import check
from desktop import NotSeen
from lumora_testing.remote import wait_for


@check("Settings fit a screen of 1366 × 768")
def settings_fit(tour):
    box = tour.open_settings()
    tour.keep("settings")
    require.on_screen(tour, box)
    return f"{box.width} × {box.height}"


@check("Settings are moved by a title of their own")
def settings_moved(tour):
    before = tour.open_settings()
    start = before.left + 60, before.top + 24
    tour.desktop.drag(start, (start[0] - 40, start[1] + 20))
    # What the mouse goes before the shell takes over is lost.
    wait_for(lambda: before.left - 44 < tour.settings().left < before.left - 20, "another place", 10)
    after = tour.settings()
    if (after.width, after.height) != (before.width, before.height):
        raise NotSeen(f"{before} becomes {after}")
