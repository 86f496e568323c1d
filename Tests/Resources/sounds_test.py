# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The sounds as people hear them: sounds_test.py SCRIPTS SOUNDS"""

import array
import itertools
import math
import pathlib
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
SOUNDS = pathlib.Path(sys.argv.pop())
SCRIPTS = pathlib.Path(sys.argv.pop())
sys.path.insert(0, str(SCRIPTS))

from loudness import RATE, loudness, peak, weighted  # noqa: E402

NAMES = ["Basso", "Blow", "Bottle", "Frog", "Funk", "Glass", "Hero", "Morse", "Ping", "Pop", "Purr", "Sosumi",
         "Submarine", "Tink"]
FREQUENCIES = [110 * 2 ** (i / 6) for i in range(36)]
SLICES = 8
SLICE_SECONDS = 0.1


def decode(path):
    """The samples of a file, 1.0 being full scale."""
    raw = subprocess.check_output(["oggdec", "--quiet", "--raw", "--output=-", str(path)])
    return [value / 32768 for value in array.array("h", raw)]


def energy(samples, frequency):
    """How much of a frequency there is (Goertzel's algorithm)."""
    turn = 2 * math.cos(math.tau * frequency / RATE)
    one = two = 0.0
    for value in samples:
        one, two = value + turn * one - two, one
    return one * one + two * two - turn * one * two


def character(samples):
    """What tells one sound from another: the decibels of its frequencies, time slice by time slice."""
    size = int(SLICE_SECONDS * RATE)
    padded = samples + [0.0] * (SLICES * size)
    energies = [energy(padded[i * size:(i + 1) * size], frequency)
                for i in range(SLICES) for frequency in FREQUENCIES]
    inaudible = max(energies) / 1e5
    return [10 * math.log10(each + inaudible) for each in energies]


class SoundsTest(unittest.TestCase):
    """Every sound, and all of them together."""

    @classmethod
    def setUpClass(cls):
        cls.sounds = {path.stem: decode(path) for path in sorted(SOUNDS.glob("*.oga"))}

    def test_are_the_fourteen(self):
        self.assertEqual(list(self.sounds), NAMES)

    def test_are_short_and_small(self):
        for name, sound in self.sounds.items():
            self.assertTrue(0.2 <= len(sound) / RATE <= 1.5, name)
            self.assertLess((SOUNDS / f"{name}.oga").stat().st_size, 20_000, name)

    def test_are_ogg_vorbis(self):
        for name in self.sounds:
            start = (SOUNDS / f"{name}.oga").read_bytes()[:35]
            self.assertTrue(start.startswith(b"OggS") and start.endswith(b"\x01vorbis"), name)

    def test_are_equally_loud(self):
        for name, sound in self.sounds.items():
            self.assertAlmostEqual(loudness(sound), -20, delta=0.5, msg=name)

    def test_do_not_clip(self):
        for name, sound in self.sounds.items():
            self.assertLess(peak(sound), 0.89, name)

    def test_do_not_click(self):
        for name, sound in self.sounds.items():
            # 30 dB below full scale: the encoder's own noise before something struck.
            for edge in (sound[:8], sound[-8:]):
                self.assertLess(peak(edge), 0.03, name)
            self.assertLess(abs(sum(sound) / len(sound)), 0.001, name)

    def test_differ_from_each_other(self):
        characters = {name: character(weighted(sound)) for name, sound in self.sounds.items()}
        for one, other in itertools.combinations(characters, 2):
            apart = math.dist(characters[one], characters[other]) / math.sqrt(len(characters[one]))
            self.assertGreater(apart, 6, f"{one} and {other}: {apart:.1f} dB")

    def test_are_always_the_same(self):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.check_call([SCRIPTS / "make_sounds", folder])
            for name in self.sounds:
                self.assertEqual((SOUNDS / f"{name}.oga").read_bytes(),
                                 (pathlib.Path(folder) / f"{name}.oga").read_bytes(), name)


if __name__ == "__main__":
    unittest.main()
