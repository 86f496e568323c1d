# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The programs that are compared, and what each needs to run in the simulated laptop."""

import dataclasses
import os
import pathlib
import re
import subprocess
from collections.abc import Callable

from Laptop.environment import PRELOAD
from lumora_testing.bundle import forget, windows
from lumora_testing.month import write_history
from lumora_testing.remote import RemoteLaptop, wait_for
from lumora_testing.screen import click, key, x_screen

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
LUMORA = ROOT / "Lumora.app" / "lumora"
MONITOR = ROOT / "build" / "monitor.so"
PANEL_HEIGHT = 28


def nothing():
    """For programs that need nothing to be done."""


@dataclasses.dataclass
class Program:
    """One program in one situation: how it is started, and what is done before that and once its item is there."""

    name: str
    command: list
    preload: str = ""
    prepare: Callable[[], None] = nothing
    use: Callable[[], None] = nothing

    def version(self):
        """Lumora's own version, or that of the Debian package, which has the program's name."""
        if self.command[0] == LUMORA:
            return re.search(r"project\(Lumora VERSION (\S+)", (ROOT / "CMakeLists.txt").read_text())[1]
        return subprocess.check_output(["dpkg-query", "-W", "-f", "${Version}", self.command[0]], text=True)

    def start(self, log, mark):
        """Start it with `mark` in the environment of all its processes, its output in the open file `log`."""
        environment = os.environ | mark | ({"LD_PRELOAD": self.preload} if self.preload else {})
        return subprocess.Popen(self.command, env=environment, stdout=log, stderr=log)


def _fill():
    forget()
    write_history()


def _open_and_close():
    left, top, right, bottom = x_screen().item_in_panel(PANEL_HEIGHT)
    click((left + right) // 2, (top + bottom) // 2)
    wait_for(lambda: windows("Lumora"), "the popover")
    key("Escape")
    wait_for(lambda: not windows("Lumora"), "its end")


def _show_xfces_item():
    # It leaves by itself when it was not needed for some minutes.
    RemoteLaptop().start("xfconf")
    subprocess.check_call(
        [
            "xfconf-query",
            "--channel",
            "xfce4-power-manager",
            "--create",
            "--type",
            "bool",
            "--property",
            "/xfce4-power-manager/show-tray-icon",
            "--set",
            "true",
        ]
    )


PROGRAMS = [
    Program("Lumora", [LUMORA], prepare=_fill),
    Program("Lumora, no history yet", [LUMORA], prepare=forget),
    Program("Lumora, popover closed", [LUMORA], prepare=_fill, use=_open_and_close),
    # It reads the battery from sysfs itself.
    Program("cbatticon", ["cbatticon"], preload=PRELOAD),
    Program("mate-power-manager", ["mate-power-manager", "--no-daemon"]),
    Program(
        "xfce4-power-manager", ["xfce4-power-manager", "--no-daemon"], preload=str(MONITOR), prepare=_show_xfces_item
    ),
    Program("lxqt-powermanagement", ["lxqt-powermanagement"]),
]
