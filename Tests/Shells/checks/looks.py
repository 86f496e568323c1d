# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What of the desktop's looks an open window follows."""

import contextlib

from checks import require
from checks.check import check
from colors import colors, has_hue, luminance, most_frequent
from desktop import NotSeen
from lumora_testing.remote import wait_for


@check("Light and dark followed live")
def dark(tour):
    tour.open_settings()
    try:
        tour.desktop.set_dark(True)
        # GNOME 43 may move the window with a change of its content.
        wait_for(lambda: is_dark(tour, tour.settings()), "a dark window", 20)
        tour.still()
        tour.keep("settings-dark")
        require.text(tour, tour.settings())
        tour.desktop.set_dark(False)
        wait_for(lambda: is_dark(tour, tour.settings()) is False, "a light window", 20)
        tour.close_everything()
        tour.open_popover()
        tour.desktop.set_dark(True)
        wait_for(lambda: is_dark(tour, tour.desktop.popover()), "a dark popover", 20)
        tour.still()
        require.plain(tour.keep("popover-dark"), tour.desktop.popover())
        require.text(tour, tour.desktop.popover())
        height = tour.desktop.popover().height
        tour.desktop.set_text_size(1.5)
        # Whether it is followed is another check.
        with contextlib.suppress(TimeoutError):
            wait_for(lambda: tour.desktop.popover().height > height, "a higher popover", 10)
        tour.still()
        tour.keep("popover-dark-large-text")
        require.text(tour, tour.desktop.popover())
    finally:
        tour.desktop.set_dark(False)
        tour.desktop.set_text_size(1.0)


def is_dark(tour, box):
    """Whether the most frequent colour of an area, on which the rest lies, is dark; None for something between, and
    while there is no such area."""
    if box is None:
        return None
    ground = luminance(most_frequent(colors(tour.desktop.picture(), box)))
    return True if ground < 0.1 else False if ground > 0.7 else None


@check("Accent followed live")
def accent(tour):
    tour.open_settings()
    try:
        for number in (0, 1):
            wanted = tour.desktop.set_accent(number)
            wait_for(lambda: has_hue(tour.desktop.picture(), tour.settings(), wanted), "its hue", 20)  # noqa: B023
            tour.keep(f"settings-accent-{number}")
    finally:
        tour.desktop.set_accent(0)


@check("Text size followed live")
def text_size(tour):
    before = tour.open_popover()
    item = tour.desktop.item()
    try:
        tour.desktop.set_text_size(1.5)
        wait_for(lambda: (box := tour.desktop.popover()) and box.height > before.height, "a higher popover", 20)
        tour.still()
        tour.keep("popover-large-text")
        # A panel with larger letters moves what is in it.
        require.at_item(tour, tour.desktop.popover(), item=item)
    finally:
        tour.desktop.set_text_size(1.0)
    wait_for(lambda: tour.desktop.popover().height == before.height, "the popover as it was", 20)


@check("Scale followed live")
def scale(tour):
    before = tour.open_unfolded_popover()
    try:
        factor = tour.desktop.set_scale(1.5)
        if factor == 1:
            raise NotSeen("the screen allows none")
        # Where it scrolls it is wider.
        wanted = factor * before.width
        wait_for(lambda: (box := tour.desktop.popover()) and box.width > wanted - 4, "a larger popover", 20)
        tour.still()
        tour.keep("popover-scaled")
        require.on_screen(tour, tour.desktop.popover(), tour.desktop.kept)
        require.at_item(tour, tour.desktop.popover(), factor)
        tour.close_everything()
        require.at_item(tour, tour.open_popover(), factor)
        return f"at {factor:.2f}"
    finally:
        tour.desktop.set_scale(1)
