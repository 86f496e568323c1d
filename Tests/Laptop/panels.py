# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Panels with a tray: Xfce's on the X display, and Waybar on a Wayland compositor without a screen."""

import glob
import json
import os

from services import BusService, FileService

WATCHER = "org.kde.StatusNotifierWatcher"
XFCE_PANEL = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="{dark}"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="length" type="uint" value="100"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="size" type="uint" value="28"/>
      <property name="icon-size" type="uint" value="22"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
        <value type="int" value="2"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
      <property name="style" type="uint" value="0"/>
    </property>
    <property name="plugin-2" type="string" value="systray"/>
  </property>
</channel>
"""
SWAY = """output * resolution 1280x800 background #204060 solid_color
exec touch {ready}
"""
WAYBAR = {"layer": "top", "position": "top", "height": 28, "modules-right": ["tray"], "tray": {"icon-size": 22}}


def panel_services(session, environment):
    """Every panel that the laptop can have, and what it stands on."""
    configuration = environment["XDG_CONFIG_HOME"]
    runtime = environment["XDG_RUNTIME_DIR"]
    return [
        _xfconf(session, configuration),
        _xfce_panel(session),
        _sway(configuration, runtime, environment),
        _waybar(session, configuration),
    ]


def _write(path, text):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)
    return path


def _xfconf(session, configuration):
    _write(f"{configuration}/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml", XFCE_PANEL.format(dark="true"))
    program = next(iter(glob.glob("/usr/lib/*/xfce4/xfconf/xfconfd")), "xfconfd")
    return BusService("xfconf", [program], session, "org.xfce.Xfconf", "/org/xfce/Xfconf")


def _xfce_panel(session):
    return BusService(
        "panel",
        ["xfce4-panel", "--disable-wm-check"],
        session,
        WATCHER,
        "/StatusNotifierWatcher",
        needs=["windows", "xfconf"],
    )


def _sway(configuration, runtime, environment):
    ready = f"{runtime}/sway-is-ready"
    file = _write(f"{configuration}/sway/config", SWAY.format(ready=ready))

    def is_ready(path):
        environment.update(session, WAYLAND_DISPLAY="wayland-1")
        return os.path.exists(path) and os.path.exists(f"{runtime}/wayland-1")

    session = {"SWAYSOCK": f"{runtime}/sway.sock", "XDG_SESSION_TYPE": "wayland", "XDG_CURRENT_DESKTOP": "sway"}
    headless = session | {"WLR_BACKENDS": "headless", "WLR_LIBINPUT_NO_DEVICES": "1", "WLR_RENDERER": "pixman"}
    # What a killed one left it would leave alone, and open its socket elsewhere.
    clear = 'rm -f "$SWAYSOCK" "$0"; exec sway --config "$1"'
    return FileService("sway", ["sh", "-c", clear, ready, file], ready, is_ready, extra=headless)


def _waybar(session, configuration):
    file = _write(f"{configuration}/waybar/config", json.dumps(WAYBAR))
    return BusService(
        "waybar", ["waybar", "--config", file], session, WATCHER, "/StatusNotifierWatcher", needs=["sway"]
    )
