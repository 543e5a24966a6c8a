"""Installing from the build folder, and taking it back.

Usage: install_test.py CMAKE BUILD_FOLDER
"""

import contextlib
import os
import shutil
import subprocess
import sys
import tempfile
import unittest

CMAKE, BUILD = sys.argv[1:3]
MANIFEST = os.path.join(BUILD, "install_manifest.txt")

ICONS = [f"share/icons/hicolor/{side}x{side}/apps/vembrix.png" for side in (48, 128, 256)]
DESKTOP_FILE = "share/applications/com.vembrix.app.desktop"
INSTALLED = {
    "bin/vembrix",
    DESKTOP_FILE,
    "share/doc/vembrix/LICENSE",
    "share/man/man1/vembrix.1",
    "share/metainfo/com.vembrix.app.metainfo.xml",
    *ICONS,
}


def files_below(folder):
    return {
        os.path.relpath(os.path.join(parent, name), folder)
        for parent, _, names in os.walk(folder)
        for name in names
    }


def cmake(*arguments, destdir=None):
    environment = {key: value for key, value in os.environ.items() if key != "DESTDIR"}
    if destdir:
        environment["DESTDIR"] = destdir
    return subprocess.run(
        [CMAKE, *arguments], env=environment, capture_output=True, text=True, check=False
    )


def forget_installation():
    with contextlib.suppress(FileNotFoundError):
        os.remove(MANIFEST)


class InstallTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="vembrix-install-")
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        # The manifest of a real installation from this build folder stays unchanged.
        if os.path.exists(MANIFEST):
            shutil.move(MANIFEST, self.path("manifest"))
            self.addCleanup(shutil.move, self.path("manifest"), MANIFEST)
        else:
            self.addCleanup(forget_installation)

    def path(self, *names):
        return os.path.join(self.folder, *names)

    def check(self, result):
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)

    def install(self, **options):
        self.check(cmake("--install", BUILD, "--prefix", self.path("prefix"), **options))

    def uninstall(self, **options):
        self.check(cmake("--build", BUILD, "--target", "uninstall", **options))

    def test_a_prefix_has_all_that_is_installed_and_no_more(self):
        self.install()
        self.assertEqual(files_below(self.path("prefix")), INSTALLED)
        self.assertTrue(os.access(self.path("prefix", "bin", "vembrix"), os.X_OK))

    def test_the_same_goes_below_destdir(self):
        self.install(destdir=self.path("destdir"))
        self.assertFalse(os.path.exists(self.path("prefix")))
        below = self.path("destdir") + self.path("prefix")
        self.assertEqual(files_below(below), INSTALLED)
        self.uninstall(destdir=self.path("destdir"))
        self.assertEqual(files_below(below), set())

    def test_the_desktop_file_names_what_is_installed(self):
        self.install()
        with open(self.path("prefix", DESKTOP_FILE), encoding="utf-8") as file:
            entries = dict(line.rstrip("\n").split("=", 1) for line in file if "=" in line)
        self.assertIn(f"bin/{entries['Exec']}", INSTALLED)
        for icon in ICONS:
            self.assertEqual(os.path.basename(icon), f"{entries['Icon']}.png")

    def test_uninstalling_leaves_what_others_have_put_there(self):
        self.install()
        others = {"bin/other", "share/doc/vembrix/notes", "share/applications/other.desktop"}
        for name in others:
            with open(self.path("prefix", name), "w", encoding="utf-8"):
                pass
        self.uninstall()
        self.assertEqual(files_below(self.path("prefix")), others)

    def test_uninstalling_removes_the_folder_that_is_the_programs_own(self):
        self.install()
        self.uninstall()
        self.assertFalse(os.path.exists(self.path("prefix", "share", "doc", "vembrix")))
        self.assertTrue(os.path.isdir(self.path("prefix", "bin")))

    def test_uninstalling_goes_on_where_a_file_has_gone(self):
        self.install()
        os.remove(self.path("prefix", "bin", "vembrix"))
        self.uninstall()
        self.assertEqual(files_below(self.path("prefix")), set())

    def test_uninstalling_where_nothing_was_installed_says_so(self):
        result = cmake("--build", BUILD, "--target", "uninstall")
        self.assertNotEqual(result.returncode, 0)
        self.assertIn("Nothing was installed from here", result.stdout + result.stderr)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
