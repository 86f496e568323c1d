# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""GNOME Shell with its AppIndicator extension, without a screen: its own script engine tells and does everything."""

import json
import os
import pathlib
import subprocess

from gi.repository import GLib

from desktop import Box, CannotBe, Desktop, MenuLine, Notification, NotSeen, Window, end
from desktops.scripted import Scripted
from lumora_testing.remote import wait_for
from lumora_testing.screen import Picture

SHELL = "org.gnome.Shell"
UUID = "lumora@tests"
EXTENSIONS = [UUID, "ubuntu-appindicators@ubuntu.com"]
INTERFACE = "org.gnome.desktop.interface"
DISPLAYS = "org.gnome.Mutter.DisplayConfig"
# What the two accents are in the shell's own style.
ACCENTS = {"blue": (53, 132, 228), "orange": (237, 91, 0)}
# The shell lends its script engine and its pictures to nobody but an extension.
EXTENSION = """
const open = () => { global.context.unsafe_mode = true; };
"""
FORMER_EXTENSION = EXTENSION + "function init() {} function enable() { open(); } function disable() {}\n"
MODULE_EXTENSION = EXTENSION + "export default class { enable() { open(); } disable() {} }\n"
HELPERS = """
  const {Clutter, GLib} = imports.gi;
  const item = () => Object.entries(Main.panel.statusArea)
    .filter(([name, area]) => name.startsWith('appindicator-') && area.mapped).map(([_, area]) => area)[0];
  const seat = (global.stage.context?.get_backend?.() ?? Clutter.get_default_backend()).get_default_seat();
  const devices = globalThis.lumoraDevices ??= {
    pointer: seat.create_virtual_device(Clutter.InputDeviceType.POINTER_DEVICE),
    keys: seat.create_virtual_device(Clutter.InputDeviceType.KEYBOARD_DEVICE),
  };
  const now = () => GLib.get_monotonic_time();
"""
LEAVE_OVERVIEW = """
  if (Main.layoutManager._startingUp) return false;
  if (Main.overview.visible) Main.overview.hide();
  return !Main.overview.visible;
"""


class Gnome(Scripted, Desktop):
    """See Desktop."""

    name = "GNOME"
    # No scale fits 1366 × 768 in whole numbers.
    screen = 1360, 768
    opens_with = "a double click"
    shell = SHELL, "/org/gnome/Shell", SHELL
    helpers = HELPERS
    _factor = 1  # as many pixels of the picture are one of the shell's
    environment = {
        "XDG_SESSION_TYPE": "wayland",
        "XDG_SESSION_CLASS": "user",
        "XDG_CURRENT_DESKTOP": "GNOME",
        "XDG_SESSION_DESKTOP": "gnome",
        "DESKTOP_SESSION": "gnome",
        "LIBGL_ALWAYS_SOFTWARE": "1",
        "WAYLAND_DISPLAY": "wayland-0",
    }
    kept = 4
    locks_by = "by its session mode"

    def start(self):
        told = subprocess.check_output(["gnome-shell", "--version"], text=True)
        self.name = told.split(".")[0].replace("GNOME Shell", "GNOME").strip()
        self._version = int(self.name.split()[-1])
        folder = pathlib.Path(os.environ["XDG_DATA_HOME"]) / "gnome-shell/extensions" / UUID
        folder.mkdir(parents=True)
        metadata = {
            "uuid": UUID,
            "name": "Lumora's tests",
            "description": "Lets the tests in",
            "shell-version": [str(self._version)],
            "session-modes": ["user", "unlock-dialog"],
        }
        (folder / "metadata.json").write_text(json.dumps(metadata))
        (folder / "extension.js").write_text(FORMER_EXTENSION if self._version < 45 else MODULE_EXTENSION)
        super().start()

    def start_shell(self):
        self._set("org.gnome.shell", "disable-user-extensions", "false")
        self._set("org.gnome.shell", "enabled-extensions", str(EXTENSIONS))
        self._set("org.gnome.shell", "welcome-dialog-last-shown-version", "999")
        self._set(INTERFACE, "enable-animations", "false")
        self._set("org.gnome.desktop.session", "idle-delay", "0")
        # Scales between one and two, too.
        self._set("org.gnome.mutter", "experimental-features", "['scale-monitor-framebuffer']")
        width, height = self.screen
        self._shell = self.spawn(
            "shell", "gnome-shell", "--wayland", "--headless", "--virtual-monitor", f"{width}x{height}"
        )
        wait_for(self._answers, "GNOME Shell")
        for name in ("DISPLAY", "XAUTHORITY"):
            if value := self._script(f"return GLib.getenv('{name}');"):
                os.environ[name] = value
        self.tell_bus("WAYLAND_DISPLAY", "DISPLAY", "XAUTHORITY", "XDG_CURRENT_DESKTOP", "XDG_SESSION_TYPE")
        # It begins in the overview where no window is.
        wait_for(lambda: self._script(LEAVE_OVERVIEW), "the desktop")

    def restart_shell(self):
        end(self._shell)
        self.start_shell()

    def lock(self):
        self._script("Main.sessionMode.pushMode('unlock-dialog'); return 1;")
        wait_for(lambda: self.item() is None, "the panel of the lock")

    def unlock(self):
        self._script("Main.sessionMode.popMode('unlock-dialog'); return 1;")

    def picture(self):
        file = self.folder / "screen.png"
        self.call(
            f"{SHELL}.Screenshot",
            "/org/gnome/Shell/Screenshot",
            f"{SHELL}.Screenshot",
            "Screenshot",
            "(bbs)",
            False,
            False,
            str(file),
        )
        return Picture(["convert", str(file), "-depth", "8", "ppm:-"])

    def item(self):
        found = self._script("const area = item(); return area ? box(area) : null;")
        return self._box(found) if found else None

    def item_text(self):
        return " ".join(self._script("return texts(item());"))

    def windows(self):
        told = self._script(
            """return global.get_window_actors().map(actor => actor.meta_window).filter(w => !w.minimized).map(w => {
                 const r = w.get_frame_rect();
                 return {title: w.get_title() ?? '', box: [r.x, r.y, r.width, r.height], focused: w.has_focus()}; });"""
        )
        return [Window(each["title"], self._box(each["box"]), each["focused"]) for each in told]

    def popover(self):
        """Its window is larger than what is to be seen of it."""
        file = self.folder / "popover.png"
        found = self._script(
            f"""const actor = global.get_window_actors().filter(a => a.meta_window.get_title() === 'Lumora')[0];
                const picture = actor?.mapped ? actor.get_image(null) : null;
                if (!picture) return null;
                picture.writeToPNG('{file}');
                const r = actor.meta_window.get_buffer_rect();
                return [r.x, r.y, r.width, r.height];"""
        )
        if not found:
            return None
        opaque = [
            "convert",
            file,
            "-alpha",
            "extract",
            "-threshold",
            "90%",
            "-trim",
            "-format",
            "%W %w %h %X %Y",
            "info:",
        ]
        whole, width, height, left, top = map(int, subprocess.check_output(opaque, text=True).split())
        each = found[2] / whole
        return self._box([found[0] + left * each, found[1] + top * each, width * each, height * each])

    def menu(self):
        told = self._script(
            """const menu = item()?.menu;
               if (!menu?.isOpen) return [];
               return menu._getMenuItems().filter(line => line.mapped).map(line => ({
                 text: texts(line).join(' '), box: box(line)})).filter(line => line.text && line.box);"""
        )
        return [MenuLine(line["text"], self._box(line["box"])) for line in told]

    def notifications(self):
        told = self._script(
            """const shown = texts(Main.messageTray._bannerBin);
               return Main.messageTray.getSources().flatMap(source => source.notifications.map(n => ({
                 title: n.title ?? '', body: n.body ?? n.bannerBodyText ?? '',
                 buttons: n.actions.map(action => action.label), application: source.title ?? '',
                 icon: (n.gicon ?? source.icon)?.to_string() ?? '', banner: shown.includes(n.title)})));"""
        )
        return [Notification(**{**each, "buttons": tuple(each["buttons"])}) for each in told]

    def move(self, x, y):
        self._script(f"devices.pointer.notify_absolute_motion(now(), {self._own(x)}, {self._own(y)}); return 1;")

    def click(self, x, y, button=1, times=1):
        self.move(x, y)
        if times == 1:
            # The panel takes the focus from a window only while the button is down.
            self._strokes(button, 1)
            self.picture()
            self._strokes(button, 0)
        else:
            self._strokes(button, *[1, 0] * times)

    def drag(self, start, end):
        self.move(*start)
        self._strokes(1, 1)
        # The window's program asks for it, and then the shell takes over.
        for step in range(1, 11):
            self.move(*(a + (b - a) * step / 10 for a, b in zip(start, end)))
            self.picture()
        self._strokes(1, 0)

    def _strokes(self, button, *downs):
        self._script(
            f"for (const down of {list(downs)}) devices.pointer.notify_button(now(), {button}, down); return 1;"
        )

    def key(self, name):
        self._script(
            f"for (const down of [1, 0]) devices.keys.notify_keyval(now(), Clutter.KEY_{name}, down); return 1;"
        )

    def hover(self):
        raise CannotBe("GNOME shows none for items")

    def set_panel_dark(self, dark):
        if not dark:
            raise CannotBe("GNOME's panel is always dark")

    def bare_panel(self):
        return self.screen[0] // 4, self.item().middle[1]

    def other_item(self):
        return self._box(self._script("return box(Main.panel.statusArea.dateMenu);")).middle

    def open_popover(self):
        self.click(*self.item().middle, times=2)

    def own_battery(self):
        return self._box(self._script("return box(Main.panel.statusArea.quickSettings);"))

    def press(self, notification, label):
        """The banner unfolds its buttons below the mouse, and may move while it does."""
        wait_for(self._banner, "the banner")
        wanted = json.dumps(label)

        def gone():
            found = self._script(
                f"""const buttons = all(Main.messageTray._bannerBin).filter(a => a instanceof St.Button && a.mapped);
                    const found = buttons.filter(b => b.label === {wanted} || texts(b).includes({wanted}))[0];
                    if (!found || !box(found)) return null;
                    const [x, y, width, height] = box(found);
                    const at = global.stage.get_actor_at_pos(Clutter.PickMode.REACTIVE, x + width / 2, y + height / 2);
                    return found.contains(at) ? [x, y, width, height] : null;"""
            )
            if found:
                self.click(*self._box(found).middle)
            elif banner := self._banner():
                x, y = banner.middle
                self.move(x, y - 1)
                self.move(x, y)
            return all(each.title != notification.title for each in self.notifications())

        wait_for(gone, f"the end of the notification with the button {label}")

    def _banner(self):
        found = self._script("const b = Main.messageTray._banner; return b?.mapped ? box(b.actor ?? b) : null;")
        return self._box(found) if found else None

    def clear_notifications(self):
        self._script(
            "Main.messageTray.getSources().forEach(s => [...s.notifications].forEach(n => n.destroy())); return 1;"
        )

    def set_dark(self, dark):
        self._set(INTERFACE, "color-scheme", "prefer-dark" if dark else "default")

    def set_accent(self, number):
        if self._version < 47:
            raise CannotBe("GNOME has accents from 47 on")
        name = list(ACCENTS)[number]
        self._set(INTERFACE, "accent-color", name)
        return ACCENTS[name]

    def set_text_size(self, factor):
        self._set(INTERFACE, "text-scaling-factor", str(factor))

    def set_scale(self, factor):
        serial, monitors, _, _ = self.call(DISPLAYS, "/org/gnome/Mutter/DisplayConfig", DISPLAYS, "GetCurrentState")
        (connector, *_), modes, _ = monitors[0]
        mode = next(each for each in modes if each[6].get("is-current"))
        possible = max(scale for scale in mode[5] if scale <= factor)
        monitor = (0, 0, possible, 0, True, [(connector, mode[0], {})])
        temporary = 1
        self.call(
            DISPLAYS,
            "/org/gnome/Mutter/DisplayConfig",
            DISPLAYS,
            "ApplyMonitorsConfig",
            "(uua(iiduba(ssa{sv}))a{sv})",
            serial,
            temporary,
            [monitor],
            {},
        )
        self._factor = self.picture().width / self._script("return global.stage.width;")
        return possible

    def set_do_not_disturb(self, wanted):
        self._set("org.gnome.desktop.notifications", "show-banners", "false" if wanted else "true")

    @staticmethod
    def _set(schema, key, value):
        subprocess.run(["gsettings", "set", schema, key, value], check=True)

    def _answers(self):
        if self._shell.poll() is not None:
            raise NotSeen("GNOME Shell ended")
        try:
            return self._script("return 1;", seconds=5) == 1
        except GLib.Error:
            return False

    def _box(self, values):
        return Box(*(round(value * self._factor) for value in values))

    def _own(self, value):
        """A coordinate of the picture as the shell counts it."""
        return round(value / self._factor)


DESKTOP = Gnome
