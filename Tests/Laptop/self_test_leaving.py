# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What is left of a laptop when it has ended, and how it ends."""

import os
import subprocess
import tempfile
import unittest

from lumora_testing.remote import PATIENCE_SECONDS, wait_for


class LeavingTest(unittest.TestCase):
    """A laptop of its own inside this one: it hands the exit code on and leaves nothing behind."""

    program = os.path.join(os.path.dirname(os.path.abspath(__file__)), "laptop")

    def run_laptop(self, script, parts="upower,notifications,sound", command=None, **options):
        """Run a shell script, or another command, in a new laptop."""
        arguments = [self.program, "--parts", parts, "--", *(command or ["/bin/sh", "-c", script])]
        return subprocess.Popen(arguments, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, **options)

    def assert_nothing_left(self, folder):
        """No process speaks of the folder, and the folder is gone."""
        wait_for(lambda: not processes_of(folder), what=f"no process of {folder}")
        self.assertFalse(os.path.exists(folder))

    def test_exit_code_and_logs(self):
        script = 'dirname "$HOME"; setsid sleep 1000 & test -z "$LD_PRELOAD"; exit $((7 + $?))'
        laptop = self.run_laptop(script)
        output, errors = laptop.communicate(timeout=PATIENCE_SECONDS)
        self.assertEqual(laptop.returncode, 7)
        self.assertIn("--- upower.log", errors)
        self.assert_nothing_left(output.strip())

    def test_silence_on_success(self):
        laptop = self.run_laptop('dirname "$HOME"')
        output, errors = laptop.communicate(timeout=PATIENCE_SECONDS)
        self.assertEqual((laptop.returncode, errors), (0, ""))
        self.assert_nothing_left(output.strip())

    def test_terminated(self):
        laptop = self.run_laptop('dirname "$HOME"; exec sleep 1000')
        folder = laptop.stdout.readline().strip()
        self.assertTrue(processes_of(folder))
        laptop.terminate()
        laptop.communicate(timeout=PATIENCE_SECONDS)
        self.assertEqual(laptop.returncode, 128 + 15)
        self.assert_nothing_left(folder)

    def test_terminated_while_starting(self):
        with tempfile.TemporaryDirectory() as folder:
            write_program(f"{folder}/dunst", f"#!/bin/sh\necho $HOME > {folder}/home\nexec sleep 1000\n")
            laptop = self.run_laptop("exit 0", env={**os.environ, "PATH": f"{folder}:{os.environ['PATH']}"})
            home = wait_for(lambda: read(f"{folder}/home").strip(), what="dunst")
            laptop.terminate()
            laptop.communicate(timeout=PATIENCE_SECONDS)
        self.assertEqual(laptop.returncode, 128 + 15)
        self.assert_nothing_left(os.path.dirname(home))

    def test_killed(self):
        laptop = self.run_laptop('dirname "$HOME"; exec sleep 1000')
        folder = laptop.stdout.readline().strip()
        laptop.kill()
        laptop.communicate(timeout=PATIENCE_SECONDS)
        wait_for(lambda: not processes_of(folder), what=f"no process of {folder}")
        subprocess.run(["rm", "-r", folder], check=True)

    def test_a_part_that_cannot_start(self):
        with tempfile.TemporaryDirectory() as folder:
            write_program(f"{folder}/dunst", "#!/bin/sh\necho no colours left\nexit 1\n")
            path = f"{folder}:{os.environ['PATH']}"
            laptop = self.run_laptop("exit 0", env={**os.environ, "PATH": path})
            _, errors = laptop.communicate(timeout=PATIENCE_SECONDS)
        self.assertEqual(laptop.returncode, 70)
        self.assertIn("no colours left", errors)
        self.assertEqual(errors.splitlines()[-1], "laptop: notifications: ended while starting")

    def test_a_command_that_is_not_there(self):
        laptop = self.run_laptop("", parts="logind", command=["/no/such/program"])
        laptop.communicate(timeout=PATIENCE_SECONDS)
        self.assertEqual(laptop.returncode, 127)

    def test_an_unknown_part(self):
        laptop = self.run_laptop("exit 0", parts="upower,teapot")
        _, errors = laptop.communicate(timeout=PATIENCE_SECONDS)
        self.assertNotEqual(laptop.returncode, 0)
        self.assertIn("teapot", errors)


def write_program(path, text):
    """Write a script that can be run."""
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)
    os.chmod(path, 0o755)


def read(path):
    """What a file holds, nothing if it is not there."""
    try:
        with open(path, encoding="utf-8") as file:
            return file.read()
    except FileNotFoundError:
        return ""


def processes_of(folder):
    """The processes whose environment or command line names a folder."""
    found = []
    for entry in filter(str.isdigit, os.listdir("/proc")):
        try:
            with open(f"/proc/{entry}/environ", "rb") as environ, open(f"/proc/{entry}/cmdline", "rb") as command:
                if folder.encode() in environ.read() + command.read():
                    found.append(int(entry))
        except OSError:
            pass
    return found
