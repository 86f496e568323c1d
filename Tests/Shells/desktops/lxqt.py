# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""LXQt on an X server without a screen."""

import configparser
import glob
import os
import pathlib
import re

from desktop import CannotBe, Notification, version_of
from desktops.accessibility import buttons, texts
from desktops.x11 import ICON, X11, shows_icon, wait_for_panel
from lumora_testing.remote import wait_for

# What Lumora's tooltips have in them.
TOLD = re.compile("battery|charg|plugged", re.IGNORECASE)
# So that they tell of their widgets.
SPEAKING = "env", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1"
# What tells programs of its looks.
PLUGIN = "/usr/lib/*/qt6/plugins/platformthemes/libqtlxqt.so"


def areas(node):
    """What shows one notification of Lumora's, not what is within that once more."""
    lines = texts(node) if node.shows() else []
    if lines[:1] == ["Lumora"] and lines.count("Lumora") == 1 and len(lines) > 3:
        yield node
    elif lines:
        for child in node.children:
            yield from areas(child)


def require_plugin():
    """Look for what a desktop made for Qt 5 alone does not have."""
    if not glob.glob(PLUGIN):
        raise CannotBe("Debian 12's LXQt tells programs of Qt 6 nothing")


class Lxqt(X11):
    """See Desktop."""

    name = "LXQt"
    environment = X11.environment | {
        "XDG_CURRENT_DESKTOP": "LXQt",
        "XDG_SESSION_DESKTOP": "LXQt",
        "DESKTOP_SESSION": "lxqt",
        "XDG_MENU_PREFIX": "lxqt-",
        "XDG_CONFIG_DIRS": "/etc:/etc/xdg:/usr/share",
        "QT_QPA_PLATFORMTHEME": "lxqt",
    }
    panel = (*SPEAKING, "lxqt-panel")
    panel_programs = ("lxqt-panel",)
    other = "Removable media"
    notifier = "lxqt-notificationd"

    def start_shell(self):
        self.name = f"LXQt {version_of('lxqt-panel')}"
        self.start_session()
        # What is not there when it starts it does not hear of.
        self.set_do_not_disturb(False)
        self.spawn("windows", "openbox")
        self.spawn("desktop", "pcmanfm-qt", "--desktop", "--profile=lxqt")
        self.spawn("notifications", *SPEAKING, "lxqt-notificationd")
        self.wait_for_name("org.freedesktop.Notifications")
        self.start_panel()

    def item(self):
        """Its tooltip is its description."""
        return self.find_item(lambda _, node: not node.name and TOLD.search(node.description))

    def notifications(self):
        """One window has them all, each in an area of its own that begins with the program's name."""
        return [each for each, _ in self._shown()]

    def _shown(self):
        picture = self.picture()
        for window in self.accessibility.windows(self.notifier):
            for node in areas(window):
                lines = texts(node)
                icon = ICON if shows_icon(picture, node.box()) else ""
                yield Notification(lines[1], lines[2], tuple(buttons(node)), lines[0], icon, banner=True), node

    def press(self, notification, label):
        for shown, node in self._shown():
            if shown.title == notification.title:
                self.click(*buttons(node)[label].box().middle)
                return

    def clear_notifications(self):
        while found := list(self._shown()):
            node = found[0][1]
            self.click(*buttons(node)["x"].box().middle)
            wait_for(lambda: len(list(self._shown())) < len(found), "the end of a notification", 10)  # noqa: B023

    def set_panel_dark(self, dark):
        self._set("lxqt", "General", "theme", "dark" if dark else "light")
        wait_for_panel(self, dark)

    def set_dark(self, dark):
        require_plugin()
        window, text = ("#202326", "#fcfcfc") if dark else ("#eff0f1", "#232629")
        for key in ("window_color", "base_color", "view_color", "tooltip_base_color"):
            self._set("lxqt", "Palette", key, window)
        for key in ("window_text_color", "text_color", "view_text_color", "tooltip_text_color"):
            self._set("lxqt", "Palette", key, text)

    def set_text_size(self, factor):
        require_plugin()
        self._set("lxqt", "Qt", "font", f'"Sans,{round(11 * factor)},-1,5,50,0,0,0,0,0"')

    def set_do_not_disturb(self, wanted):
        self._set("notifications", "General", "doNotDisturb", str(wanted).lower())
        if wanted:
            # Its server hears of that a while later than its panel.
            wait_for(lambda: not self._shows_others(), "Do Not Disturb")

    def _shows_others(self):
        """Whether another program's notification is shown."""
        title, service = "Another program", ("org.freedesktop.Notifications", "/org/freedesktop/Notifications")
        arguments = "Another", 0, "", title, "", [], {}, -1
        number = self.call(*service, service[0], "Notify", "(susssasa{sv}i)", *arguments)[0]
        try:
            windows = self.accessibility.windows
            return wait_for(lambda: any(title in texts(each) for each in windows(self.notifier)), title, 2)
        except TimeoutError:
            return False
        finally:
            self.call(*service, service[0], "CloseNotification", "(u)", number)

    def _set(self, file, section, key, value):
        """As the desktop's own settings write it; its programs look for changes."""
        path = pathlib.Path(os.environ["XDG_CONFIG_HOME"]) / "lxqt" / f"{file}.conf"
        path.parent.mkdir(exist_ok=True)
        settings = configparser.RawConfigParser()
        settings.optionxform = str
        settings.read([f"/usr/share/lxqt/{file}.conf", path])
        if not settings.has_section(section):
            settings.add_section(section)
        settings.set(section, key, value)
        made = path.with_suffix(".new")
        with open(made, "w", encoding="utf-8") as written:
            settings.write(written, space_around_delimiters=False)
        made.replace(path)

    def set_accent(self, number):
        raise CannotBe("LXQt has none")

    def lock(self):
        raise CannotBe("LXQt has no lock of its own")


DESKTOP = Lxqt
