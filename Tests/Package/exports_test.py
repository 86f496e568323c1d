# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What the program and its modules offer to each other: exports_test.py BUNDLE"""

import pathlib
import subprocess
import sys
import unittest

BUNDLE = pathlib.Path(sys.argv.pop())
MODULES = {"lumora_views.so": "makeLumoraViews", "lumora_icon.so": "lumoraDrawTrayIcon"}


def symbols(name, which):
    """The symbols that it has for others, or wants from them."""
    command = ["nm", "--dynamic", "--just-symbols", which, BUNDLE / name]
    return set(subprocess.run(command, check=True, capture_output=True, text=True).stdout.split())


def ours(names):
    """Those that are of Lumora's namespace. The others are of libraries that share theirs."""
    return {name for name in names if "6lumora" in name}


class Exports(unittest.TestCase):
    """The other's need, and nothing else."""

    def test_a_module_exports_what_the_program_calls(self):
        for module, function in MODULES.items():
            self.assertEqual(symbols(module, "--defined-only"), {function})

    def test_the_program_exports_what_the_modules_call(self):
        needed = set().union(*(ours(symbols(module, "--undefined-only")) for module in MODULES))
        self.assertGreater(len(needed), 20)
        self.assertEqual(ours(symbols("lumora", "--defined-only")), needed)


if __name__ == "__main__":
    unittest.main(verbosity=2)
