# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Proves that the laptop does what it says, with the real daemons.

Run as: laptop -- /usr/bin/python3 self_test.py
"""

# pylint: disable=wildcard-import,unused-wildcard-import
import sys
import unittest

sys.dont_write_bytecode = True

from self_test_leaving import *  # noqa: E402,F403
from self_test_power import *  # noqa: E402,F403
from self_test_services import *  # noqa: E402,F403

if __name__ == "__main__":
    unittest.main()
