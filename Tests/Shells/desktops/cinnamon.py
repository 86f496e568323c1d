# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Cinnamon on an X server without a screen: its own script engine tells what it shows."""

import glob
import json
import pathlib

from gi.repository import GLib

from desktop import Box, CannotBe, Notification, end, version_of
from desktops.scripted import Scripted
from desktops.x11 import ICON, WATCHER, X11, run, shows_icon
from lumora_testing.remote import wait_for

FACE = "/usr/share/cinnamon/faces/user-generic.png"
CLOCK = "calendar@cinnamon.org"
HELPERS = """
  const Main = imports.ui.main;
  const applet = imports.ui.appletManager.getRunningInstancesForUuid('xapp-status@cinnamon.org')[0];
  const icons = applet ? Object.values(applet.statusIcons) : [];
  // Cinnamon may lose the name and the picture of a new item; the name stays that on the bus.
  const ours = name => name.includes('umora') || name.startsWith(':');
  // It loads the picture of an item later than it makes room for the item.
  const drawn = icon => icon.actor.mapped && icon.icon_holder.child && icon.proxy.icon_name.trim();
  const item = () => icons.filter(icon => drawn(icon) && ours(icon.proxy.name))[0];
"""


POWER = "org.cinnamon.SettingsDaemon.Power"
POWER_APPLET = """
  const actor = imports.ui.appletManager.getRunningInstancesForUuid('power@cinnamon.org')[0]?.actor;
  return actor?.mapped ? box(actor) : null;
"""


class Cinnamon(Scripted, X11):
    """See Desktop."""

    name = "Cinnamon"
    environment = X11.environment | {
        "XDG_CURRENT_DESKTOP": "X-Cinnamon",
        "XDG_SESSION_DESKTOP": "cinnamon",
        "DESKTOP_SESSION": "cinnamon",
    }
    locker = "cinnamon-screensaver-command"
    shell = "org.Cinnamon", "/org/Cinnamon", "org.Cinnamon"
    helpers = HELPERS

    def start_shell(self):
        self.name = f"Cinnamon {version_of('cinnamon')}"
        self.start_session()
        # Without a picture of the user, Cinnamon 5.6 asks the system's accounts, which are not here, and cannot unlock.
        (pathlib.Path.home() / ".face").symlink_to(FACE)
        for part in ("xsettings", "background"):
            self.spawn("settings", f"csd-{part}")
        self.spawn("watcher", *glob.glob("/usr/lib*/*/*/xapp-sn-watcher"))
        self._start_panel()

    def _start_panel(self):
        self._shell = self.spawn("shell", "cinnamon", "--replace")
        wait_for(self._answers, "Cinnamon")
        self.wait_for_name(WATCHER)

    def restart_shell(self):
        end(self._shell)
        self._start_panel()

    def _answers(self):
        try:
            return self._script("return applet && Main.runState === Main.RunState.RUNNING ? 1 : 0;", seconds=5) == 1
        except GLib.Error:
            return False

    def item(self):
        found = self._script("const icon = item(); return icon ? box(icon.actor) : null;")
        return Box(*map(round, found)) if found else None

    def notifications(self):
        """The banner, and those that wait for their turn."""
        told = self._script(
            """const tray = Main.messageTray, shown = tray._notification;
               const of = n => ({title: n._titleLabel.text, texts: texts(n.actor), box: box(n.actor)});
               const buttons = n => all(n.actor).filter(a => a instanceof St.Button && a.label).map(a => a.label);
               const told = n => ({...of(n), buttons: buttons(n), banner: n === shown && texts(n.actor).length > 0});
               return (shown ? [shown] : []).concat(tray._notificationQueue).map(told);"""
        )
        return [self._notification(**each) for each in told]

    def _notification(self, title, texts, box, buttons, banner):
        icon = ICON if banner and box and shows_icon(self.picture(), Box(*map(round, box))) else ""
        return Notification(title, " ".join(texts[1:]), tuple(buttons), None, icon, banner)

    def own_battery(self):
        if not self.owned(POWER):
            self.spawn("power", "csd-power")
            self.wait_for_name(POWER)
        return wait_for(self._power_applet, "the power applet")

    def _power_applet(self):
        found = self._script(POWER_APPLET)
        return Box(*map(round, found)) if found else None

    def press(self, notification, label):
        """Once the banner no longer slides."""
        found = wait_for(
            lambda: self._script(
                f"""if (Main.messageTray._notificationState !== imports.ui.messageTray.State.SHOWN) return null;
                    const button = all(Main.messageTray._notificationBin)
                      .filter(a => a instanceof St.Button && a.mapped && a.label === {json.dumps(label)})[0];
                    return button ? box(button) : null;"""
            ),
            f"the button {label}",
        )
        self.click(*Box(*map(round, found)).middle)

    def clear_notifications(self):
        wait_for(
            lambda: self._script(
                """const tray = Main.messageTray;
                   [tray._notification, ...tray._notificationQueue].forEach(n => n?.destroy());
                   return !tray._notification;"""
            ),
            "the end of the notifications",
        )

    def other_item(self):
        found = self._script("return box(imports.ui.appletManager.getRunningInstancesForUuid('%s')[0].actor);" % CLOCK)
        return Box(*map(round, found)).middle

    def set_panel_dark(self, dark):
        if not dark:
            raise CannotBe("Debian has Cinnamon's dark panel alone")

    def set_dark(self, dark):
        if int(version_of("cinnamon").split(".")[0]) < 6:
            # It has themes alone.
            theme = "Adwaita-dark" if dark else "Adwaita"
            run("gsettings", "set", "org.cinnamon.desktop.interface", "gtk-theme", theme)
        else:
            run("gsettings", "set", "org.x.apps.portal", "color-scheme", "prefer-dark" if dark else "prefer-light")

    def set_accent(self, number):
        raise CannotBe("Cinnamon has themes instead")

    def set_text_size(self, factor):
        run("gsettings", "set", "org.cinnamon.desktop.interface", "text-scaling-factor", str(factor))

    def set_do_not_disturb(self, wanted):
        shown = str(not wanted).lower()
        run("gsettings", "set", "org.cinnamon.desktop.notifications", "display-notifications", shown)


DESKTOP = Cinnamon
