# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Xfce on an X server without a screen."""

import glob
import os
import pathlib
import shutil

from desktop import CannotBe, version_of
from desktops.accessibility import ICON_ROLE, anything
from desktops.x11 import X11, run, said, wait_for_panel
from lumora_testing.remote import wait_for

POWER = "org.xfce.PowerManager"


class Xfce(X11):
    """See Desktop."""

    name = "Xfce"
    environment = X11.environment | {
        "XDG_CURRENT_DESKTOP": "XFCE",
        "XDG_SESSION_DESKTOP": "xfce",
        "DESKTOP_SESSION": "xfce",
        "XDG_MENU_PREFIX": "xfce-",
    }
    panel = ("xfce4-panel", "--disable-wm-check")
    panel_programs = ("xfce4-panel",)
    other = "Applications"
    notifier = "xfce4-notifyd"

    def start_shell(self):
        self.name = f"Xfce {version_of('xfce4-panel')}"
        self.start_session()
        # As a user finds it first, not as the laptop's own.
        shutil.rmtree(pathlib.Path(os.environ["XDG_CONFIG_HOME"]) / "xfce4")
        self.spawn("settings", "xfsettingsd", "--no-daemon")
        # Where no theme was ever chosen the panel takes none of its own.
        self.set_dark(False)
        self.spawn("windows", "xfwm4")
        self.spawn("desktop", "xfdesktop")
        self.spawn("notifications", *glob.glob("/usr/lib/*/xfce4/notifyd/xfce4-notifyd"))
        # Debian 12 has none of Xfce's own; it recommends others.
        screensaver = "xfce4-screensaver" if shutil.which("xfce4-screensaver") else "mate-screensaver"
        self.locker = f"{screensaver}-command"
        self.spawn("screensaver", screensaver)
        wait_for(lambda: said(self.locker, "--query"), "the screensaver")
        self.wait_for_name("org.freedesktop.Notifications")
        self.start_panel()

    def item(self):
        """The one button without a name in the tray, which is a program of its own."""
        return self.find_item(lambda _, node: not node.name, "wrapper-2.0")

    def own_battery(self):
        if not self.owned(POWER):
            self._set("xfce4-power-manager", "/xfce4-power-manager/show-tray-icon", "bool", "true")
            self.spawn("power", "xfce4-power-manager", "--no-daemon")
        return wait_for(lambda: self.accessibility.button(("wrapper-2.0",), anything, (ICON_ROLE,)), "its icon").box()

    def open_own_battery(self):
        self.click(*self.own_battery().middle, button=3)

    def set_panel_dark(self, dark):
        self._set("xfce4-panel", "/panels/dark-mode", "bool", str(dark).lower())
        wait_for_panel(self, dark)

    def set_dark(self, dark):
        self._set("xsettings", "/Net/ThemeName", "string", "Adwaita-dark" if dark else "Adwaita")

    def set_accent(self, number):
        raise CannotBe("Xfce has none")

    def set_text_size(self, factor):
        self._set("xsettings", "/Xft/DPI", "int", str(round(96 * factor)))

    def set_do_not_disturb(self, wanted):
        self._set("xfce4-notifyd", "/do-not-disturb", "bool", str(wanted).lower())

    @staticmethod
    def _set(channel, key, kind, value):
        run("xfconf-query", "--channel", channel, "--property", key, "--create", "--type", kind, "--set", value)


DESKTOP = Xfce
