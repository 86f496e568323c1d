# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Services: programs of the laptop that can be stopped, killed, hung and started again."""

import os
import signal

from gi.repository import Gio, GLib

from environment import with_preload
from processes import PATIENCE_SECONDS, LaptopError, Process, wait_until


class Service:
    """One program, and how to see that it serves."""

    def __init__(self, name, command, needs=(), after=(), extra=None, sees_test_bed=False):
        self.name = name
        self.needs = tuple(needs)
        self.after = tuple(after)
        self.process = None
        self._command = command
        self._extra = extra or {}
        self._sees_test_bed = sees_test_bed

    def start(self, environment, folder):
        """Start the program; `ready` tells when it serves."""
        environment = environment | self._extra
        if self._sees_test_bed:
            environment = with_preload(environment)
        self.process = Process(self.name, self._command, environment, f"{folder}/{self.name}.log")

    def running(self):
        """Whether the program runs, hung or not."""
        return self.process is not None and self.process.running()

    def ready(self):
        """Whether the program serves; asked again and again after `start`."""
        raise NotImplementedError

    def end(self, number):
        """End the program with a signal and wait until nothing of it is left."""
        if self.process is not None:
            self.process.end(number)


class BusService(Service):
    """A service that serves when it owns a bus name and answers a call."""

    def __init__(self, name, command, bus, bus_name, path, on_ready=None, **others):
        super().__init__(name, command, **others)
        self._bus = bus
        self._bus_name = bus_name
        self._path = path
        self._on_ready = on_ready
        self._state = None

    def start(self, environment, folder):
        self._state = "starting"
        super().start(environment, folder)

    def ready(self):
        if self._state == "starting" and self._bus.owner(self._bus_name):
            self._state = "asked"
            self._ask()
        if self._state == "answered":
            self._state = "ready"
            if self._on_ready:
                self._on_ready()
        return self._state == "ready"

    def end(self, number):
        super().end(number)
        wait_until(lambda: not self._bus.owner(self._bus_name), f"{self._bus_name} to be free")

    def _ask(self):
        self._bus.connection.call(
            self._bus_name,
            self._path,
            "org.freedesktop.DBus.Properties",
            "GetAll",
            GLib.Variant("(s)", (self._bus_name,)),
            None,
            Gio.DBusCallFlags.NO_AUTO_START,
            PATIENCE_SECONDS * 1000,
            None,
            self._on_answer,
        )

    def _on_answer(self, connection, result):
        try:
            connection.call_finish(result)
        except GLib.Error as error:
            if not Gio.DBusError.is_remote_error(error):
                return
        self._state = "answered"


class FileService(Service):
    """A service that serves when a file has appeared and, if asked for, holds something."""

    def __init__(self, name, command, file, is_ready=os.path.exists, **others):
        super().__init__(name, command, **others)
        self._file = file
        self._is_ready = is_ready

    def start(self, environment, folder):
        if os.path.exists(self._file):
            os.unlink(self._file)
        super().start(environment, folder)

    def ready(self):
        return self._is_ready(self._file)


class Services:
    """All services of the laptop, by name; those that were chosen are the ones that `reset` wants running."""

    def __init__(self, services, environment, folder):
        self._all = {service.name: service for service in services}
        self._environment = environment
        self._folder = folder
        self._chosen = []
        self._hung = set()

    def choose(self, names):
        """Choose services, with what they need, and start them all, side by side where they can."""
        for name in names:
            self._choose(name)
        self._start(self._chosen)

    def chosen(self, name):
        """Whether a service belongs to this laptop."""
        return name in self._chosen

    def running(self, name):
        """Whether a service runs, hung or not."""
        return self._find(name).running()

    def awake(self, name):
        """Whether a service runs and is not hung."""
        return self.running(name) and name not in self._hung

    def start(self, name):
        """Start a service that does not run, with what it needs, and wait until it serves."""
        self._choose(name)
        self._start([each for each in self._with_needs(name) if not self._find(each).running()])

    def run_besides(self, service):
        """Start a service that is not one of the laptop's parts, and wait until it serves."""
        service.start(self._environment, self._folder)
        wait_until(lambda: self._serves(service), f"start of {service.name}")

    def end(self, name, number):
        """End a service with a signal."""
        self._find(name).end(number)
        self._hung.discard(name)

    def hang(self, name):
        """Stop a service in its tracks: it keeps its bus name and answers nothing."""
        self._running_process(name).signal(signal.SIGSTOP)
        self._hung.add(name)

    def wake(self, name):
        """Let a hung service go on."""
        self._running_process(name).signal(signal.SIGCONT)
        self._hung.discard(name)

    def reset(self):
        """Have all the chosen services running."""
        for name in list(self._hung):
            self.wake(name)
        self._start([name for name in self._chosen if not self._find(name).running()])

    def _find(self, name):
        if name not in self._all:
            raise LaptopError(f"no part is called {name}; there are {', '.join(self._all)}")
        return self._all[name]

    def _running_process(self, name):
        if not self._find(name).running():
            raise LaptopError(f"{name} does not run")
        return self._find(name).process

    def _choose(self, name):
        self._chosen += [each for each in self._with_needs(name) if each not in self._chosen]

    def _with_needs(self, name):
        needs = [each for needed in self._find(name).needs for each in self._with_needs(needed)]
        return [*needs, name]

    def _start(self, names):
        waiting, starting = list(names), []

        def all_ready():
            self._move_on(waiting, starting)
            return not waiting and not starting

        wait_until(all_ready, f"start of {', '.join(names)}")

    @staticmethod
    def _serves(service):
        if not service.running():
            raise LaptopError(f"{service.name}: ended while starting")
        return service.ready()

    def _move_on(self, waiting, starting):
        for name in list(starting):
            if self._serves(self._all[name]):
                starting.remove(name)
        for name in list(waiting):
            before = (*self._all[name].needs, *self._all[name].after)
            if not any(other in waiting or other in starting for other in before):
                waiting.remove(name)
                self._all[name].start(self._environment, self._folder)
                starting.append(name)
