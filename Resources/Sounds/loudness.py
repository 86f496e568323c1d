# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""How loud a sound is to an ear: the K-weighting of ITU-R BS.1770-4 at 48 kHz."""

from math import log10

RATE = 48000
WINDOW_SECONDS = 0.4
STEP_SECONDS = 0.05
# b0, b1, b2, a1, a2: the head's shelf and the high-pass of the recommendation's tables 1 and 2.
STAGES = ((1.53512485958697, -2.69169618940638, 1.19839281085285, -1.69065929318241, 0.73248077421585),
          (1.0, -2.0, 1.0, -1.99004745483398, 0.99007225036621))


def weighted(sound):
    """The sound as the ear weighs its frequencies."""
    for b0, b1, b2, a1, a2 in STAGES:
        x1 = x2 = y1 = y2 = 0.0
        filtered = []
        for x in sound:
            y = b0 * x + b1 * x1 + b2 * x2 - a1 * y1 - a2 * y2
            x2, x1, y2, y1 = x1, x, y1, y
            filtered.append(y)
        sound = filtered
    return sound


def loudness(sound):
    """LUFS of the loudest 400 ms; what is shorter counts with the silence after it."""
    squares = [value * value for value in weighted(sound)]
    window, step = int(WINDOW_SECONDS * RATE), int(STEP_SECONDS * RATE)
    loudest = max(sum(squares[start:start + window]) for start in range(0, max(1, len(squares) - window + step), step))
    return -0.691 + 10 * log10(loudest / window)


def peak(sound):
    """The largest sample, 1.0 being full scale."""
    return max(map(abs, sound))
