# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What is said of Lumora in several places is the same in all of them: facts_test.py PROJECT"""

import email.utils
import pathlib
import re
import shlex
import sys
import unittest

PROJECT = pathlib.Path(sys.argv.pop())
# What Debian's packages are called in Fedora and in Arch; empty where what is asked for besides brings it.
BUILDING = {
    "cmake": ("cmake", "cmake"),
    "gettext": ("gettext", "gettext"),
    "libcairo2-dev": ("cairo-devel", "cairo"),
    "libcanberra-dev": ("libcanberra-devel", "libcanberra"),
    "libglibmm-2.68-dev": ("glibmm2.68-devel", "glibmm-2.68"),
    "libgmock-dev": ("gmock-devel", "gtest"),
    "libgtest-dev": ("gtest-devel", "gtest"),
    "libqcustomplot-dev": ("qcustomplot-qt6-devel", "qcustomplot"),
    "libsimdjson-dev": ("simdjson-devel", "simdjson"),
    "libwayland-dev": ("wayland-devel", "wayland"),
    "libxcb1-dev": ("libxcb-devel", "libxcb"),
    "locales": ("glibc-locale-source", ""),
    "ninja-build": ("ninja-build", "ninja"),
    "pkgconf": ("", ""),
    "python3": ("python3", "python"),
    "qt6-base-dev": ("qt6-qtbase-devel", "qt6-base"),
    "qt6-base-private-dev": ("qt6-qtbase-private-devel", ""),
    "vorbis-tools": ("vorbis-tools", "vorbis-tools"),
    "wayland-protocols": ("wayland-protocols-devel", "wayland-protocols"),
}
RUNNING = {
    "libcanberra-pulse": ("", "libcanberra-pulse"),
    "libglib2.0-bin": ("", ""),
    "power-profiles-daemon": ("ppd-service", "power-profiles-daemon"),
    "qt6-translations-l10n": ("qt6-qttranslations", "qt6-translations"),
    "qt6-wayland": ("qt6-qtwayland", "qt6-wayland"),
    "sound-theme-freedesktop": ("sound-theme-freedesktop", "sound-theme-freedesktop"),
    "upower": ("upower", "upower"),
    "xdg-desktop-portal": ("xdg-desktop-portal", "xdg-desktop-portal"),
}
FEDORAS_OWN = {"desktop-file-utils", "gcc-c++", "libappstream-glib"}
ICONS = "hicolor-icon-theme"


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


def names(name, path):
    """The packages in a field of Debian's, without versions and conditions."""
    return {re.split("[ :]", entry)[0] for entry in field(name, path)}


def requirements(name):
    """The packages that the .spec asks for under a tag."""
    return set(re.findall(rf"^{name}: +(\S+)$", text("Packaging/lumora.spec"), re.MULTILINE))


def arrays(*wanted):
    """The words of the PKGBUILD's arrays, of each up to a colon."""
    inside = [found(rf"^{name}=\(([^)]*)\)", "Packaging/PKGBUILD") for name in wanted]
    return {entry.partition(":")[0] for entry in shlex.split(" ".join(inside))}


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
        version = found(r"^project\(Lumora VERSION (\S+) ", "CMakeLists.txt")
        self.assertIn((version, day), re.findall(r"^## \[(\S+)\] - (\S+)$", text("CHANGELOG.md"), re.MULTILINE))

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
        asked = {re.split("[ :]", name)[0] for name in asked if not name.endswith("<!nocheck>")}
        # Every build on Debian has a compiler.
        self.assertEqual(asked - {"debhelper-compat"}, packages("Scripts/build.packages") - {"g++"})

    def test_what_building_takes_elsewhere(self):
        asked = names("Build-Depends", "Packaging/debian/control") - {"debhelper-compat"}
        self.assertEqual(asked, set(BUILDING))
        fedora, arch = ({pair[index] for pair in BUILDING.values()} - {""} for index in (0, 1))
        self.assertEqual(requirements("BuildRequires"), fedora | FEDORAS_OWN)
        self.assertEqual(arrays("depends", "makedepends", "checkdepends"), arch | {ICONS})

    def test_what_is_recommended(self):
        self.assertEqual(names("Recommends", "Packaging/debian/control"), set(RUNNING))
        fedora, arch = ({pair[index] for pair in RUNNING.values()} - {""} for index in (0, 1))
        self.assertEqual(requirements("Recommends"), fedora)
        self.assertEqual(arrays("optdepends"), arch)

    def test_its_licences(self):
        licences = set(re.findall(r"^License: (\S+)$", text("Packaging/debian/copyright"), re.MULTILINE))
        self.assertEqual(set(found(r"^License: +(.*)$", "Packaging/lumora.spec").split(" AND ")), licences)
        self.assertEqual(arrays("license"), licences)

    def test_what_it_asks_on_the_buses(self):
        asked, _, _ = text("Docs/DBus.md").partition("## It answers")
        services = {
            name for row in re.findall(r"^\|([^|]*)\|", asked, re.MULTILINE) for name in re.findall("`(.*?)`", row)
        }
        told = text("Docs/Sandbox.md")
        self.assertEqual({name for name in services if f"`{name}`" not in told}, {"org.freedesktop.DBus"})
        allowed = re.findall(r"--(?:system-)?talk-name=(\S+)$", text("Packaging/org.lumora.Lumora.yaml"), re.MULTILINE)
        self.assertEqual({name for name in allowed if name not in services}, set())

    def test_what_its_test_takes_on_debian(self):
        asked = field("Depends", "Packaging/debian/tests/control")
        self.assertEqual(asked - {"lumora"}, packages("Tests/Laptop/packages.txt"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
