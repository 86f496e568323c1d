# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The popover: where it opens, what it takes, and what closes it."""

from checks import require
from checks.check import check
from desktop import NotSeen
from lumora_testing.remote import wait_for

# In MiB, proportional: without what drawing by the graphics card takes.
MOST_MEMORY = 50


@check("Popover at the tray")
def popover_at_tray(tour):
    box = tour.open_popover()
    require.plain(tour.keep("popover"), box)
    require.at_item(tour, box)
    return f"opened by {tour.desktop.opens_with}"


@check("Unfolded it stays on the screen")
def unfolded(tour):
    box = tour.open_unfolded_popover()
    require.on_screen(tour, box, tour.desktop.kept)
    require.at_item(tour, box)


@check("Memory with the popover open")
def memory(tour):
    tour.open_popover()
    taken = round(tour.lumora.memory())
    if taken > MOST_MEMORY:
        raise NotSeen(f"{taken} MiB")
    return f"{taken} MiB"


@check("Popover has the keyboard")
def popover_focused(tour):
    tour.open_popover()
    wait_for(tour.desktop.popover_focused, "the focus", 10)


@check("Esc closes it")
def closes_by_escape(tour):
    tour.open_popover()
    tour.desktop.key("Escape")
    tour.wait_until_closed()


@check("A second click on the item closes it")
def closes_by_second_click(tour):
    tour.open_popover()
    tour.let_double_click_pass()
    tour.desktop.open_popover()
    tour.wait_until_closed()
    tour.let_come()
    if tour.desktop.popover():
        raise NotSeen("it comes back")


@check("A click on the wallpaper closes it")
def closes_by_wallpaper(tour):
    tour.open_popover()
    tour.desktop.click(*tour.desktop.wallpaper())
    tour.wait_until_closed()


@check("A click on another item of the panel closes it")
def closes_by_other_item(tour):
    point = tour.desktop.other_item()
    tour.open_popover()
    tour.desktop.click(*point)
    try:
        tour.wait_until_closed()
    finally:
        tour.desktop.key("Escape")


@check("A click on the bare panel closes it")
def closes_by_panel(tour):
    tour.open_popover()
    tour.desktop.click(*tour.desktop.bare_panel())
    tour.wait_until_closed()


@check("A click into another window closes it")
def closes_by_window(tour):
    with tour.other_window() as box:
        popover = tour.open_popover()
        tour.keep("popover-over-window")
        point = box.left + 40 if popover.left > box.left + 60 else box.right - 40, box.bottom - 40
        tour.desktop.move(*point)
        tour.still()
        # Some shells give the focus to what the mouse is over.
        if not tour.desktop.popover():
            raise NotSeen("it closes when the mouse comes there")
        tour.desktop.click(*point)
        tour.wait_until_closed()
