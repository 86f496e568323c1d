# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The X display's mouse and keys, and what is on a screen: pictures to compare and to keep."""

import os
import pathlib
import subprocess

from lumora_testing.remote import wait_for

PICTURES = pathlib.Path(os.environ.get("LUMORA_PICTURES", "pictures")).resolve()


class Picture:
    """The pixels of a screen, taken by a command that writes a portable pixmap."""

    def __init__(self, command):
        data = subprocess.check_output(command)
        kind, size, depth, pixels = data.split(b"\n", 3)
        if (kind, depth) != (b"P6", b"255"):
            raise ValueError(f"not such a picture: {data[:20]}")
        self.width, self.height = map(int, size.split())
        self._pixels = pixels

    def pixel(self, x, y):
        """Its colour: three bytes."""
        start = (y * self.width + x) * 3
        return self._pixels[start : start + 3]

    def area(self, left, top, right, bottom):
        """The pixels of a rectangle, to be compared."""
        return tuple(
            self._pixels[(y * self.width + left) * 3 : (y * self.width + right) * 3] for y in range(top, bottom)
        )

    def changed_since(self, other, below):
        """The rectangle (left, top, right, bottom) of what differs from another picture below a height, or None."""
        length = 3 * self.width
        rows, columns = [], []
        for y in range(below, self.height):
            here, there = (picture._pixels[y * length : (y + 1) * length] for picture in (self, other))
            # The highest bit that differs is in the leftmost pixel, the lowest in the rightmost.
            differing = int.from_bytes(here, "big") ^ int.from_bytes(there, "big")
            if differing:
                rows.append(y)
                columns.append((8 * length - differing.bit_length()) // 24)
                columns.append(self.width - 1 - ((differing & -differing).bit_length() - 1) // 24)
        return (min(columns), rows[0], max(columns) + 1, rows[-1] + 1) if rows else None

    def item_in_panel(self, height):
        """The rectangle of what lies in the panel at the top whose left end is empty, or None."""
        empty = {self.pixel(1, y): None for y in range(1, height - 1)}
        found = [(x, y) for x in range(self.width) for y in range(1, height - 1) if self.pixel(x, y) not in empty]
        if not found:
            return None
        columns, rows = zip(*found)
        return min(columns), min(rows), max(columns) + 1, max(rows) + 1

    def keep(self, name, box=None, factor=1):
        """Write it, or a rectangle of it magnified, into the folder of pictures."""
        PICTURES.mkdir(parents=True, exist_ok=True)
        left, top, right, bottom = box or (0, 0, self.width, self.height)
        file = PICTURES / f"{name}.png"
        whole = b"P6\n%d %d\n255\n" % (self.width, self.height) + self._pixels
        subprocess.run(
            [
                "convert",
                "ppm:-",
                "-crop",
                f"{right - left}x{bottom - top}+{left}+{top}",
                "+repage",
                "-scale",
                f"{factor * 100}%",
                file,
            ],
            input=whole,
            check=True,
        )
        return file


def click(x, y, button=1):
    """A click of the mouse on the X display."""
    subprocess.check_call(["xdotool", "mousemove", str(x), str(y), "click", str(button)])


def key(*names):
    """Press keys in the window that has the focus."""
    subprocess.check_call(["xdotool", "key", "--delay", "30", *names])


def geometry(window):
    """Left, top, width and height of a window."""
    told = subprocess.check_output(["xdotool", "getwindowgeometry", "--shell", window], text=True)
    values = dict(line.split("=") for line in told.split())
    return tuple(int(values[name]) for name in ("X", "Y", "WIDTH", "HEIGHT"))


def drawn(found):
    """The one window that was found, or None; only once it has its content, which comes after the keyboard."""
    if len(found) != 1:
        return None
    left, top, width, height = geometry(found[0])
    return found[0] if len(set(x_screen().area(left, top, left + width, top + height))) > 20 else None


def focused(found):
    """The one window that was found once the window manager has given it the keyboard, or None."""
    holder = subprocess.run(["xdotool", "getwindowfocus"], capture_output=True, text=True, check=False).stdout.split()
    return found[0] if len(found) == 1 and holder == found else None


def x_screen():
    """The X display as it looks now."""
    return Picture(["import", "-window", "root", "-depth", "8", "ppm:-"])


def settled_screen():
    """The X display once it no longer changes."""
    shown = [x_screen()]

    def settled():
        shown.append(x_screen())
        return shown[-1].area(0, 0, shown[-1].width, shown[-1].height) == shown[-2].area(
            0, 0, shown[-2].width, shown[-2].height
        )

    wait_for(settled, "a screen that is still")
    return shown[-1]


def wayland_screen():
    """The Wayland compositor's screen as it looks now."""
    return Picture(["grim", "-t", "ppm", "-"])
