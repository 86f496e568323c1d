# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The colours of a picture's area, and what they say of it."""

import colorsys


def luminance(color):
    """Of a colour of three bytes, from 0 to 1."""
    parts = [value / 255 for value in color]
    linear = [value / 12.92 if value <= 0.04045 else ((value + 0.055) / 1.055) ** 2.4 for value in parts]
    return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]


def colors(picture, box):
    """How often each colour is in an area."""
    found = {}
    for row in picture.area(*box.corners):
        for at in range(0, len(row), 3):
            color = row[at : at + 3]
            found[color] = found.get(color, 0) + 1
    return found


def most_frequent(found):
    """The colour that there is most of."""
    return max(found, key=found.get)


def contrast_to(ground, found):
    """The strongest of some colours against a ground of that luminance."""
    return max(contrast(ground, luminance(color)) for color in found)


def contrast(one, other):
    """Of two luminances."""
    return (max(one, other) + 0.05) / (min(one, other) + 0.05)


def has_hue(picture, box, wanted):
    """Whether an area shows a strong colour of the same hue, as large as a few letters: it may be darker or lighter."""

    def hue(color):
        return colorsys.rgb_to_hsv(*(value / 255 for value in color))

    found = [(*hue(color), count) for color, count in colors(picture, box).items()]
    return sum(count for h, s, v, count in found if s > 0.5 and v > 0.5 and abs(h - hue(wanted)[0]) < 0.03) > 300


def share_of_light_grey(picture, box):
    """How much of an area is of a light grey or white, from 0 to 1."""
    found = colors(picture, box)
    return sum(count for color, count in found.items() if min(color) > 150) / sum(found.values())
