# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""MATE on an X server without a screen."""

import shutil

from desktop import CannotBe, version_of
from desktops.accessibility import ICON_ROLE, anything
from desktops.x11 import X11, run, wait_for_panel
from lumora_testing.remote import wait_for

# A light one with light windows: those of the theme that is there first are grey.
DARK, LIGHT = "BlackMATE", "Adwaita"
# Where its programs lie, on Debian 12 and later.
PROGRAMS = "/usr/bin:/usr/lib/mate-notification-daemon:/usr/libexec:/usr/libexec/mate-notification-daemon"
POWER = "org.mate.PowerManager"


class Mate(X11):
    """See Desktop."""

    name = "MATE"
    environment = X11.environment | {
        "XDG_CURRENT_DESKTOP": "MATE",
        "XDG_SESSION_DESKTOP": "mate",
        "DESKTOP_SESSION": "mate",
        "XDG_MENU_PREFIX": "mate-",
    }
    panel = ("mate-panel",)
    # On Debian 12 each applet is one of its own.
    panel_programs = "mate-panel", "notification-area-applet", "clock-applet"
    other = "month calendar"
    notifier = "mate-notification-daemon"
    locker = "mate-screensaver-command"

    def start_shell(self):
        self.name = f"MATE {version_of('mate-panel')}"
        self.start_session()
        self.spawn("settings", shutil.which("mate-settings-daemon", path=PROGRAMS), "--no-daemon")
        self.spawn("windows", "marco")
        self.spawn("notifications", shutil.which("mate-notification-daemon", path=PROGRAMS))
        self.spawn("desktop", "caja", "--no-default-window", "--force-desktop")
        self.spawn("screensaver", "mate-screensaver", "--no-daemon")
        self.wait_for_name("org.freedesktop.Notifications")
        self.start_panel()

    def item(self):
        return self.find_item(lambda _, node: node.name == "Lumora")

    def own_battery(self):
        if not self.owned(POWER):
            self.spawn("power", "mate-power-manager")
        return wait_for(
            lambda: self.accessibility.button(self.panel_programs, anything, (ICON_ROLE,)), "its icon"
        ).box()

    def set_panel_dark(self, dark):
        self.set_dark(dark)
        wait_for_panel(self, dark)

    def set_dark(self, dark):
        run("gsettings", "set", "org.mate.interface", "gtk-theme", DARK if dark else LIGHT)

    def set_accent(self, number):
        raise CannotBe("MATE has none")

    def set_text_size(self, factor):
        if factor == 1:
            # What it then takes is the screen's own.
            run("gsettings", "reset", "org.mate.font-rendering", "dpi")
        else:
            run("gsettings", "set", "org.mate.font-rendering", "dpi", str(96 * factor))

    def set_do_not_disturb(self, wanted):
        run("gsettings", "set", "org.mate.NotificationDaemon", "do-not-disturb", str(wanted).lower())


DESKTOP = Mate
