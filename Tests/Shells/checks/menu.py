# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The menu: whether it tells what is."""

from checks.check import check
from desktop import NotSeen
from lumora_testing.remote import wait_for

# The lines of the menu that can be chosen, counted from the top.
SNOOZE = 2


@check("Menu true after each change of the battery")
def menu_true(tour):
    looks = set()
    changes = (55, False), (19, False), (19, True), (82, True)
    for percent, charging in changes:
        tour.battery(percent, charging)
        looks.add(tour.open_menu())
        tour.wait_for_line(f"{percent}%")
        if charging:
            tour.wait_for_line("harging")
        tour.keep(f"menu-{percent}-{'charging' if charging else 'on-battery'}")
        tour.close_everything()
    if len(looks) < len(changes):
        raise NotSeen("it looks the same")
    return "" if tour.desktop.menu() is not None else "by its looks"


@check("Menu true after “Snooze 1 hour”")
def menu_after_snooze(tour):
    before = tour.open_menu()
    tour.choose("Snooze 1 hour", SNOOZE)
    wait_for(lambda: tour.lumora.settings().get("snoozeUntil"), "the snooze", 10)
    if tour.open_menu() == before:
        raise NotSeen("it looks the same")
    tour.wait_for_line("End snooze")
    tour.keep("snoozed")
    tour.choose("End snooze", SNOOZE)
    wait_for(lambda: not tour.lumora.settings().get("snoozeUntil"), "the end of the snooze", 10)
