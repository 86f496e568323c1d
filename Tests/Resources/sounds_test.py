# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The sounds of the bundle, and the measures they are judged by: sounds_test.py FOLDER"""

import itertools
import math
import pathlib
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
SOURCES = pathlib.Path(__file__).resolve().parents[2] / "Resources" / "Sounds"
from hearing import decoded, distance, fingerprint, format_of, true_peak  # noqa: E402
from loudness import loudness  # noqa: E402

NAMES = [
    "Basso",
    "Blow",
    "Bottle",
    "Frog",
    "Funk",
    "Glass",
    "Hero",
    "Morse",
    "Ping",
    "Pop",
    "Purr",
    "Sosumi",
    "Submarine",
    "Tink",
]
RATE = 48000
LOUDNESS_LUFS = -18
LARGEST_BYTES = 20000
SMALLEST_DISTANCE = 0.1
SILENCE = 10 ** (-60 / 20)
EDGE = RATE // 1000


def decibel(level):
    """A level relative to full scale."""
    return 20 * math.log10(level)


def sine(hertz, seconds=2.0, phase=0.0):
    """A sine of full scale."""
    return [math.sin(2 * math.pi * hertz * step / RATE + phase) for step in range(round(seconds * RATE))]


class MeasuresTest(unittest.TestCase):
    """The measures themselves."""

    def test_loudness_is_that_of_the_recommendation(self):
        # One channel of a sine of 997 Hz and full scale is at -3.01; the shelf lifts the high by 4 dB; the
        # high-pass has its corner at 38 Hz, with Q = 0.5, and takes 5.6 dB at 40 Hz.
        for hertz, expected in ((997, -3.01), (10000, 0.34), (40, -9.27)):
            self.assertAlmostEqual(loudness(sine(hertz)), expected, delta=0.05)

    def test_loudness_of_a_short_sound_is_spread_over_the_window(self):
        self.assertAlmostEqual(loudness(sine(997, 0.2)), -6.02, delta=0.05)

    def test_loudness_is_that_of_the_loudest_part(self):
        soft = [value / 100 for value in sine(997)]
        self.assertAlmostEqual(loudness(soft + sine(997, 0.5) + soft), -3.01, delta=0.05)

    def test_the_true_peak_lies_between_samples(self):
        sudden = sine(RATE / 4, 0.1, math.pi / 4)
        between = [value * math.sin(math.pi * step / len(sudden)) for step, value in enumerate(sudden)]
        self.assertAlmostEqual(decibel(max(between)), -3.01, delta=0.01)
        self.assertAlmostEqual(decibel(true_peak(between)), 0, delta=0.05)

    def test_a_softer_sound_or_a_semitone_makes_no_other_sound_but_a_fifth_and_a_pause_do(self):
        one = sine(500, 1)
        softer = [value / 10 for value in one]
        paused = sine(500, 0.3) + [0.0] * (RATE * 4 // 10) + sine(500, 0.3)
        for other, is_other in ((softer, False), (sine(530, 1), False), (sine(750, 1), True), (paused, True)):
            apart = distance(fingerprint(one, RATE), fingerprint(other, RATE))
            self.assertEqual(apart > SMALLEST_DISTANCE, is_other, f"{apart} apart")

    def test_a_file_of_another_kind_is_no_vorbis(self):
        self.assertIsNone(format_of(SOURCES / "make_sounds"))


class SoundsTest(unittest.TestCase):
    """What every sound keeps to."""

    @classmethod
    def setUpClass(cls):
        cls.files = sorted(FOLDER.iterdir())
        cls.sounds = {file.stem: decoded(file) for file in cls.files}

    def on_each(self, check):
        """Check every sound in a sub-test of its own."""
        for name, sound in self.sounds.items():
            with self.subTest(name):
                check(sound)

    def test_there_are_just_these(self):
        self.assertEqual([file.name for file in self.files], [f"{name}.oga" for name in NAMES])

    def test_files_are_small_and_ogg_vorbis_of_one_channel(self):
        for file in self.files:
            with self.subTest(file.stem):
                self.assertEqual(format_of(file), (1, RATE))
                self.assertLess(file.stat().st_size, LARGEST_BYTES)

    def test_none_is_too_short_or_too_long(self):
        self.on_each(lambda sound: self.assertGreaterEqual(len(sound) / RATE, 0.2))
        self.on_each(lambda sound: self.assertLessEqual(len(sound) / RATE, 1.5))

    def test_all_are_equally_loud(self):
        self.on_each(lambda sound: self.assertAlmostEqual(loudness(sound), LOUDNESS_LUFS, delta=0.5))
        loudnesses = [loudness(sound) for sound in self.sounds.values()]
        self.assertLess(max(loudnesses) - min(loudnesses), 0.5)

    def test_none_comes_near_full_scale(self):
        self.on_each(lambda sound: self.assertLess(decibel(true_peak(sound)), -1))

    def test_none_is_off_centre(self):
        self.on_each(lambda sound: self.assertLess(abs(sum(sound)) / len(sound), SILENCE / 2))

    def test_each_begins_and_ends_in_silence(self):
        self.on_each(lambda sound: self.assertLess(max(map(abs, sound[:EDGE] + sound[-EDGE:])), SILENCE))

    def test_no_two_are_alike(self):
        prints = {name: fingerprint(sound, RATE) for name, sound in self.sounds.items()}
        for one, other in itertools.combinations(prints, 2):
            with self.subTest(f"{one} and {other}"):
                self.assertGreater(distance(prints[one], prints[other]), SMALLEST_DISTANCE)

    def test_the_same_bytes_are_made_again(self):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([SOURCES / "make_sounds", folder], check=True)
            again = {file.name: file.read_bytes() for file in pathlib.Path(folder).iterdir()}
        self.assertEqual(again, {file.name: file.read_bytes() for file in self.files})


if __name__ == "__main__":
    FOLDER = pathlib.Path(sys.argv.pop(1))
    unittest.main()
