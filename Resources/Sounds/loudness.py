# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""How loud a sound is to the ear, by ITU-R BS.1770-4."""

import itertools
import math

from synthesis import RATE

# The two filters at 48 kHz, as (b0, b1, b2, a1, a2): the head's shadow, then the ear's deafness to the low.
FILTERS = (
    (1.53512485958697, -2.69169618940638, 1.19839281085285, -1.69065929318241, 0.73248077421585),
    (1.0, -2.0, 1.0, -1.99004745483398, 0.99007225036621),
)
STEP = RATE // 100
STEPS_IN_WINDOW = 40


def weighted(sound):
    """The sound as the ear weighs it."""
    for b0, b1, b2, a1, a2 in FILTERS:
        filtered, first, second = [], 0.0, 0.0
        for value in sound:
            result = b0 * value + first
            first = b1 * value - a1 * result + second
            second = b2 * value - a2 * result
            filtered.append(result)
        sound = filtered
    return sound


def loudness(sound):
    """LUFS of the loudest 400 ms of one channel; a shorter sound counts as followed by silence."""
    squares = [value * value for value in weighted(sound)]
    steps = [sum(squares[start : start + STEP]) for start in range(0, len(squares), STEP)]
    steps += [0.0] * (STEPS_IN_WINDOW - len(steps))
    sums = [0.0, *itertools.accumulate(steps)]
    loudest = max(end - start for start, end in zip(sums, sums[STEPS_IN_WINDOW:]))
    return -0.691 + 10 * math.log10(loudest / (STEP * STEPS_IN_WINDOW))
