# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The alert sounds: what each name says, in terms of the synthesis."""

from synthesis import band_pass, curve, mixed, noise, ringing, shaped, steady, voice, wave


def glass():
    """A wine glass, struck: a bending rim's partials, each with a fainter one that beats with it."""
    modes = ((1, 1, 0.5), (2.32, 0.6, 0.3), (4.25, 0.3, 0.16), (6.63, 0.15, 0.08), (9.38, 0.06, 0.04))
    rim = [
        (ratio * split, level * share, 0.001, decay)
        for ratio, level, decay in modes
        for split, share in ((1, 1), (1.005, 0.3))
    ]
    return ringing(1.4, 988, rim)


def ping():
    """A small clear bell, all its partials in tune."""
    return ringing(
        0.9, 1568, ((0.5, 0.25, 0.004, 0.25), (1, 1, 0.002, 0.2), (2, 0.35, 0.002, 0.09), (3, 0.12, 0.001, 0.05))
    )


def hero():
    """A fanfare of three brass notes, the last one held."""

    def note(hertz, seconds):
        brass = ringing(seconds, hertz, [(n, 1 / n, 0.008 + 0.006 * n, 2 / n) for n in range(1, 11)])
        return shaped(brass, curve((0, 0), (0.015, 1), (seconds - 0.06, 0.8), (seconds, 0)))

    return mixed((0, 0.8, note(392.0, 0.15)), (0.14, 0.9, note(523.3, 0.15)), (0.28, 1, note(784.0, 0.62)))


def submarine():
    """A low pulse under water, and what the sea gives back of it."""

    def pulse(hertz, overtone):
        pitch = curve((0, hertz), (0.42, hertz * 0.985))
        return shaped(voice(pitch, (1, overtone)), curve((0, 0), (0.03, 1), (0.1, 0.7), (0.42, 0)))

    return mixed((0, 1, pulse(466, 0.15)), (0.5, 0.35, pulse(464, 0.05)), (1, 0.13, pulse(462, 0)))


def funk():
    """A plucked bass and its octave through a filter that opens and shuts."""

    def pluck(hertz, seconds):
        string = voice(steady(seconds, hertz), [1 / n for n in range(1, 41)])
        opening = curve((0, 250), (0.07, 1500), (seconds, 250))
        return shaped(band_pass(string, opening, 3), curve((0, 0), (0.004, 1), (0.08, 0.7), (seconds, 0)))

    return mixed((0, 1, pluck(98.0, 0.2)), (0.19, 0.9, pluck(196.0, 0.34)))


def basso():
    """A low soft horn."""
    horn = voice(wave(0.95, 5, 130.8, 1.2), (0.7, 1, 0.9, 0.5, 0.22, 0.1, 0.04))
    return shaped(horn, curve((0, 0), (0.09, 1), (0.5, 0.8), (0.95, 0)))


def blow():
    """Breath across the end of a pipe: air, and the pipe's resonances in it."""
    air = shaped(noise(1.0, 7), curve((0, 0), (0.25, 1), (0.45, 0.85), (1.0, 0)))
    pipe = [
        (0, level, band_pass(air, steady(1.0, hertz), sharpness))
        for hertz, level, sharpness in ((587, 3, 40), (1174, 2, 40), (1761, 1.2, 40), (2600, 0.25, 0.7))
    ]
    return mixed(*pipe)


def bottle():
    """A bottle struck at its mouth: a hollow thump that sinks a little."""
    body = voice(curve((0, 300), (0.05, 262), (0.45, 256)), (1, 0.06, 0.12))
    tap = band_pass(noise(0.03, 3), steady(0.03, 900), 2)
    return mixed(
        (0, 1, shaped(body, curve((0, 0), (0.006, 1), (0.1, 0.55), (0.45, 0)))),
        (0, 0.9, shaped(tap, curve((0, 0), (0.003, 1), (0.03, 0)))),
    )


def frog():
    """Two croaks, the second one higher."""

    def croak(low, high, seconds):
        throat = voice(curve((0, low), (seconds, high)), [1] * 60)
        mouth = mixed(
            (0, 1, band_pass(throat, curve((0, 800), (seconds, 1150)), 9)),
            (0, 0.7, band_pass(throat, curve((0, 2100), (seconds, 2600)), 12)),
        )
        return shaped(mouth, curve((0, 0), (0.02, 1), (seconds - 0.05, 0.8), (seconds, 0)))

    return mixed((0, 1, croak(60, 74, 0.17)), (0.29, 1, croak(68, 104, 0.22)))


def morse():
    """Three dots on a radio."""

    def dot():
        return shaped(voice(steady(0.08, 830), (1, 0.12, 0.08)), curve((0, 0), (0.01, 1), (0.065, 1), (0.08, 0)))

    return mixed((0, 1, dot()), (0.15, 1, dot()), (0.3, 1, dot()))


def pop():
    """A tiny drop of the pitch, like a bubble's end."""
    bubble = voice(curve((0, 1150), (0.09, 330), (0.2, 300)), (1, 0.1))
    return shaped(bubble, curve((0, 0), (0.006, 1), (0.06, 0.8), (0.15, 0), (0.2, 0)))


def purr():
    """A cat, content: a low hum that flutters."""
    hum = voice(wave(1.3, 1.2, 175, 8), (0.6, 1, 0.7, 0.3, 0.12))
    fur = band_pass(noise(1.3, 11), steady(1.3, 480), 1.5)
    return shaped(
        mixed((0, 1, hum), (0, 1.6, fur)), wave(1.3, 23, 0.55, 0.45), curve((0, 0), (0.3, 1), (0.8, 0.9), (1.3, 0))
    )


def sosumi():
    """Sol and mi on a marimba."""
    bar = ((1, 1, 0.003, 0.24), (3.93, 0.35, 0.002, 0.08), (9.3, 0.08, 0.001, 0.02))
    return mixed((0, 0.9, ringing(0.7, 392.0, bar)), (0.19, 1, ringing(0.8, 329.6, bar)))


def tink():
    """A tiny piece of metal, tapped."""
    return ringing(
        0.3,
        3520,
        ((1, 1, 0.001, 0.06), (1.51, 0.7, 0.001, 0.045), (2.24, 0.4, 0.001, 0.025), (2.93, 0.2, 0.001, 0.015)),
    )


RECIPES = {
    recipe.__name__.capitalize(): recipe
    for recipe in (basso, blow, bottle, frog, funk, glass, hero, morse, ping, pop, purr, sosumi, submarine, tink)
}
