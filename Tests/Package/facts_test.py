# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What is said of Lumora in several places is the same in all of them: facts_test.py PROJECT"""

import email.utils
import pathlib
import re
import sys
import unittest

PROJECT = pathlib.Path(sys.argv.pop())
PACKAGING = PROJECT / "Packaging"


def text(path):
    """What stands in a file of the project."""
    return (PROJECT / path).read_text(encoding="utf-8")


def found(pattern, path):
    """The one place of a file that a pattern leads to."""
    (value,) = re.findall(pattern, text(path), re.MULTILINE)
    return value


def packages(path):
    """The names in a list of packages."""
    return {line for line in text(path).splitlines() if line and not line.startswith("#")}


def field(name, path):
    """The entries of a field of Debian's, one a line."""
    (value,) = re.findall(rf"^{name}:\n((?: .*\n)+)", text(path), re.MULTILINE)
    return {line.strip(" ,") for line in value.splitlines()}


def words(value):
    """Without how it is broken into lines."""
    return " ".join(value.split())


class Facts(unittest.TestCase):
    """Names, versions, dates, descriptions and dependencies."""

    def test_the_version(self):
        version = found(r"^project\(Lumora VERSION (\S+) ", "CMakeLists.txt")
        self.assertEqual(found(r"^lumora \((\S+)-\d+\)", "Packaging/debian/changelog"), version)
        self.assertEqual(found(r"^Version: +(\S+)$", "Packaging/lumora.spec"), version)
        self.assertEqual(found(r"^%autosetup -n lumora-(\S+)$", "Packaging/lumora.spec"), "%{version}")
        self.assertEqual(found(r"^pkgver=(\S+)$", "Packaging/PKGBUILD"), version)

    def test_the_day_of_the_release(self):
        made = found(r"^ -- .*>  (.*)$", "Packaging/debian/changelog")
        day = email.utils.parsedate_to_datetime(made).date().isoformat()
        metainfo = "Resources/Package/org.lumora.Lumora.metainfo.xml.in"
        self.assertEqual(found(r'<release version="@PROJECT_VERSION@" date="(\S+)"/>', metainfo), day)
        self.assertEqual(found(r'^\.TH LUMORA 1 "(\S+)"', "Resources/Package/lumora.1.in"), day)

    def test_what_it_is_in_a_line_and_in_a_paragraph(self):
        control = text("Packaging/debian/control")
        line, paragraph = re.search(r"^Description: (.*)\n((?: .*\n)+)", control, re.MULTILINE).groups()
        self.assertEqual(found(r"^Summary: +(.*)$", "Packaging/lumora.spec").lower(), line)
        self.assertEqual(found(r'^pkgdesc="(.*)"$', "Packaging/PKGBUILD").lower(), line)
        metainfo = "Resources/Package/org.lumora.Lumora.metainfo.xml.in"
        self.assertEqual(found(r"<summary>(.*)</summary>", metainfo).lower(), line)
        described = re.search(r"^%description\n(.*?)\n\n", text("Packaging/lumora.spec"), re.MULTILINE | re.DOTALL)
        self.assertEqual(words(described[1]), words(paragraph))

    def test_its_address(self):
        homepage = found(r"^Homepage: (.*)$", "Packaging/debian/control")
        self.assertEqual(found(r"^URL: +(.*)$", "Packaging/lumora.spec"), homepage)
        self.assertEqual(found(r'^url="(.*)"$', "Packaging/PKGBUILD"), homepage)
        metainfo = "Resources/Package/org.lumora.Lumora.metainfo.xml.in"
        self.assertEqual(found(r'<url type="homepage">(.*)</url>', metainfo), homepage)

    def test_what_building_takes_on_debian(self):
        asked = field("Build-Depends", "Packaging/debian/control")
        asked = {name.partition(":")[0] for name in asked if not name.endswith("<!nocheck>")}
        # Every build on Debian has a compiler.
        self.assertEqual(asked - {"debhelper-compat (= 13)"}, packages("Scripts/build.packages") - {"g++"})

    def test_what_its_test_takes_on_debian(self):
        asked = field("Depends", "Packaging/debian/tests/control")
        self.assertEqual(asked - {"lumora"}, packages("Tests/Laptop/packages.txt"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
