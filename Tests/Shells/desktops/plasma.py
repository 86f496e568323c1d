# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Plasma on Wayland: KWin's screen, mouse and keyboard are those of an X server that nobody sees."""

import collections
import contextlib
import dataclasses
import glob
import json
import os
import shutil
import subprocess

from gi.repository import Gio, GLib

from desktop import Box, Desktop, Notification, Window, end, version_of
from desktops.accessibility import NOTIFICATION, Accessibility, buttons, texts
from desktops.x11 import ICON, WATCHER, run, said, shows_icon, start_x_server, unlock_by_password, wait_for_panel
from lumora_testing.remote import wait_for
from lumora_testing.screen import Picture

# 5 or 6, which many of its programs have in their names.
SERIES = int(version_of("plasma-workspace").split(".")[0])
KWIN = "org.kde.KWin"
SCRIPT = "/Scripting/Script{}" if SERIES > 5 else "/{}"
# Without a graphics card Plasma 5's KWin does not draw by OpenGL in an X window.
RENDERER = [] if SERIES > 5 else ["KWIN_COMPOSE=Q"]
SCREEN_SAVER = "org.freedesktop.ScreenSaver", "/ScreenSaver", "org.freedesktop.ScreenSaver"
NOTIFICATIONS = "org.freedesktop.Notifications", "/org/freedesktop/Notifications", "org.freedesktop.Notifications"
# Dark enough for a light window, where a lighter one is made darker.
ACCENTS = "#003070", "#700020"
# The service and its item in the tray.
POWER, BATTERY = "org.kde.Solid.PowerManagement", "Power and Battery"
# Where among the texts of a notification the name of its program is.
HEAD = 1 if SERIES > 5 else 0
# A layer is larger than the popover by its shadow, on each side.
SHADOW = 8
TOLD = """<node><interface name="org.lumora.Shells"><method name="Told"><arg type="s" direction="in"/></method>
</interface></node>"""
# What the compositor shows, told to whoever asks.
WINDOWS = """
(() => {
  const all = workspace.stackingOrder ?? workspace.clientList();
  const shown = all.filter(w => !w.minimized && !w.deleted && !w.hidden).map(w => {
    const r = w.frameGeometry;
    return {title: w.caption, program: String(w.resourceClass), box: [r.x, r.y, r.width, r.height], focused: w.active,
            popup: w.popupWindow};
  });
  callDBus("%s", "/windows", "org.lumora.Shells", "Told", JSON.stringify(shown));
})();
"""


def places_of(color, row):
    """Where in a row of pixels a colour is."""
    return [at // 3 for at in range(0, len(row), 3) if row[at : at + 3] == color]


class Plasma(Desktop):
    """See Desktop."""

    name = "Plasma"
    environment = {
        "XDG_SESSION_TYPE": "wayland",
        "XDG_SESSION_CLASS": "user",
        "XDG_CURRENT_DESKTOP": "KDE",
        "XDG_SESSION_DESKTOP": "KDE",
        "DESKTOP_SESSION": "plasma",
        "XDG_MENU_PREFIX": "plasma-",
        "KDE_FULL_SESSION": "true",
        "KDE_SESSION_VERSION": str(SERIES),
        "LIBGL_ALWAYS_SOFTWARE": "1",
        "QT_QUICK_BACKEND": "software",
    }
    _factor = 1  # as many pixels of the picture are one of the shell's

    def start_shell(self):
        self.name = f"Plasma {version_of('plasma-workspace')}"
        self._display = start_x_server(self)
        width, height = map(str, self.screen)
        size = ["--width", width, "--height", height]
        self._told = None
        self.bus.register_object("/windows", Gio.DBusNodeInfo.new_for_xml(TOLD).interfaces[0], self._hear, None, None)
        os.environ["WAYLAND_DISPLAY"] = "wayland-kde"
        # It would start the portal, which finds no compositor yet and then has no settings.
        quiet = ["env", "-u", "WAYLAND_DISPLAY", "QT_NO_XDG_DESKTOP_PORTAL=1", *RENDERER]
        # On Debian 12 the file asks for a right that not every root may have; a copy does not.
        kwin = shutil.copy(shutil.which("kwin_wayland"), os.environ["XDG_RUNTIME_DIR"])
        compositor = [kwin, "--x11-display", self._display, *size, "--xwayland", "--socket", "wayland-kde"]
        self.spawn("kwin", *quiet, *compositor)
        wait_for(lambda: self.owned(KWIN), "KWin")
        self.tell_bus("--all")
        subprocess.run([f"kbuildsycoca{SERIES}"], check=False, capture_output=True)
        self.spawn("kded", f"kded{SERIES}")
        self._start_panel()
        self.accessibility = Accessibility(self)
        wait_for(lambda: self._button("Digital Clock"), "the panel")
        if SERIES == 5:
            self._choose_looks()

    def _choose_looks(self):
        """What Plasma 5 has where nothing was ever chosen programs of Qt 6 do not know; and see `_drawn_in`."""
        plain = self.folder / "plain.png"
        run("convert", "-size", "64x64", "xc:#306080", str(plain))
        run("plasma-apply-wallpaperimage", str(plain))
        # The one that is taken already it does not take.
        self.set_dark(True)
        self.set_dark(False)

    def _start_panel(self):
        self._shell = self.spawn("plasmashell", "env", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1", "plasmashell")
        wait_for(lambda: self.owned(WATCHER), "the tray")

    def restart_shell(self):
        end(self._shell)
        self._start_panel()

    def picture(self):
        return Picture(["import", "-display", self._display, "-window", "root", "-depth", "8", "ppm:-"])

    def _windows(self):
        """What KWin shows, the lowest first."""
        file = self.folder / "windows.js"
        file.write_text(WINDOWS % self.bus.get_unique_name())
        self._told = None
        scripting = KWIN, "/Scripting", "org.kde.kwin.Scripting"
        number = self.call(*scripting, "loadScript", "(ss)", str(file), "windows")[0]
        try:
            self.call(KWIN, SCRIPT.format(number), "org.kde.kwin.Script", "run")
            return wait_for(lambda: self._told, "KWin's windows", 10)
        finally:
            self.call(*scripting, "unloadScript", "(s)", "windows")

    def _hear(self, _connection, _sender, _path, _interface, _method, arguments, invocation):
        self._told = json.loads(arguments.unpack()[0])
        invocation.return_value(None)

    def windows(self):
        return [Window(each["title"], self._box(each["box"]), each["focused"]) for each in self._windows()]

    def popover(self):
        """A layer has no title, but it has the name of its program; the other one is as large as the screen."""
        for each in self._windows():
            left, top, width, height = each["box"]
            if each["program"] == "lumora" and not each["title"] and each["focused"]:
                return self._box([left + SHADOW, top + SHADOW, width - 2 * SHADOW, height - 2 * SHADOW])
            if each["title"] == "Lumora":
                return self._drawn_in(self._box(each["box"]))
        return None

    def _drawn_in(self, box):
        """What is to be seen of a window that is larger than that: the extent of its ground, on a plain wallpaper."""
        picture = self.picture()
        rows = picture.area(*box.corners)
        counted = collections.Counter(row[at : at + 3] for row in rows[::4] for at in range(0, len(row), 12))
        del counted[picture.pixel(*self.wallpaper())]
        if not counted:
            return None
        ground = counted.most_common(1)[0][0]
        places = [(y, found) for y, row in enumerate(rows, box.top) if (found := places_of(ground, row))]
        left, right = min(found[0] for _, found in places), max(found[-1] for _, found in places)
        top, bottom = places[0][0], places[-1][0]
        return Box(box.left + left, top, right - left + 1, bottom - top + 1)

    def popover_focused(self):
        return any(each["focused"] and "umora" in each["program"] for each in self._windows())

    def menu_open(self):
        """It says nothing to screen readers; a tooltip has a title."""
        return any(each["popup"] and not each["title"] for each in self._windows())

    def item(self):
        """Plasma 5 has another button of that name while a window is open, at the left."""
        return self._button("Lumora", lambda node: node.box().left * self._factor > self.screen[0] // 2)

    def bare_panel(self):
        left, right = self._button("Application Launcher"), self.item()
        return (left.right + right.left) // 2, right.middle[1]

    def other_item(self):
        return self._button("Digital Clock").middle

    def _button(self, name, condition=lambda node: True):
        """The box of a button of the shell that has this name and for which the condition is true, or None."""
        node = self.accessibility.button(("plasmashell",), lambda _, node: node.name == name and condition(node))
        return self._box(dataclasses.astuple(node.box())) if node else None

    def notifications(self):
        found = []
        for window, node in self._banners():
            lines = texts(window)
            box = self._box(dataclasses.astuple(window.box()))
            icon = ICON if shows_icon(self.picture(), box) else ""
            found.append(Notification(node.name, "", tuple(buttons(window)), lines[HEAD], icon, banner=True))
        return found

    def _banners(self):
        for window in self.accessibility.windows("plasmashell"):
            for node in window.within():
                with contextlib.suppress(GLib.Error):
                    if node.role == NOTIFICATION:
                        yield window, node

    def own_battery(self):
        if not self.owned(POWER):
            self.spawn("power", *glob.glob("/usr/lib/*/libexec/org_kde_powerdevil"))
        return wait_for(lambda: self._button(BATTERY), "the battery in the tray")

    def press(self, notification, label):
        for window, node in self._banners():
            if node.name == notification.title:
                self.click(*self._box(dataclasses.astuple(buttons(window)[label].box())).middle)
                return

    def clear_notifications(self):
        for window, _ in list(self._banners()):
            self.click(*self._box(dataclasses.astuple(buttons(window)["Close"].box())).middle)
            wait_for(lambda: not window.shows(), "the end of a notification")  # noqa: B023

    def move(self, x, y):
        self._x("mousemove", str(x), str(y))

    def click(self, x, y, button=1):
        self._x("mousemove", str(x), str(y), "click", str(button))

    def key(self, name):
        self._x("key", name)

    def lock(self):
        self.call(*SCREEN_SAVER, "Lock")
        wait_for(self._locked, "the lock")

    def unlock(self):
        unlock_by_password(self._locked, self._display)
        # While it still ends, KWin starts no other one and stays without a lock.
        wait_for(lambda: not said("pidof", "kscreenlocker_greet"), "the end of the lock's program")

    def _locked(self):
        return self.call(*SCREEN_SAVER, "GetActive")[0]

    def set_dark(self, dark):
        run("plasma-apply-colorscheme", "BreezeDark" if dark else "BreezeLight")

    def set_panel_dark(self, dark):
        run("plasma-apply-desktoptheme", "breeze-dark" if dark else "breeze-light")
        try:
            wait_for_panel(self, dark)
        except TimeoutError:
            # A panel was seen to take a theme's text and, to its end, not its ground; one that starts takes both.
            self.restart_shell()
            wait_for(self.item, "the item")
            wait_for_panel(self, dark)

    def set_accent(self, number):
        run("plasma-apply-colorscheme", "--accent-color", ACCENTS[number])
        # That tells programs before the file has it.
        palette_changed = GLib.Variant("(ii)", (0, 0))
        self.bus.emit_signal(None, "/KGlobalSettings", "org.kde.KGlobalSettings", "notifyChange", palette_changed)
        # Plasma mixes it with the ground.
        mixed = said(
            f"kreadconfig{SERIES}", "--file", "kdeglobals", "--group", "Colors:Selection", "--key", "BackgroundNormal"
        )
        return tuple(map(int, mixed.split(",")))

    def set_text_size(self, factor):
        font = f"Noto Sans,{round(10 * factor)},-1,5,400,0,0,0,0,0,0,0,0,0,0,1"
        run(f"kwriteconfig{SERIES}", "--file", "kdeglobals", "--group", "General", "--key", "font", font)
        # As the settings of fonts say it.
        self.bus.emit_signal(None, "/KDEPlatformTheme", "org.kde.KDEPlatformTheme", "refreshFonts", None)

    def set_scale(self, factor):
        run("kscreen-doctor", f"output.1.scale.{factor}")
        self._factor = factor
        return factor

    def set_do_not_disturb(self, wanted):
        if wanted:
            arguments = "org.lumora.Lumora", "a test", {}
            self._inhibition = self.call(*NOTIFICATIONS, "Inhibit", "(ssa{sv})", *arguments)[0]
        else:
            self.call(*NOTIFICATIONS, "UnInhibit", "(u)", self._inhibition)

    def _x(self, *words):
        subprocess.run(["xdotool", *words], env={**os.environ, "DISPLAY": self._display}, check=True)

    def _box(self, values):
        return Box(*(round(value * self._factor) for value in values))


DESKTOP = Plasma
