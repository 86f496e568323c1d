# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What the unit of systemd opens for writing is there before Lumora starts, also in a new account: service.py UNIT"""

import pathlib
import shlex
import subprocess
import sys
import tempfile
import unittest

UNIT = pathlib.Path(sys.argv.pop())


def settings(name, home):
    """The values of that setting, for a user with that home."""
    return [
        line.split("=", 1)[1].replace("%h", home)
        for line in UNIT.read_text().splitlines()
        if line.startswith(name + "=")
    ]


class Service(unittest.TestCase):
    """The unit in an account that has nothing yet."""

    def test_has_its_folders_when_it_starts(self):
        with tempfile.TemporaryDirectory() as home:
            for command in settings("ExecStartPre", home):
                # Only those with a plus run outside of the unit's confinement, where folders can be made.
                self.assertTrue(command.startswith("+"), command)
                for _ in range(2):
                    subprocess.check_call(shlex.split(command[1:]), umask=0o077)
            opened = [folder for line in settings("ReadWritePaths", home) for folder in line.split()]
            self.assertEqual(len(opened), 2)
            # One that must exist would end that command, too: systemd opens it for each.
            self.assertEqual({folder[0] for folder in opened}, {"-"})
            folders = [pathlib.Path(folder[1:]) for folder in opened]
            for folder in folders:
                self.assertTrue(folder.is_dir(), folder)
                self.assertEqual(folder.stat().st_mode & 0o777, 0o700, folder)

    def test_is_one_that_systemd_understands(self):
        with tempfile.TemporaryDirectory() as folder:
            # A program that exists in the place of one that need not be installed.
            unit = pathlib.Path(folder) / "lumora.service"
            unit.write_text(UNIT.read_text().replace("/usr/bin/lumora", "/bin/true"))
            told = subprocess.run(
                ["systemd-analyze", "verify", "--user", "--man=no", unit],
                text=True,
                capture_output=True,
                env={"PATH": "/usr/bin:/bin", "XDG_RUNTIME_DIR": folder},
            )
            self.assertEqual([line for line in told.stderr.splitlines() if unit.name in line], [])


if __name__ == "__main__":
    unittest.main(verbosity=2)
