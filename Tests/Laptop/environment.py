# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The environment that the laptop's processes and the command under test see."""

import os
import pathlib

# Where the tests' package is.
PYTHON_PATH = str(pathlib.Path(__file__).resolve().parent.parent)
PRELOAD = "libumockdev-preload.so.0"
FOREIGN = (
    "AT_SPI_BUS_ADDRESS",
    "DBUS_STARTER_ADDRESS",
    "DBUS_STARTER_BUS_TYPE",
    "DESKTOP_SESSION",
    "DISPLAY",
    "GTK_MODULES",
    "LANGUAGE",
    "SESSION_MANAGER",
    "WAYLAND_DISPLAY",
    "WAYLAND_SOCKET",
    "XAUTHORITY",
    "XDG_CURRENT_DESKTOP",
    "XDG_SESSION_ID",
    "XDG_SEAT",
)
HOME_FOLDERS = {
    "XDG_CONFIG_HOME": ".config",
    "XDG_DATA_HOME": ".local/share",
    "XDG_CACHE_HOME": ".cache",
    "XDG_STATE_HOME": ".local/state",
}


def make_environment(folder):
    """The caller's environment without its desktop, with a home and empty user folders below `folder`."""
    environment = {
        name: value
        for name, value in os.environ.items()
        if name not in FOREIGN and not name.startswith(("LC_", "PULSE_"))
    }
    home = f"{folder}/home"
    paths = {"HOME": home, "XDG_RUNTIME_DIR": f"{folder}/run", "TMPDIR": f"{folder}/tmp"}
    paths |= {name: f"{home}/{below}" for name, below in HOME_FOLDERS.items()}
    for path in paths.values():
        os.makedirs(path, mode=0o700, exist_ok=True)
    return (
        without_preload(environment)
        | paths
        | {
            "LC_ALL": "C.UTF-8",
            "LANG": "C.UTF-8",
            "PYTHONPATH": PYTHON_PATH,
            "XDG_DATA_DIRS": "/usr/local/share:/usr/share",
            "XDG_CONFIG_DIRS": "/etc/xdg",
            "XDG_SESSION_TYPE": "x11",
            "GSETTINGS_BACKEND": "memory",
            "GIO_USE_VFS": "local",
            "NO_AT_BRIDGE": "1",
            "CANBERRA_DRIVER": "pulse",
            "PULSE_SERVER": f"unix:{folder}/pulse",
        }
    )


def has_preload(environment):
    """Whether a process with this environment sees the test bed instead of the machine."""
    return PRELOAD in environment.get("LD_PRELOAD", "").split(":")


def with_preload(environment):
    """The environment of a process that is to see the test bed."""
    others = [library for library in environment.get("LD_PRELOAD", "").split(":") if library]
    return environment | {"LD_PRELOAD": ":".join([PRELOAD, *others])}


def without_preload(environment):
    """The environment of a process that is to see the machine, whatever the laptop itself sees."""
    libraries = [library for library in environment.get("LD_PRELOAD", "").split(":") if library]
    rest = {name: value for name, value in environment.items() if name != "LD_PRELOAD"}
    others = ":".join(library for library in libraries if library != PRELOAD)
    return rest | {"LD_PRELOAD": others} if others else rest
