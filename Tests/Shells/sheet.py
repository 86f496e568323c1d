# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""One picture to judge Lumora by on a desktop, light above dark: the desktop's own account of the battery, Lumora's
popover and its menu, each with the panel it hangs on; below them the panel around the item, magnified."""

import contextlib
import subprocess
import time

from desktop import Box, CannotBe, NotSeen
from lumora_testing.remote import wait_for
from lumora_testing.usage import week

PERCENT = 62
# Around what opened, so that its shadow and its distance from the edges are seen.
MARGIN = 24
# To both sides of the item.
NEIGHBOURS = 170
FACTOR = 4


def make(tour, file):
    """Write it."""
    tour.begin("sheet")
    tour.battery(PERCENT, charging=False)
    tour.end_lumora()
    tour.start_lumora_after(week(time.time()))
    tour.close_everything()
    # Brings it into the panel where it is not there from the start.
    with contextlib.suppress(CannotBe):
        tour.desktop.own_battery()
    parts = []
    for dark in (False, True):
        for choose in (tour.desktop.set_dark, tour.desktop.set_panel_dark):
            with contextlib.suppress(CannotBe):
                choose(dark)
        parts += half(tour, "dark" if dark else "light")
    compose("-append", parts, file)


def half(tour, look):
    """The files of one row of what opens, and of the panel below it."""
    hangs = "South" if tour.desktop.item().top > tour.desktop.screen[1] // 2 else "North"
    row = []
    for name, opens in (
        ("own", tour.desktop.open_own_battery),
        ("popover", tour.open_popover),
        ("menu", tour.show_menu),
    ):
        with contextlib.suppress(CannotBe):
            row.append(opened(tour, f"{look}-{name}", opens, hangs))
    panel = tour.desktop.picture()
    strip = panel.keep(f"sheet-{look}-panel", around_item(tour.desktop.item(), panel).corners, FACTOR)
    return [compose("+append", row, strip.with_name(f"sheet-{look}.png"), hangs), strip]


def opened(tour, name, opens, hangs):
    """The file of what opened, up to the edge of the screen where the panel is; it is closed again."""
    with contextlib.suppress(NotSeen):
        tour.desktop.clear_notifications()
    empty = tour.desktop.picture()

    def opens_and_comes():
        opens()
        wait_for(lambda: large(tour.desktop.picture().changed_since(empty, 0)), f"what opens as {name}")

    picture, (left, top, right, bottom) = tour.brought_by(opens_and_comes)
    left, right = max(left - MARGIN, 0), min(right + MARGIN, picture.width)
    top = 0 if hangs == "North" else max(top - MARGIN, 0)
    bottom = picture.height if hangs == "South" else min(bottom + MARGIN, picture.height)
    file = picture.keep(f"sheet-{name}", (left, top, right, bottom))
    tour.desktop.key("Escape")
    tour.close_everything()
    tour.still()
    return file


def large(box):
    """Whether what changed is more than an item under the mouse."""
    return box is not None and box[2] - box[0] > 100 and box[3] - box[1] > 60


def around_item(item, picture):
    """The panel's height and the item's neighbours."""
    left, right = max(item.left - NEIGHBOURS, 0), min(item.right + NEIGHBOURS, picture.width)
    top, bottom = max(item.top - 8, 0), min(item.bottom + 8, picture.height)
    return Box(left, top, right - left, bottom - top)


def compose(how, files, file, gravity="West"):
    """Put pictures beside or below each other."""
    ground = ["-background", "#808080", "-bordercolor", "#808080", "-border", "4", "-gravity", gravity]
    subprocess.run(["convert", *files, *ground, how, file], check=True)
    return file
