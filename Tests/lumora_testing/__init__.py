# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What tests and benchmarks share: the program as it runs, and the simulated laptop as its user sees it.

Whatever runs in the laptop finds this package; elsewhere PYTHONPATH names the folder above.
"""
