# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What the item in the tray costs with a history of thirty days: tray.py BUNDLE, in the simulated laptop.

From the start to an item that is registered, and the resident memory before the first click: once in a
tray that shows a label, and once in Xfce's panel, for which the text is drawn. Then the time from a
click to a popover that is painted, the first time and later.
"""

import pathlib
import statistics
import subprocess
import sys
import time

import gi

gi.require_version("Gdk", "3.0")
from gi.repository import Gdk, Gio, GLib  # noqa: E402

from lumora_testing.bundle import Lumora, forget, windows  # noqa: E402
from lumora_testing.figures import cpu_ms, row, status  # noqa: E402
from lumora_testing.month import write_history  # noqa: E402
from lumora_testing.remote import RemoteLaptop, wait_for  # noqa: E402
from lumora_testing.screen import x_screen  # noqa: E402

WATCHER = "org.kde.StatusNotifierWatcher"
INTERFACE = f"""<node><interface name="{WATCHER}">
<method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
<property name="IsStatusNotifierHostRegistered" type="b" access="read"/></interface></node>"""
OPENINGS = 20
LOOK_SECONDS = 0.002
SETTLED_THREADS = 3


class LabelTray:
    """A tray that shows labels: the program takes GNOME's for one by the name of its process."""

    def __init__(self):
        pathlib.Path("/proc/self/comm").write_text("gnome-shell")
        self.items = []
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION, None)
        interface = Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0]
        self.bus.register_object(
            "/StatusNotifierWatcher", interface, self._on_call, lambda *_: GLib.Variant("b", True), None
        )
        Gio.bus_own_name_on_connection(self.bus, WATCHER, 0, None, None)

    def _on_call(self, _bus, sender, _path, _interface, _method, arguments, invocation):
        item = arguments.unpack()[0]
        self.items.append(item)
        invocation.return_value(None)
        self.bus.call(
            sender,
            item,
            "org.freedesktop.DBus.Properties",
            "GetAll",
            GLib.Variant("(s)", ("org.kde.StatusNotifierItem",)),
            None,
            0,
            -1,
            None,
            None,
        )


def memory(process, name, limit):
    """Resident memory once the threads of the start are gone."""
    wait_for(lambda: status(pathlib.Path(f"/proc/{process}/status"), "Threads") == SETTLED_THREADS, "rest")
    return row(name, status(pathlib.Path(f"/proc/{process}/status"), "VmRSS") / 1024, "MiB", limit)


def in_a_tray_with_labels(bundle, laptop):
    """The figures of the label."""
    laptop.stop("panel")
    tray = LabelTray()
    with Lumora(bundle) as lumora:
        wait_for(lambda: tray.items, "the item")
        kept = [row("start to a registered item, CPU", cpu_ms(lumora.process.pid), "ms", 40)]
        kept.append(memory(lumora.process.pid, "resident memory with a label", 13))
        lumora.end()
    tray.bus.call_sync(
        "org.freedesktop.DBus",
        "/org/freedesktop/DBus",
        "org.freedesktop.DBus",
        "ReleaseName",
        GLib.Variant("(s)", (WATCHER,)),
        None,
        0,
        -1,
        None,
    )
    laptop.start("panel")
    return kept


def opening_ms(item, root):
    """From the end of a click on the item, the start of the tool that clicks included, until
    the popover's corner is painted, in milliseconds; then closes it."""
    x, y = item

    def corner():
        return Gdk.pixbuf_get_from_window(root, x - 40, 60, 1, 1).get_pixels()

    before = corner()
    subprocess.check_call(["xdotool", "mousemove", str(x), str(y), "mousedown", "1"])
    start = time.monotonic()
    release = subprocess.Popen(["xdotool", "mouseup", "1"])
    while corner() == before:
        # Asked without a pause, the display would do nothing else.
        time.sleep(LOOK_SECONDS)
        if time.monotonic() > start + 10:
            raise TimeoutError("no popover")
    taken = (time.monotonic() - start) * 1000
    release.wait()
    wait_for(lambda: windows("Lumora"), "the popover")
    subprocess.check_call(["xdotool", "key", "Escape"])
    wait_for(lambda: corner() == before, "its end")
    return taken


def in_xfces_panel(bundle):
    """The figures of the text drawn, and of the popover."""
    Gdk.init([])
    root = Gdk.get_default_root_window()
    with Lumora(bundle) as lumora:
        left, top, right, bottom = wait_for(lambda: x_screen().item_in_panel(28), "the item")
        kept = [memory(lumora.process.pid, "resident memory with the text drawn", 17)]
        item = (left + right) // 2, (top + bottom) // 2
        kept.append(row("click to painted popover, the first", opening_ms(item, root), "ms", 80))
        later = [opening_ms(item, root) for _ in range(OPENINGS)]
        kept.append(row("click to painted popover, later (median)", statistics.median(later), "ms", 20))
        lumora.end()
    return kept


def main():
    """Both trays, one after the other."""
    laptop = RemoteLaptop()
    forget()
    write_history()
    kept = in_a_tray_with_labels(sys.argv[1], laptop) + in_xfces_panel(sys.argv[1])
    return 0 if all(kept) else 1


if __name__ == "__main__":
    sys.exit(main())
