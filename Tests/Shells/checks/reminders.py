# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The reminders, as the desktop shows them."""

import contextlib

from checks.check import check
from desktop import NotSeen
from lumora_testing.remote import wait_for


@check("Reminders shown with button, icon and name")
def reminders(tour):
    for name, change in tour.reminders():
        tour.desktop.clear_notifications()
        change()
        # One of them comes with the next of its looks at the clock, which it takes each minute.
        shown = wait_for(lambda: tour.shown(name), f"“{name}”", 100)  # noqa: B023
        # Its icon may come later. A screen that is still may come when it has gone again.
        with contextlib.suppress(TimeoutError):
            shown = wait_for(lambda: shown_with_icon(tour, name), "its icon", 5)  # noqa: B023
        tour.keep("reminder-" + name.lower().replace(" ", "-"))
        if "Snooze 1 hour" not in shown.buttons:
            raise NotSeen(f"“{name}” has the buttons {shown.buttons}")
        if shown.application not in ("Lumora", None):
            raise NotSeen(f"“{name}” is said to be of “{shown.application}”")
        if "umora" not in shown.icon:
            raise NotSeen(f"“{name}” has the icon “{shown.icon}”")
    remarks = [f"the button in {tour.desktop.buttons_in}"] if tour.desktop.buttons_in else []
    if shown.application is None:
        remarks.append("no program's name is shown")
    return ", ".join(remarks)


def shown_with_icon(tour, name):
    shown = tour.shown(name)
    return shown and "umora" in shown.icon and shown


@check("A reminder replaces the one before")
def replaced(tour):
    tour.desktop.clear_notifications()
    tour.run_low()
    wait_for(lambda: tour.shown("Low battery"), "the reminder", 30)
    tour.let_come()
    if not tour.shown("Low battery"):
        raise NotSeen("the first has gone before the second comes")
    tour.run_low()
    tour.let_come()
    titles = [each.title for each in tour.desktop.notifications()]
    if titles.count("Low battery") != 1:
        raise NotSeen(f"{titles}")


@check("Snoozed by the button of a reminder")
def snoozed_by_button(tour):
    tour.desktop.clear_notifications()
    tour.reach_limit()
    shown = wait_for(lambda: tour.shown("Charge limit reached"), "the reminder", 30)
    tour.desktop.press(shown, "Snooze 1 hour")
    wait_for(lambda: tour.lumora.settings().get("snoozeUntil"), "the snooze", 10)


@check("Do Not Disturb respected")
def do_not_disturb(tour):
    tour.desktop.clear_notifications()
    tour.battery(70, charging=True)
    tour.desktop.set_do_not_disturb(True)
    try:
        tour.still()
        tour.laptop.clear_sounds()
        tour.battery(85, charging=True)
        tour.let_come()
        tour.keep("do-not-disturb")
        if any(each.banner for each in tour.desktop.notifications()):
            raise NotSeen("a reminder of the charge limit is shown")
        told = "silent" if not tour.laptop.sounds() else "with a sound"
        tour.run_low()
        tour.let_come()
        low = [each for each in tour.desktop.notifications() if each.banner]
        tour.keep("do-not-disturb-low")
        return f"{told}; a low battery is {'shown all the same' if low else 'not shown either'}"
    finally:
        tour.desktop.set_do_not_disturb(False)
