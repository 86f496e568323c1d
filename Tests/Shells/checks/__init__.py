# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What is looked at on every desktop."""

from checks import item, looks, menu, output, popover, reminders, settings

# The title of a check and the check by its name, in the order in which they are done and told.
CHECKS = {
    name.replace("_", "-"): (each.line, each)
    for part in (item, popover, menu, settings, looks, reminders, output)
    for name, each in vars(part).items()
    if hasattr(each, "line")
}
