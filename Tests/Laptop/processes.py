# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The laptop's processes: starting them, waiting for them, and leaving none behind."""

import os
import signal
import subprocess
import time

from gi.repository import GLib

POLL_MS = 4
# Long enough for a machine that has ten times as much to do; whoever waits sees at once when it is over.
PATIENCE_SECONDS = 60


class LaptopError(Exception):
    """Something that the laptop could not do, told in one line."""


def wait_until(condition, what, seconds=PATIENCE_SECONDS):
    """Run the main loop until the condition holds, or fail when the time is over."""
    deadline = time.monotonic() + seconds
    tick = GLib.timeout_add(POLL_MS, lambda: True)
    try:
        while not condition():
            if time.monotonic() > deadline:
                raise LaptopError(f"{what}: not within {seconds} s")
            GLib.MainContext.default().iteration(True)
    finally:
        GLib.source_remove(tick)


class Process:
    """A child that dies with the laptop, in a session of its own, with its output in a log file."""

    def __init__(self, name, arguments, environment, log):
        self.name = name
        with open(log, "ab") as output:
            self._child = subprocess.Popen(
                dies_with_parent(arguments),
                env=environment,
                stdin=subprocess.DEVNULL,
                stdout=output,
                stderr=subprocess.STDOUT,
                start_new_session=True,
            )

    def running(self):
        """Whether the process has not ended."""
        return self._child.poll() is None

    def signal(self, number):
        """Send a signal to the process, if it still runs."""
        if self.running():
            self._child.send_signal(number)

    def end(self, number):
        """End the process with a signal and wait for its death; a stopped one is woken up to die."""
        self.signal(number)
        self.signal(signal.SIGCONT)
        wait_until(lambda: not self.running(), f"{self.name} to end")


def dies_with_parent(arguments):
    """The command that runs `arguments` and has the kernel kill it when the laptop is gone."""
    return ["setpriv", "--pdeathsig", "KILL", "--", *arguments]


def end_descendants():
    """End every process below this one: first politely, then by force."""
    for number, seconds in ((signal.SIGTERM, 2), (signal.SIGKILL, PATIENCE_SECONDS)):
        for pid in _descendants():
            _send(pid, number)
            _send(pid, signal.SIGCONT)
        deadline = time.monotonic() + seconds
        while _reap() and time.monotonic() < deadline:
            time.sleep(POLL_MS / 1000)
    return _descendants()


def _reap():
    while True:
        try:
            if os.waitpid(-1, os.WNOHANG)[0] == 0:
                return True
        except ChildProcessError:
            return False


def _send(pid, number):
    try:
        os.kill(pid, number)
    except ProcessLookupError:
        pass


def _descendants():
    parents = dict(_parents())
    found, level = [], [os.getpid()]
    while level:
        level = [pid for pid, parent in parents.items() if parent in level]
        found += level
    return found


def _parents():
    for entry in os.listdir("/proc"):
        if entry.isdigit():
            try:
                with open(f"/proc/{entry}/stat", encoding="utf-8", errors="replace") as stat:
                    yield int(entry), int(stat.read().rpartition(")")[2].split()[1])
            except (FileNotFoundError, ProcessLookupError):
                pass
