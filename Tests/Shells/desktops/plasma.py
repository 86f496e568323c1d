# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Plasma on Wayland: KWin's screen, mouse and keyboard are those of an X server that nobody sees."""

import contextlib
import dataclasses
import glob
import json
import os
import subprocess

from gi.repository import Gio, GLib

from desktop import Box, Desktop, Notification, Window, end, version_of
from desktops.accessibility import NOTIFICATION, Accessibility, buttons, texts
from desktops.x11 import ICON, WATCHER, run, said, shows_icon, start_x_server, unlock_by_password, wait_for_panel
from lumora_testing.remote import wait_for
from lumora_testing.screen import Picture

KWIN = "org.kde.KWin"
SCREEN_SAVER = "org.freedesktop.ScreenSaver", "/ScreenSaver", "org.freedesktop.ScreenSaver"
NOTIFICATIONS = "org.freedesktop.Notifications", "/org/freedesktop/Notifications", "org.freedesktop.Notifications"
# Dark enough for a light window, where a lighter one is made darker.
ACCENTS = "#003070", "#700020"
# The service and its item in the tray.
POWER, BATTERY = "org.kde.Solid.PowerManagement", "Power and Battery"
# A layer is larger than the popover by its shadow, on each side.
SHADOW = 8
TOLD = """<node><interface name="org.lumora.Shells"><method name="Told"><arg type="s" direction="in"/></method>
</interface></node>"""
# What the compositor shows, told to whoever asks.
WINDOWS = """
(() => {
  const shown = workspace.stackingOrder.filter(w => !w.minimized && !w.deleted && !w.hidden).map(w => {
    const r = w.frameGeometry;
    return {title: w.caption, program: w.resourceClass, box: [r.x, r.y, r.width, r.height], focused: w.active,
            popup: w.popupWindow};
  });
  callDBus("%s", "/windows", "org.lumora.Shells", "Told", JSON.stringify(shown));
})();
"""


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
        "KDE_SESSION_VERSION": "6",
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
        quiet = ["env", "-u", "WAYLAND_DISPLAY", "QT_NO_XDG_DESKTOP_PORTAL=1"]
        compositor = ["kwin_wayland", "--x11-display", self._display, *size, "--xwayland", "--socket", "wayland-kde"]
        self.spawn("kwin", *quiet, *compositor)
        wait_for(lambda: self.owned(KWIN), "KWin")
        self.tell_bus("--all")
        subprocess.run(["kbuildsycoca6"], check=False, capture_output=True)
        self.spawn("kded", "kded6")
        self._start_panel()
        self.accessibility = Accessibility(self)
        wait_for(lambda: self._button("Digital Clock"), "the panel")

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
            self.call(KWIN, f"/Scripting/Script{number}", "org.kde.kwin.Script", "run")
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
        for left, top, width, height in (each["box"] for each in self._layers() if each["focused"]):
            return self._box([left + SHADOW, top + SHADOW, width - 2 * SHADOW, height - 2 * SHADOW])
        return None

    def popover_focused(self):
        return self.popover() is not None

    def _layers(self):
        return [each for each in self._windows() if each["program"] == "lumora" and not each["title"]]

    def menu_open(self):
        """It says nothing to screen readers; a tooltip has a title."""
        return any(each["popup"] and not each["title"] for each in self._windows())

    def item(self):
        return self._button("Lumora")

    def bare_panel(self):
        left, right = self._button("Application Launcher"), self.item()
        return (left.right + right.left) // 2, right.middle[1]

    def other_item(self):
        return self._button("Digital Clock").middle

    def said_by_all(self):
        """KDE's plugin in every Qt program tells of one that draws without OpenGL, as Lumora's does."""
        command = ["plasma-apply-colorscheme", "--list-schemes"]
        alike = os.environ | {"QT_WAYLAND_CLIENT_BUFFER_INTEGRATION": "none"}
        return subprocess.run(command, env=alike, capture_output=True, text=True, check=False).stderr

    def _button(self, name):
        """The box of a button of the shell that has this name, or None."""
        node = self.accessibility.button(("plasmashell",), lambda _, node: node.name == name)
        return self._box(dataclasses.astuple(node.box())) if node else None

    def notifications(self):
        found = []
        for window, node in self._banners():
            lines = texts(window)
            box = self._box(dataclasses.astuple(window.box()))
            icon = ICON if shows_icon(self.picture(), box) else ""
            found.append(Notification(node.name, "", tuple(buttons(window)), lines[1], icon, banner=True))
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
        wait_for_panel(self, dark)

    def set_accent(self, number):
        run("plasma-apply-colorscheme", "--accent-color", ACCENTS[number])
        # That tells programs before the file has it.
        palette_changed = GLib.Variant("(ii)", (0, 0))
        self.bus.emit_signal(None, "/KGlobalSettings", "org.kde.KGlobalSettings", "notifyChange", palette_changed)
        # Plasma mixes it with the ground.
        mixed = said("kreadconfig6", "--file", "kdeglobals", "--group", "Colors:Selection", "--key", "BackgroundNormal")
        return tuple(map(int, mixed.split(",")))

    def set_text_size(self, factor):
        font = f"Noto Sans,{round(10 * factor)},-1,5,400,0,0,0,0,0,0,0,0,0,0,1"
        run("kwriteconfig6", "--file", "kdeglobals", "--group", "General", "--key", "font", font)
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
