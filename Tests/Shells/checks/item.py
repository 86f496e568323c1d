# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The item in the panel, and what a mouse does with it."""

from checks.check import check
from colors import colors, contrast_to, luminance, most_frequent
from desktop import Box, NotSeen
from lumora_testing.remote import wait_for

# Of text on its ground, as the Web Content Accessibility Guidelines count it.
LEGIBLE = 4.5
# So far from the item that the panel ends.
BEYOND = 12


@check("Item there after every start")
def starts(tour):
    for _ in range(tour.times):
        tour.end_lumora()
        tour.start_lumora()
        tour.wait_for_item()
    tour.keep_item("item")
    return f"{tour.times} of {tour.times}"


@check("Item there after every restart of the shell or its panel")
def restarts(tour):
    for _ in range(tour.times):
        tour.desktop.restart_shell()
        tour.wait_for_item()
    return f"{tour.times} of {tour.times}"


@check("Item there after every unlock")
def locks(tour):
    for _ in range(tour.times):
        tour.desktop.lock()
        tour.desktop.unlock()
        tour.wait_for_item()
    by = tour.desktop.locks_by
    return f"{tour.times} of {tour.times}" + (f", {by}" if by else "")


@check("Percent in the item")
def percent(tour):
    tour.battery(53, charging=False)
    tour.still()
    box = tour.wait_for_item()
    before = tour.desktop.picture().area(*box.corners)
    tour.battery(54, charging=False)
    wait_for(lambda: tour.desktop.picture().area(*box.corners) != before, "another percent", 10)
    return "beside the symbol" if is_wide(box) else "in the symbol"


def is_wide(item):
    """Whether there is room for a text beside the symbol."""
    return item.width > 1.5 * item.height


def legible_on(tour, dark):
    """The strongest contrast in the item against its ground."""
    tour.desktop.set_panel_dark(dark)
    try:
        tour.still()
        name = f"panel-{'dark' if dark else 'light'}"
        picture, box = tour.keep_item(name), tour.desktop.item()
        # In its corner it is empty: a symbol may have more of another colour than there is of the panel's.
        panel = luminance(picture.pixel(box.left, box.top))
        ratio = min(strongest_contrast(colors(picture, part), panel) for part in symbol_and_percent(box))
        if (panel < 0.2) != dark:
            raise NotSeen(f"the panel's luminance is {panel:.2f}")
        if ratio < LEGIBLE:
            raise NotSeen(f"contrast {ratio:.1f}")
        return f"contrast {ratio:.1f}"
    finally:
        tour.desktop.set_panel_dark(True)


def symbol_and_percent(box):
    """The parts of an item that have them: one beside the other, or one around the other."""
    if is_wide(box):
        symbol = Box(box.left, box.top, min(box.height, box.width // 2), box.height)
        return symbol, Box(symbol.right, box.top, box.right - symbol.right, box.height)
    quarter = box.width // 4
    return box, Box(box.left + quarter, box.top, box.width - 2 * quarter, box.height)


def strongest_contrast(found, panel):
    """Of the item's colours against what its text lies on: the panel, or a plate of its own."""
    plate = most_frequent(found)
    ground = luminance(plate) if found[plate] > sum(found.values()) / 3 else panel
    return contrast_to(ground, found)


@check("Legible on a dark panel")
def dark_panel(tour):
    return legible_on(tour, True)


@check("Legible on a light panel")
def light_panel(tour):
    return legible_on(tour, False)


@check("Tooltip")
def tooltip(tour):
    tour.still()
    before = tour.desktop.picture()
    item = tour.desktop.item()
    tour.desktop.hover()

    def beyond_item():
        _, top, _, bottom = tour.desktop.picture().changed_since(before, 0) or item.corners
        return top < item.top - BEYOND or bottom > item.bottom + BEYOND

    # Under the mouse the item itself may change, too.
    wait_for(beyond_item, "a tooltip", 10)
    tour.still()
    tour.keep("tooltip")


def what_comes(tour, button):
    """What opens by a click with that button, closed again."""
    tour.desktop.click(*tour.desktop.item().middle, button=button)
    try:
        found = wait_for(lambda: tour.open_thing(), "something to open", 10)
    except TimeoutError:
        raise NotSeen("nothing opens") from None
    tour.still()
    tour.keep(f"click-{button}")
    tour.close_everything()
    return found


@check("Left click")
def left_click(tour):
    return f"opens the {what_comes(tour, 1)}"


@check("Middle click")
def middle_click(tour):
    return f"opens the {what_comes(tour, 2)}"


@check("Right click")
def right_click(tour):
    found = what_comes(tour, 3)
    if found != "menu":
        raise NotSeen(f"opens the {found}")
    return "opens the menu"
