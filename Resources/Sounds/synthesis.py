# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What the sounds are built from. A sound, and a curve that steers one, is a list with a value for each sample."""

import cmath
import itertools
import math
import random

RATE = 48000
PERIOD = 4096


def samples(seconds):
    """How many samples that is."""
    return round(seconds * RATE)


def curve(*points):
    """From one (seconds, value) to the next, leaving and arriving gently; it lasts until the last point."""
    values = []
    for (start, first), (end, last) in itertools.pairwise(points):
        steps = samples(end) - samples(start)
        values += [last + (first - last) * (0.5 + 0.5 * math.cos(math.pi * step / steps)) for step in range(steps)]
    return values


def steady(seconds, value):
    """One value all the time."""
    return [value] * samples(seconds)


def wave(seconds, hertz, middle, depth):
    """A value that swings about a middle."""
    return [middle + depth * math.sin(2 * math.pi * hertz * step / RATE) for step in range(samples(seconds))]


def ringing(seconds, hertz, partials):
    """What is struck or plucked: sines, each (ratio to hertz, level, seconds to swell, seconds to die away)."""
    sound = steady(seconds, 0.0)
    for ratio, level, swell, decay in partials:
        dying = cmath.exp((2j * math.pi * hertz * ratio - 1 / decay) / RATE)
        unswollen = dying * math.exp(-1 / (swell * RATE))
        whole = missing = complex(level)
        for step in range(len(sound)):
            sound[step] += (whole - missing).imag
            whole *= dying
            missing *= unswollen
    return shaped(sound, curve((0, 1), (seconds * 2 / 3, 1), (seconds, 0)))


def voice(pitch, levels):
    """What is sung or blown: harmonics of these levels over a curve of hertz."""
    period = [
        sum(level * math.sin(2 * math.pi * number * step / PERIOD) for number, level in enumerate(levels, 1))
        for step in range(PERIOD)
    ]
    period.append(period[0])
    sound, phase = [], 0.0
    for hertz in pitch:
        step = int(phase)
        sound.append(period[step] + (period[step + 1] - period[step]) * (phase - step))
        phase = (phase + hertz * PERIOD / RATE) % PERIOD
    return sound


def noise(seconds, seed):
    """White noise, the same each time for the same seed."""
    source = random.Random(seed)
    return [source.uniform(-1, 1) for _ in range(samples(seconds))]


def band_pass(sound, centre, sharpness):
    """What is near a curve of hertz, and nothing of the rest: a state-variable filter, trapezoidal rule."""
    passed, first, second = [], 0.0, 0.0
    damping = 1 / sharpness
    for value, hertz in zip(sound, centre):
        gain = math.tan(math.pi * hertz / RATE)
        band = (first + gain * (value - second)) / (1 + gain * (gain + damping))
        low = second + gain * band
        first, second = 2 * band - first, 2 * low - second
        passed.append(damping * band)
    return passed


def shaped(sound, *curves):
    """The sound with its loudness steered by curves; it lasts as long as the shortest."""
    for steering in curves:
        sound = [value * level for value, level in zip(sound, steering)]
    return sound


def mixed(*parts):
    """Several sounds together, each (seconds to wait, level, sound)."""
    together = [0.0] * max(samples(wait) + len(sound) for wait, _, sound in parts)
    for wait, level, sound in parts:
        for step, value in enumerate(sound, samples(wait)):
            together[step] += level * value
    return together


def finished(sound):
    """The sound without what is too low to hear, from silence to silence."""
    above, before, level = [], 0.0, 0.0
    keep = math.exp(-2 * math.pi * 20 / RATE)
    for value in sound:
        level = keep * (level + value - before)
        before = value
        above.append(level)
    length = len(sound) / RATE
    edges = curve((0, 0), (0.002, 1), (length - 0.005, 1), (length, 0))
    # Vorbis smears a bare edge, and a sound server may swallow the first milliseconds.
    return steady(0.02, 0.0) + shaped(above, edges) + steady(0.03, 0.0)
