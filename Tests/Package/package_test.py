# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The Debian packages, built, and the binary one installed into an empty root. Run it in the simulated laptop:
package_test.py BUILD
"""

import fnmatch
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

from lumora_testing.bundle import Lumora, forget, start_again, windows
from lumora_testing.remote import RemoteLaptop, wait_for

PROJECT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(sys.argv.pop())
BUNDLE = "usr/lib/lumora/Lumora.app"
VIEWS = f"{BUNDLE}/lumora_views.so"
PROGRAMS = ["lumora", "lumora_sound", "lumora_views.so", "lumora_icon.so"]


def output(*command):
    """What a command says, on both its outputs; it must succeed."""
    return subprocess.run(command, check=True, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT).stdout


def compile_commands(folder):
    """How the program's code was compiled there."""
    entries = json.loads((folder / "compile_commands.json").read_text())
    return [entry["command"] for entry in entries if "/App/" in entry["file"]]


def next_release(package, folder):
    """The same package with a higher version and a views module that fits no program of before."""
    output("dpkg-deb", "-R", package, folder)
    control = folder / "DEBIAN/control"
    control.write_text(control.read_text().replace("Version: ", "Version: 1"))
    (folder / VIEWS).write_text("of another time")
    return pathlib.Path(output("dpkg-deb", "--root-owner-group", "-b", folder, folder.parent).split("'")[3])


class Root:
    """An empty root with dpkg's own accounts of what is installed there."""

    def __init__(self, folder):
        self.folder = folder
        (folder / "var/lib/dpkg").mkdir(parents=True)
        (folder / "var/lib/dpkg/status").touch()
        for part in ("info", "updates", "triggers"):
            (folder / "var/lib/dpkg" / part).mkdir()

    def dpkg(self, *arguments):
        """dpkg for this root, where nothing that Lumora depends on is installed."""
        return output(
            "dpkg",
            f"--root={self.folder}",
            "--force-not-root",
            "--force-depends",
            "--force-bad-path",
            f"--log={self.folder}/log",
            *arguments,
        )

    def files(self):
        """Every file in it but dpkg's."""
        found = {path.relative_to(self.folder) for path in self.folder.rglob("*") if not path.is_dir()}
        return {str(path) for path in found if not str(path).startswith(("var/lib/dpkg", "log"))}


class Package(unittest.TestCase):
    """From building it to its removal."""

    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        cls.built = cls.folder / "built"
        output(PROJECT / "make_deb", cls.built)
        (cls.package,) = cls.built.glob("lumora_*.deb")
        cls.root = Root(cls.folder / "root")

    def setUp(self):
        RemoteLaptop().reset()
        forget()
        self.root.dpkg("--install", self.package)

    def bundle(self):
        return self.root.folder / BUNDLE

    def test_lintian_has_nothing_to_say(self):
        (changes,) = self.built.glob("*.changes")
        told = output(PROJECT / "Packaging" / "lint_deb", changes, "--fail-on", "none")
        self.assertEqual(told, "")

    def test_its_dependencies_were_found(self):
        depends = output("dpkg-deb", "--field", self.package, "Depends")
        for library in ("libglibmm-2.68-1", "libqt6widgets6", "libqcustomplot", "libcairo2", "libcanberra0"):
            self.assertIn(library, depends)

    def test_has_all_that_a_desktop_looks_for(self):
        files = self.root.files()
        for file in (
            "usr/bin/lumora",
            "usr/share/applications/org.lumora.Lumora.desktop",
            "usr/share/dbus-1/services/org.lumora.Lumora.service",
            "usr/share/icons/hicolor/scalable/apps/org.lumora.Lumora.svg",
            "usr/share/icons/hicolor/symbolic/apps/org.lumora.Lumora-symbolic.svg",
            "usr/share/metainfo/org.lumora.Lumora.metainfo.xml",
            "usr/share/man/man1/lumora.1.gz",
            "usr/share/doc/lumora/copyright",
        ):
            self.assertIn(file, files)
        self.assertEqual((self.root.folder / "usr/bin/lumora").resolve(), (self.bundle() / "lumora").resolve())
        service = (self.root.folder / "usr/share/dbus-1/services/org.lumora.Lumora.service").read_text()
        self.assertIn('Exec="/usr/bin/lumora"\n', service)

    def test_rpm_packs_the_same_files(self):
        spec = (PROJECT / "Packaging/lumora.spec").read_text(encoding="utf-8")
        listed = spec.split("\n%files\n")[1].split("\n\n")[0]
        for macro, folder in (("_bindir", "usr/bin"), ("_datadir", "usr/share"), ("_mandir", "usr/share/man")):
            listed = listed.replace(f"%{{{macro}}}", folder)
        patterns = [
            line.replace("%{_prefix}", "usr") for line in listed.splitlines() if not line.startswith(("#", "%l", "%d"))
        ]
        patterns = [pattern + "*" if pattern.endswith("/") else pattern for pattern in patterns]
        files = {file for file in self.root.files() if not file.startswith(("usr/share/doc/", "usr/share/lintian/"))}
        for pattern in patterns:
            self.assertTrue(fnmatch.filter(files, pattern), pattern)
        self.assertEqual({file for file in files if not any(fnmatch.fnmatch(file, each) for each in patterns)}, set())

    def test_what_a_software_centre_reads_is_valid(self):
        share = self.root.folder / "usr/share"
        output("appstreamcli", "validate", "--no-net", "--pedantic", share / "metainfo/org.lumora.Lumora.metainfo.xml")
        self.assertEqual(output("desktop-file-validate", share / "applications/org.lumora.Lumora.desktop"), "")

    def test_the_manual_page_is_well_formed_and_says_that_there_are_no_options(self):
        page = self.root.folder / "usr/share/man/man1/lumora.1.gz"
        shown = subprocess.run(
            ["man", "--warnings", "-l", page],
            capture_output=True,
            text=True,
            check=True,
            env={**os.environ, "MANWIDTH": "80", "LC_ALL": "C.UTF-8"},
        )
        self.assertEqual(shown.stderr, "")
        self.assertIn("There are no options.", " ".join(shown.stdout.split()))

    def test_its_programs_are_hardened(self):
        for name in PROGRAMS:
            file = self.bundle() / name
            header, dynamic = output("readelf", "-hW", file), output("readelf", "-dW", file)
            self.assertRegex(header, r"Type:\s+DYN", name)
            self.assertRegex(dynamic, r"FLAGS.*(BIND_NOW|NOW)", name)
            self.assertNotIn("RPATH", dynamic)
            self.assertNotIn("RUNPATH", dynamic)
            segments = output("readelf", "-lW", file)
            self.assertIn("GNU_RELRO", segments, name)
            self.assertRegex(segments, r"GNU_STACK.* RW ", name)
            self.assertTrue("__stack_chk_fail" in output("readelf", "-W", "--dyn-syms", file), name)
        (obj,) = self.built.glob("lumora-*/obj-*")
        for folder, flags in (
            (BUILD, r" -O[23] .* -D_FORTIFY_SOURCE=3 "),
            (obj, r" -O2 .* -fstack-protector-strong .*-Werror=format-security .* -D_FORTIFY_SOURCE=[23] "),
        ):
            commands = compile_commands(folder)
            self.assertGreater(len(commands), 50)
            for command in commands:
                self.assertRegex(command, flags)

    def test_runs_from_where_it_is_installed(self):
        with Lumora(self.bundle()) as lumora:
            wait_for(lumora.history, "the first sample")
            start_again(self.bundle())
            wait_for(lambda: windows("Lumora"), "the popover")
            self.assertEqual(lumora.end(), 0)

    def test_goes_on_while_it_is_upgraded(self):
        with Lumora(self.bundle()) as lumora:
            wait_for(lumora.history, "the first sample")
            self.root.dpkg("--install", next_release(self.package, self.folder / "next"))
            self.assertEqual((self.root.folder / VIEWS).read_text(), "of another time")
            start_again(self.bundle())
            wait_for(lambda: windows("Lumora"), "the popover of the release that runs")
            self.assertEqual(lumora.end(), 0)
        with Lumora(self.bundle()) as lumora:
            wait_for(lambda: len(lumora.history()) == 2, "the history of both releases")

    def test_leaves_nothing_but_the_users_files(self):
        with Lumora(self.bundle()) as lumora:
            wait_for(lumora.history, "the first sample")
            self.root.dpkg("--remove", "lumora")
            self.assertEqual(self.root.files(), set())
            self.assertIsNone(lumora.process.poll())
            self.assertEqual(lumora.end(), 0)
            self.assertEqual(len(lumora.history()), 1)


if __name__ == "__main__":
    unittest.main(verbosity=2)
