# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The parts of the laptop: which programs they are and how they are started."""

import itertools
import json
import os
import socket

from gi.repository import GLib

from buses import call
from panels import panel_services
from services import BusService, FileService

PARTS = ("upower", "profiles", "logind", "permissions", "notifications", "sound", "panel")
HERE = os.path.dirname(os.path.abspath(__file__))
DBUSMOCK = ["/usr/bin/python3", "-m", "dbusmock", "--template"]
# The daemon asks polkit by the one name or, since it has both, by the other.
PROFILE_ACTIONS = [
    f"{name}.{action}"
    for name in ("net.hadess.PowerProfiles", "org.freedesktop.UPower.PowerProfiles")
    for action in ("switch-profile", "hold-profile")
]
DUNST_CONFIGURATION = """[global]
    origin = top-left
    offset = 0x60
    width = 300
    height = 60
    notification_limit = 0
    font = Sans 8
    format = "%s"
    sort = no
    icon_position = off
    ellipsize = end
    show_age_threshold = -1
    show_indicators = no
    stack_duplicates = no
    idle_threshold = 0
    mouse_right_click = close_current
    dmenu = /usr/bin/grep -m 1 -F -f {choice}
[urgency_low]
    timeout = 0
[urgency_normal]
    timeout = 0
[urgency_critical]
    timeout = 0
"""


def all_services(system, session, environment, folder):
    """Every service that the laptop can have."""
    return [
        _display(environment, folder),
        _windows(folder),
        _polkit(system),
        _upower(system, folder),
        _profiles(system),
        _logind(system),
        _permissions(session, folder),
        _notifications(session, folder),
        _sound(folder),
        *panel_services(session, environment),
    ]


def choice_file(folder):
    """The file that names the line which is to be chosen in dunst's menu of actions."""
    return f"{folder}/choice"


def notifications_mock(session, capabilities):
    """A notification server with the capabilities that are given, in the place of dunst."""
    parameters = json.dumps({"capabilities": " ".join(capabilities)})
    return BusService(
        "notifications-mock",
        [*DBUSMOCK, f"{HERE}/notifications_template.py", "-p", parameters],
        session,
        "org.freedesktop.Notifications",
        "/org/freedesktop/Notifications",
    )


def _display(environment, folder):
    file = f"{folder}/display"
    # One that no other laptop takes, also not while this one's is being killed and started again.
    numbers = itertools.count(100 + os.getpid() % 30000)
    display = next(number for number in numbers if not os.path.exists(f"/tmp/.X11-unix/X{number}"))

    def is_ready(path):
        with open(path, encoding="ascii") as number:
            ready = number.read().endswith("\n")
        if ready:
            environment["DISPLAY"] = f":{display}"
        return ready

    # As many more pixels as windows draw for each of theirs.
    scale = int(os.environ.get("GDK_SCALE", "1"))
    screen = f"{1280 * scale}x{1024 * scale}x24"
    # The server writes its number to a descriptor; the shell opens the file on it. Keys do not repeat (-r): on a
    # busy machine one may stay down for long.
    server = f'exec Xvfb :{display} -displayfd 3 -screen 0 {screen} -nolisten tcp -noreset -r 3>"$0"'
    return FileService(
        "display", ["/bin/sh", "-c", server, file], file, lambda path: os.path.exists(path) and is_ready(path)
    )


def _windows(folder):
    file = f"{folder}/windows"
    return FileService("windows", ["openbox", "--startup", f"touch {file}"], file, needs=["display"])


def _polkit(system):
    path = "/org/freedesktop/PolicyKit1/Authority"

    def allow():
        call(
            system.connection,
            "org.freedesktop.PolicyKit1",
            path,
            "org.freedesktop.DBus.Mock",
            "SetAllowed",
            GLib.Variant("(as)", (PROFILE_ACTIONS,)),
        )

    return BusService("polkit", [*DBUSMOCK, "polkitd"], system, "org.freedesktop.PolicyKit1", path, on_ready=allow)


def _upower(system, folder):
    history = f"{folder}/upower"
    os.makedirs(history)
    return BusService(
        "upower",
        ["/usr/libexec/upowerd", "--verbose"],
        system,
        "org.freedesktop.UPower",
        "/org/freedesktop/UPower",
        after=["logind"],
        extra={"UPOWER_HISTORY_DIR": history},
        sees_test_bed=True,
    )


def _profiles(system):
    # The test bed knows who listens to it by the numbers of their descriptors, so two daemons must not share any.
    command = [
        "/bin/bash",
        "-c",
        'for fd in {3..63}; do eval "exec $fd</dev/null"; done; exec "$0" "$@"',
        "/usr/libexec/power-profiles-daemon",
        "--verbose",
    ]
    return BusService(
        "profiles",
        command,
        system,
        "net.hadess.PowerProfiles",
        "/net/hadess/PowerProfiles",
        needs=["polkit"],
        sees_test_bed=True,
    )


def _logind(system):
    return BusService(
        "logind", [*DBUSMOCK, f"{HERE}/logind_template.py"], system, "org.freedesktop.login1", "/org/freedesktop/login1"
    )


def _permissions(session, folder):
    return BusService(
        "permissions",
        ["/usr/libexec/xdg-permission-store"],
        session,
        "org.freedesktop.impl.portal.PermissionStore",
        "/org/freedesktop/impl/portal/PermissionStore",
        extra={"XDG_DATA_HOME": f"{folder}/permissions"},
    )


def _notifications(session, folder):
    configuration = f"{folder}/dunstrc"
    with open(configuration, "w", encoding="utf-8") as file:
        file.write(DUNST_CONFIGURATION.format(choice=choice_file(folder)))
    return BusService(
        "notifications",
        ["dunst", "-config", configuration],
        session,
        "org.freedesktop.Notifications",
        "/org/freedesktop/Notifications",
        needs=["windows"],
    )


def _sound(folder):
    path = f"{folder}/pulse"
    state = f"{folder}/pulse-state"
    os.makedirs(state, mode=0o700)
    command = [
        "pulseaudio",
        "-n",
        "--daemonize=no",
        "--use-pid-file=no",
        "--exit-idle-time=-1",
        "--disable-shm=yes",
        "--realtime=no",
        "--high-priority=no",
        "--log-level=debug",
        "--log-target=stderr",
        "-L",
        f"module-native-protocol-unix socket={path} auth-anonymous=1",
        "-L",
        "module-null-sink",
    ]
    return FileService("sound", command, path, _accepts, extra={"PULSE_RUNTIME_PATH": state, "PULSE_STATE_PATH": state})


def _accepts(path):
    with socket.socket(socket.AF_UNIX) as client:
        try:
            client.connect(path)
        except OSError:
            return False
    return True
