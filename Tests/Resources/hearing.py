# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What can be said of a file of sound by listening to it closely."""

import cmath
import functools
import math
import operator
import struct
import subprocess

OVERSAMPLING = 4
TAPS = 24
FRAME = 1024
LONGEST_SECONDS = 1.5
SLICES = 8
LOWEST_HERTZ = 100
HALF_OCTAVES = 14
# Ten times the power sounds about twice as loud.
STEVENS_EXPONENT = 0.3


def format_of(file):
    """Channels and samples per second of an Ogg Vorbis file, or None for anything else (Vorbis I, 4.2.2)."""
    head = file.read_bytes()[:58]
    if len(head) < 58 or head[:4] != b"OggS" or head[28:35] != b"\x01vorbis":
        return None
    return struct.unpack_from("<BI", head, 39)


def decoded(file):
    """The samples of a file, full scale being 1."""
    raw = subprocess.run(
        ["oggdec", "--quiet", "--raw", "--bits=16", "--output=-", file], capture_output=True, check=True
    ).stdout
    return [value / 32768 for value, in struct.iter_unpack("<h", raw)]


def true_peak(sound):
    """The highest level of the curve through the samples, read at four times as many places."""
    padded = [0.0] * TAPS + sound + [0.0] * TAPS
    return max(
        abs(sum(map(operator.mul, taps, padded[start : start + TAPS])))
        for taps in _interpolators()
        for start in range(len(padded) - TAPS + 1)
    )


def fingerprint(sound, rate):
    """About how loud each half octave is in each slice of the longest time; neighbours share what is between."""
    cells = [[0.0] * (HALF_OCTAVES + 1) for _ in range(SLICES)]
    for start in range(0, len(sound) - FRAME, FRAME // 2):
        heard = cells[int((start + FRAME / 2) / rate / LONGEST_SECONDS * SLICES)]
        for number, power in enumerate(_powers(sound[start : start + FRAME])):
            share, place = math.modf(2 * math.log2(max(1, number * rate / FRAME / LOWEST_HERTZ)))
            if place < HALF_OCTAVES:
                heard[int(place)] += (1 - share) * power
                heard[int(place) + 1] += share * power
    return [power**STEVENS_EXPONENT for cell in cells for power in cell]


def distance(one, other):
    """How different two fingerprints are: 0 for the same at any level, 1 for nothing in common."""
    return 1 - sum(map(operator.mul, one, other)) / math.hypot(*one) / math.hypot(*other)


@functools.cache
def _interpolators():
    """A windowed sinc for each place between two samples, and for the sample itself."""

    def tap(place):
        window = 0.5 + 0.5 * math.cos(2 * math.pi * place / (TAPS + 1))
        return window * (math.sin(math.pi * place) / (math.pi * place) if place else 1.0)

    return [[tap(number - TAPS // 2 + phase / OVERSAMPLING) for number in range(TAPS)] for phase in range(OVERSAMPLING)]


def _powers(frame):
    """The power at each multiple of the frame's frequency."""
    windowed = [value * (0.5 - 0.5 * math.cos(2 * math.pi * place / FRAME)) for place, value in enumerate(frame)]
    return [abs(value) ** 2 for value in _transform(windowed)[: FRAME // 2]]


def _transform(values):
    """The fast Fourier transform of a power of two of values."""
    if len(values) == 1:
        return values
    even, odd = _transform(values[::2]), _transform(values[1::2])
    turned = [value * cmath.exp(-2j * math.pi * place / len(values)) for place, value in enumerate(odd)]
    return [*map(operator.add, even, turned), *map(operator.sub, even, turned)]
