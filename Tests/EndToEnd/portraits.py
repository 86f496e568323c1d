# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The README's pictures: the popover below the item in a panel, and the settings with the item in
sight, after a week of use. Run it in the simulated laptop, at two pixels for one, with the British locale in
LOCPATH: portraits.py BUNDLE
"""

import json
import os
import pathlib
import subprocess
import sys
import time

from gi.repository import GLib

from lumora_testing.bundle import Lumora, forget, windows
from lumora_testing.remote import RemoteLaptop, wait_for
from lumora_testing.screen import click, key, settled_screen, x_screen
from lumora_testing.usage import week

PANEL_HEIGHT = 28 * int(os.environ.get("GDK_SCALE", "1"))
WALL = "#6f8faf"
MARGIN = 24


def geometry(title):
    """Left, top, right and bottom of a window with its frame."""
    window = wait_for(lambda: windows(title), title)[0]
    told = subprocess.check_output(["xdotool", "getwindowgeometry", "--shell", window], text=True)
    x, y, width, height = (
        int(dict(line.split("=") for line in told.split())[name]) for name in ("X", "Y", "WIDTH", "HEIGHT")
    )
    return x, y, x + width, y + height


def around(box):
    """A little more than a window; up to the panel at the top."""
    screen = x_screen()
    left, _, right, bottom = box
    return max(0, left - MARGIN), 0, min(screen.width, right + MARGIN), min(screen.height, bottom + MARGIN)


def main():
    """Make both."""
    laptop = RemoteLaptop()
    laptop.set_appearance("org.gnome.desktop.interface font-name", GLib.Variant("s", "Inter 10"))
    laptop.set_appearance("accent-color", GLib.Variant("(ddd)", (0.21, 0.52, 0.89)))
    laptop.set_adapter(True)
    laptop.set_battery(percent=73, status="Charging")
    subprocess.check_call(["xsetroot", "-solid", WALL])
    forget()
    history = pathlib.Path(os.environ["XDG_DATA_HOME"]) / "Lumora" / "history.json"
    history.parent.mkdir(parents=True, exist_ok=True)
    history.write_text(json.dumps(week(time.time())))
    with Lumora(sys.argv[1], XDG_CURRENT_DESKTOP="GNOME", LC_ALL="en_GB.UTF-8") as lumora:
        left, top, right, bottom = wait_for(lambda: x_screen().item_in_panel(PANEL_HEIGHT), "the item")
        click((left + right) // 2, (top + bottom) // 2)
        box = geometry("Lumora")
        settled_screen().keep("popover", around(box))
        key("shift+Tab", "shift+Tab", "space")
        box = geometry("Lumora Settings")
        window = windows("Lumora Settings")[0]
        subprocess.check_call(
            [
                "xdotool",
                "windowmove",
                window,
                str(right - (box[2] - box[0]) - MARGIN),
                str(bottom + MARGIN),
                "mousemove",
                str(MARGIN),
                str(x_screen().height - MARGIN),
            ]
        )
        wait_for(lambda: geometry("Lumora Settings") != box, "the settings below the item")
        box = geometry("Lumora Settings")
        settled_screen().keep("tray-and-settings", around(box))
        return lumora.end()


if __name__ == "__main__":
    sys.exit(main())
