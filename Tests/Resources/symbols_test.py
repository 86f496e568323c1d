# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The symbols as hosts of a tray draw them: symbols_test.py FOLDER"""

import pathlib
import sys
import unittest

import gi

gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, GdkPixbuf, Gtk  # noqa: E402

FOLDER = pathlib.Path(sys.argv.pop(1) if len(sys.argv) > 1 else "Resources/Icons")
LEVELS = ["battery.0", "battery.25", "battery.50", "battery.75", "battery.100"]
NAMES = LEVELS + ["battery.100percent", "battery.100.bolt", "bolt.fill", "powerplug.fill", "powerplug"]
EACH = [(symbol, size) for symbol in NAMES for size in (16, 22, 24, 32, 48, 64)]
GREY = (0x80, 0x80, 0x80)


def icon_name(symbol):
    return f"lumora-{symbol.replace('.', '-')}-symbolic"


def source(symbol):
    return (FOLDER / f"{icon_name(symbol)}.svg").read_text()


def pixels(picture):
    """Red, green, blue and alpha of each pixel, row by row."""
    data, width = picture.get_pixels(), picture.get_width()
    rows = (data[y * picture.get_rowstride() :][: 4 * width] for y in range(picture.get_height()))
    return [tuple(row[4 * x : 4 * x + 4]) for row in rows for x in range(width)]


def as_it_is(svg, size):
    loader = GdkPixbuf.PixbufLoader.new_with_type("svg")
    loader.set_size(size, size)
    loader.write(svg.encode())
    loader.close()
    return pixels(loader.get_pixbuf())


def tinted_by_gtk(symbol, size, colour):
    theme = Gtk.IconTheme()
    theme.append_search_path(str(FOLDER))
    found = theme.lookup_icon_for_scale(icon_name(symbol), size, 1, Gtk.IconLookupFlags.FORCE_SIZE)
    red, green, blue = (channel / 255 for channel in colour)
    picture, symbolic = found.load_symbolic(Gdk.RGBA(red, green, blue, 1), None, None, None)
    assert symbolic, "GTK does not take it for a symbol"
    return pixels(picture)


def colours(picture):
    """What the pixels that are opaque are painted with."""
    return {pixel[:3] for pixel in picture if pixel[3] == 255}


def differences(one, other):
    return sum(abs(a[3] - b[3]) > 128 for a, b in zip(one, other))


class Symbols(unittest.TestCase):
    def test_gtk_paints_them_with_the_panels_colour(self):
        for symbol, size in EACH:
            for colour in [(255, 255, 255), (0, 0, 0), (255, 0, 0)]:
                self.assertEqual(colours(tinted_by_gtk(symbol, size, colour)), {colour}, symbol)

    def test_kde_paints_them_with_its_own_style_sheet(self):
        for symbol, size in EACH:
            svg = source(symbol)
            self.assertIn('<style id="current-color-scheme"', svg)
            svg = svg.replace("color: #808080", "color: #0000ff")
            self.assertEqual(colours(as_it_is(svg, size)), {(0, 0, 255)}, symbol)

    def test_their_own_colour_is_a_middle_grey(self):
        for symbol, size in EACH:
            self.assertEqual(colours(as_it_is(source(symbol), size)), {GREY}, symbol)

    def test_gtk_draws_the_same_shapes(self):
        for symbol, size in EACH:
            own = as_it_is(source(symbol), size)
            self.assertEqual(differences(own, tinted_by_gtk(symbol, size, (0, 0, 0))), 0, symbol)

    def test_each_looks_different_at_the_smallest_size(self):
        pictures = {symbol: as_it_is(source(symbol), 16) for symbol in NAMES}
        for one in NAMES:
            for other in NAMES[: NAMES.index(one)]:
                with self.subTest(one=one, other=other):
                    self.assertGreaterEqual(differences(pictures[one], pictures[other]), 12)

    def test_the_levels_rise_in_whole_pixels(self):
        opaque = [sum(pixel[3] > 250 for pixel in as_it_is(source(symbol), 16)) for symbol in LEVELS]
        steps = [after - before for before, after in zip(opaque, opaque[1:])]
        self.assertGreaterEqual(min(steps), 12, opaque)


if __name__ == "__main__":
    unittest.main()
