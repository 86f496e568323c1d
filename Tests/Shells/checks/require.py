# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What several checks require of a picture or a place; they raise NotSeen."""

from colors import colors, share_of_light_grey
from desktop import NotSeen

# The shadow of a popover may reach so far over its item.
OVER = 12
# A popover that is centred on its item may be so far off: trays tell of an item's corner, too.
ASIDE = 24
# The least share of a window on the dark that its letters take.
LETTERS = 0.005


def at_item(tour, box, scale=1, item=None):
    """It is below the item or above it, hardly farther away than the panel is high, and centred on it as far as the
    screen lets it; where the item is, or was. A shadow may lie between them."""
    item = item or tour.desktop.item()
    most = tour.desktop.screen[0] - box.width
    aside = abs(box.left - min(max(item.middle[0] - box.width // 2, 0), most))
    if aside > ASIDE * scale:
        raise NotSeen(f"{aside} pixels to the side of the item")
    gap = max(box.top - item.bottom, item.top - box.bottom)
    if not -OVER <= gap <= 60:
        raise NotSeen(f"{gap} pixels from the item, opened by {tour.desktop.opens_with}")


def on_screen(tour, box, kept=0):
    """All of it is on the screen, so far from its edges."""
    width, height = tour.desktop.screen
    if min(box.left, box.top, width - box.right, height - box.bottom) < kept:
        raise NotSeen(f"{box} on {width} × {height}")


def plain(picture, box):
    """Most of it is of one colour: nothing of what lies behind it shows through."""
    found = colors(picture, box)
    if max(found.values()) < sum(found.values()) / 3:
        raise NotSeen("what lies behind it shows through")


def text(tour, box):
    """As much of it as letters take is as light as text on the dark."""
    share = share_of_light_grey(tour.desktop.picture(), box)
    if share < LETTERS:
        raise NotSeen(f"{100 * share:.1f} % of it is as light as text")
