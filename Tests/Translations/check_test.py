# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What a catalogue or a text can do wrong, and that Translations/check says so."""

import pathlib
import shutil
import subprocess
import tempfile
import unittest

PROJECT = pathlib.Path(__file__).resolve().parents[2]
MARK = PROJECT / "Tests/Locales/mark"  # Makes a catalogue with every text in «».


class CheckTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.copy = pathlib.Path(folder.name)
        for part in ("App", "Resources", "Translations"):
            shutil.copytree(PROJECT / part, self.copy / part)
        for catalogue in (self.copy / "Translations").glob("*.po"):
            if catalogue.stem != "en":
                catalogue.unlink()
        template = self.copy / "Translations/lumora.pot"
        made = subprocess.run([MARK, template, "ltr"], capture_output=True, text=True, check=True).stdout
        self.german = self.copy / "Translations/de.po"
        self.german.write_text(made.replace("Language: en", "Language: de"), encoding="utf-8")

    def check(self):
        return subprocess.run([self.copy / "Translations/check"], capture_output=True, text=True)

    def planted(self, before, after, file="Translations/de.po"):
        """What is said when in one file, once, this stands instead of that."""
        path = self.copy / file
        text = path.read_text(encoding="utf-8")
        self.assertIn(before, text)
        path.write_text(text.replace(before, after, 1), encoding="utf-8")
        checked = self.check()
        self.assertEqual(checked.returncode, 1, checked.stdout)
        return checked.stderr

    def test_is_content_with_what_is_right_and_tells_the_share(self):
        checked = self.check()
        self.assertEqual((checked.returncode, checked.stderr), (0, ""))
        self.assertRegex(checked.stdout, r"^de +100%\n$")

    def test_a_text_that_is_not_translated_is_no_fault(self):
        text = self.german.read_text(encoding="utf-8")
        self.german.write_text(text.replace('msgstr "«Quit»"', 'msgstr ""'), encoding="utf-8")
        checked = self.check()
        self.assertEqual((checked.returncode, checked.stderr), (0, ""))
        self.assertIn("99%", checked.stdout)

    def test_a_lost_place(self):
        self.assertIn("does not match", self.planted('"«On battery, %1$s left»"', '"«On battery»"'))

    def test_a_place_of_another_kind(self):
        self.assertIn("battery, %s", self.planted('"«On battery, %1$s left»"', '"«On battery, %s left»"'))

    def test_a_number_lost_in_a_form_for_many_numbers(self):
        self.assertIn("msgstr[1]", self.planted('msgstr[1] "«%1$s h»"', 'msgstr[1] "«some h»"'))

    def test_a_percent_sign_that_would_be_a_place(self):
        self.assertIn("not a valid", self.planted("«Alert on battery at %1$s or", "«Alert on battery at %1$s % or"))

    def test_a_catalogue_that_does_not_compile(self):
        self.assertIn("end-of-line", self.planted('msgstr "«Quit»"', 'msgstr "«Quit»'))

    def test_the_plural_forms_of_another_language(self):
        self.assertIn("Plural-Forms", self.planted("plural=(n != 1)", "plural=(n > 1)"))

    def test_a_missing_plural_form(self):
        self.assertIn("plural", self.planted('msgstr[1] "«%1$s h»"\n', ""))

    def test_a_translation_of_a_text_that_there_is_not(self):
        self.assertIn("'Quitt'", self.planted('msgid "Quit"', 'msgid "Quitt"'))

    def test_the_wrong_direction(self):
        self.assertIn("direction", self.planted('msgstr "ltr"', 'msgstr "rtl"'))

    def test_translated_digits(self):
        self.assertIn("digits", self.planted('msgstr "native"', 'msgstr "westlich"'))

    def test_a_percentage_without_a_sign(self):
        self.assertIn("percent sign", self.planted('msgstr "«%1$s%%»"', 'msgstr "«%1$s percent»"'))

    def test_a_text_that_is_not_in_the_template(self):
        said = self.planted('translated("Quit")', 'translated("Leave")', "App/Content/StatusItem.cpp")
        self.assertIn("'Leave'", said)

    def test_a_text_that_nobody_shows_any_more(self):
        said = self.planted('translated("Increase")', '"Increase"', "App/Views/Controls/Stepper.cpp")
        self.assertIn("'Increase'", said)


unittest.main()
