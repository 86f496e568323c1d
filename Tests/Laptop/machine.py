# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The laptop as a whole: made of buses, power supplies, services and the control object."""

import ctypes
import os
import shutil
import signal
import subprocess
import sys
import tempfile

from gi.repository import GLib

from buses import Bus
from control import Control
from environment import make_environment
from parts import all_services
from power import PowerSupplies
from processes import LaptopError, dies_with_parent, end_descendants, wait_until
from services import Services

PR_SET_CHILD_SUBREAPER = 36
LOG_LINES = 60


class Laptop:
    """A machine of its own in a temporary folder; everything of it is gone when the context ends."""

    def __init__(self):
        self.folder = tempfile.mkdtemp(prefix="lumora-", dir="/tmp")
        self._signal = None
        self._command = None
        _adopt_orphans()
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            GLib.unix_signal_add(GLib.PRIORITY_HIGH, number, self._on_signal, number)

    def __enter__(self):
        return self

    def __exit__(self, *_error):
        left = end_descendants()
        shutil.rmtree(self.folder, ignore_errors=True)
        if left:
            raise LaptopError(f"could not end the processes {left}")

    def start(self, parts):
        """Start the buses, the parts and the control object."""
        self.environment = make_environment(self.folder)
        self.system = Bus("system", self.folder, self.environment)
        self.session = Bus("session", self.folder, self.environment)
        self.supplies = self._power_supplies()
        self.environment |= {
            "DBUS_SYSTEM_BUS_ADDRESS": self.system.address,
            "DBUS_SESSION_BUS_ADDRESS": self.session.address,
            "UMOCKDEV_DIR": self.supplies.folder,
        }
        self.system.wait()
        self.session.wait()
        services = all_services(self.system, self.session, self.environment, self.folder)
        self.services = Services(services, self.environment, self.folder)
        self.services.choose(parts)
        Control(self)

    def run(self, command):
        """Run a command in the laptop's environment until it ends, and give its exit code."""
        self._command = subprocess.Popen(dies_with_parent(command), env=self.environment)
        _wake_at_the_end_of(self._command)
        while self._command.poll() is None and self._signal is None:
            GLib.MainContext.default().iteration(True)
        if self._signal is not None:
            _end(self._command, self._signal)
            return 128 + self._signal
        code = self._command.returncode
        return code if code >= 0 else 128 - code

    def print_logs(self):
        """Print what each service said last."""
        for name in sorted(os.listdir(self.folder)):
            if name.endswith(".log"):
                with open(f"{self.folder}/{name}", encoding="utf-8", errors="replace") as log:
                    print(f"--- {name}", *log.read().splitlines()[-LOG_LINES:], sep="\n", file=sys.stderr)

    def _power_supplies(self):
        tempfile.tempdir = os.environ["TMPDIR"] = self.environment["TMPDIR"]
        supplies = PowerSupplies()
        supplies.reset()
        return supplies

    def _on_signal(self, number):
        self._signal = number
        if self._command is None:  # still starting
            self.__exit__()
            os._exit(128 + number)
        return GLib.SOURCE_CONTINUE


def _adopt_orphans():
    ctypes.CDLL(None, use_errno=True).prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)


def _wake_at_the_end_of(child):
    descriptor = os.pidfd_open(child.pid)
    GLib.unix_fd_add_full(GLib.PRIORITY_DEFAULT, descriptor, GLib.IO_IN, lambda *_: GLib.SOURCE_REMOVE)


def _end(child, number):
    child.send_signal(number)
    try:
        wait_until(lambda: child.poll() is not None, "end of the command")
    except LaptopError:
        child.kill()
        child.wait()
