# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""A session in German: what a user reads in the notification, its button, the menu and the windows, from a
bundle that was put somewhere else. Run it in the simulated laptop, with German's locale in LOCPATH:
language.py BUNDLE
"""

import gettext
import json
import os
import pathlib
import re
import shutil
import sys
import tempfile
import time
import unittest

from gi.repository import Gio

from lumora_testing.bundle import Lumora, forget, start_again, windows
from lumora_testing.remote import RemoteLaptop, wait_for
from lumora_testing.screen import settled_screen

BUNDLE = sys.argv.pop()


class LanguageStory(unittest.TestCase):
    def setUp(self):
        self.laptop = RemoteLaptop()
        self.laptop.reset()
        forget()
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION, None)
        # Not below the temporary folder: the program's own are there.
        folder = self.enterContext(tempfile.TemporaryDirectory(dir=os.environ["HOME"]))
        self.bundle = pathlib.Path(folder) / "Programme" / "Lumora.app"
        shutil.copytree(BUNDLE, self.bundle)
        catalogue = self.bundle / "Resources/locale/de/LC_MESSAGES/lumora.mo"
        with catalogue.open("rb") as file:
            self.german = gettext.GNUTranslations(file)

    def text(self, source, *values):
        """A text in German, which is not the source's."""
        said = self.german.gettext(source)
        self.assertNotEqual(said, source)
        for number, value in enumerate(values, 1):
            said = said.replace(f"%{number}$s", value)
        return said

    def running(self, **environment):
        return self.enterContext(Lumora(self.bundle, LC_ALL="de_DE.UTF-8", **environment))

    def test_everything_is_said_in_german(self):
        self.laptop.set_battery(percent=34, status="Discharging")
        lumora = self.running()
        wait_for(lambda: self.text("Quit") in lumora.state(self.bus), "the menu")
        self.assertIn("34\u00a0% · ", lumora.state(self.bus))
        self.laptop.set_battery(percent=20, status="Discharging")
        sent = wait_for(lambda: (all_ := self.laptop.notifications())[1:] and all_, "both reminders")
        self.assertEqual(sent[0]["summary"], self.german.pgettext("notification", "Low battery"))
        self.assertEqual(sent[0]["body"], self.text("Battery is at %1$s. Plug in soon.", "20\u00a0%"))
        self.assertIn(self.text("Snooze 1 hour"), sent[0]["actions"])
        self.assertEqual(sent[1]["summary"], self.text("Try Low Power Mode"))
        start_again(self.bundle)
        wait_for(lambda: windows("Lumora"), "the popover")
        settled_screen().keep("german")

    def test_another_language_may_be_preferred(self):
        lumora = self.running(LANGUAGE="en:de")
        wait_for(lambda: "Quit" in lumora.state(self.bus), "the menu")

    def test_the_windows_leave_a_locale_of_another_encoding_as_it_was(self):
        settings = pathlib.Path(os.environ["XDG_CONFIG_HOME"]) / "Lumora" / "defaults.json"
        settings.parent.mkdir(parents=True, exist_ok=True)
        settings.write_text(json.dumps({"snoozeUntil": time.time() + 1800}))
        lumora = self.enterContext(Lumora(self.bundle, LC_ALL="el_GR.ISO-8859-7"))
        with_snooze = wait_for(lambda: ":" in (said := lumora.state(self.bus)) and said, "the menu")
        start_again(self.bundle)
        wait_for(lambda: windows("Lumora"), "the popover")
        self.laptop.set_battery(percent=33, status="Discharging")
        changed = wait_for(lambda: (said := lumora.state(self.bus)) != with_snooze and said, "the change")
        self.assertEqual(re.findall(r"\(.*\)", changed), re.findall(r"\(.*\)", with_snooze))

    def test_a_locale_that_the_system_has_not_leaves_the_texts_as_the_source_has_them(self):
        lumora = self.enterContext(Lumora(self.bundle, LC_ALL="xx_XX.UTF-8"))
        wait_for(lambda: "Quit" in lumora.state(self.bus), "the menu")


if __name__ == "__main__":
    unittest.main()
