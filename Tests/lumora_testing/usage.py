# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""A history as a laptop in use leaves it, for pictures."""

import time

MINUTE = 60
WEEK_MINUTES = 7 * 24 * 60
LIMIT, LOW = 80, 24


def week(now):
    """Samples of a week of which the machine was on by day: drained by work, and charged up to the limit."""
    percent, charging, samples = 64.0, False, []
    for minute in range(WEEK_MINUTES, 0, -1):
        moment = now - minute * MINUTE
        hour = time.localtime(moment).tm_hour
        percent += 0.55 if charging else -(0.11 + 0.05 * (hour % 5))
        if percent <= LOW + hour % 7:
            charging = True
        elif percent >= LIMIT:
            charging = False
        if 8 <= hour < 23:
            samples.append({"t": moment, "p": round(percent), "c": charging, "a": charging})
    return samples
