"""The pictures of the themes that the program renders instead of starting."""

import os
import struct
import subprocess
import unittest

from support.processes import LIMIT
from support.vembrix import DesktopTest, Vembrix, program_path

OPTION = "--render-theme-previews"
THEMES = ("stock", "alpine", "coral", "paper", "graphite", "sorbet", "frost")
TABS = ("label", "colors", "menubar", "theme", "diagnostics", "about")
MENU = (240, 172)
PLAIN = (600, 520)
THEMED = (600, 548)


def expected_sizes():
    """The file names in their order, with the pictures' sizes in points."""
    sizes = {}
    for theme in THEMES:
        for tab in TABS if theme == "alpine" else TABS[:1]:
            sizes[f"prefs-{theme}-{tab}.png"] = PLAIN if theme == "stock" else THEMED
        sizes[f"menu-{theme}.png"] = MENU
    return sizes


def png_size(data):
    assert data.startswith(b"\x89PNG\r\n\x1a\n") and data.endswith(b"IEND\xaeB`\x82"), "no whole PNG"
    return struct.unpack_from(">II", data, 16)


class PreviewTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.directory = self.desktop.path("home", "previews", "of", "today")

    def render(self, environment=None, directory=None):
        """Runs the program to its end and returns the lines of its output."""
        directory = directory or self.directory
        process = subprocess.run(
            [program_path(), OPTION, directory],
            env={**self.desktop.environment, **(environment or {})},
            cwd=self.desktop.directory, stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, timeout=LIMIT, check=False,
        )  # fmt: skip
        self.assertEqual(process.returncode, 0, process.stderr)
        return process.stdout.splitlines()

    def files(self, directory=None):
        directory = directory or self.directory
        contents = {}
        for name in os.listdir(directory):
            with open(os.path.join(directory, name), "rb") as file:
                contents[name] = file.read()
        return contents

    def check(self, environment=None, scale=1):
        """19 files of the right sizes, reported in the themes' order."""
        lines = self.render(environment)
        sizes = expected_sizes()
        self.assertEqual(len(sizes), 19)
        self.assertEqual(lines, [f"wrote {self.directory}/{name}" for name in sizes])
        found = {name: png_size(data) for name, data in self.files().items()}
        self.assertEqual(found, {n: (w * scale, h * scale) for n, (w, h) in sizes.items()})


class NoDisplayTest(PreviewTest):
    window_manager = None
    # Without a display and without a session.
    ALONE = {"DISPLAY": "", "DBUS_SESSION_BUS_ADDRESS": "", "XDG_RUNTIME_DIR": ""}

    def test_renders_everything(self):
        self.check(self.ALONE)

    def test_renders_every_pixel_at_double_scale(self):
        self.check({**self.ALONE, "QT_SCALE_FACTOR": "2"}, scale=2)

    def test_two_runs_give_the_same_bytes(self):
        self.render(self.ALONE)
        first = self.files()
        other = self.desktop.path("home", "other")
        self.render(self.ALONE, directory=other)
        self.assertEqual(len(first), 19)
        self.assertTrue(first == self.files(other), "the bytes differ")

    def test_a_display_that_does_not_answer_is_none(self):
        self.desktop.end_server()
        self.check()

    def test_renders_the_settings_alone_where_no_window_manager_has_desktops(self):
        self.render()
        settings = [name for name in expected_sizes() if name.startswith("prefs-")]
        self.assertEqual(len(settings), 12)
        self.assertEqual(sorted(self.files()), sorted(settings))


class DirectoryTest(PreviewTest):
    window_manager = None
    ALONE = NoDisplayTest.ALONE

    def reported(self, directory):
        return [f"wrote {directory}/{name}" for name in expected_sizes()]

    def test_a_directory_that_cannot_be_made_is_reported_as_if_it_were(self):
        # Not even the superuser can create a folder there.
        directory = "/proc/vembrix-previews"
        self.assertEqual(self.render(self.ALONE, directory), self.reported(directory))
        self.assertFalse(os.path.exists(directory))

    @unittest.skipIf(os.geteuid() == 0, "the superuser may write everywhere")
    def test_a_directory_that_may_not_be_written(self):
        os.makedirs(self.directory)
        os.chmod(self.directory, 0o500)
        self.addCleanup(os.chmod, self.directory, 0o700)
        self.assertEqual(self.render(self.ALONE), self.reported(self.directory))
        self.assertEqual(self.files(), {})

    def test_a_file_in_place_of_the_directory_is_kept(self):
        os.makedirs(os.path.dirname(self.directory))
        with open(self.directory, "w", encoding="utf-8") as file:
            file.write("precious")
        self.assertEqual(self.render(self.ALONE), self.reported(self.directory))
        with open(self.directory, encoding="utf-8") as file:
            self.assertEqual(file.read(), "precious")

    def test_a_directory_in_place_of_a_file(self):
        os.makedirs(os.path.join(self.directory, "menu-coral.png"))
        self.assertEqual(self.render(self.ALONE), self.reported(self.directory))
        self.assertEqual(len(os.listdir(self.directory)), 19)
        self.assertEqual(os.listdir(os.path.join(self.directory, "menu-coral.png")), [])

    @unittest.skipUnless(os.path.exists("/dev/full"), "needs a full disk to try")
    def test_a_full_disk(self):
        os.makedirs(self.directory)
        for name in expected_sizes():
            os.symlink("/dev/full", os.path.join(self.directory, name))
        self.assertEqual(self.render(self.ALONE), self.reported(self.directory))

    def test_a_relative_directory_is_relative_to_where_it_was_called(self):
        lines = self.render(self.ALONE, "here/and there")
        self.assertEqual(lines, self.reported("here/and there"))
        self.assertEqual(len(os.listdir(self.desktop.path("here", "and there"))), 19)

    def test_files_that_are_there_are_replaced(self):
        os.makedirs(self.directory)
        old = os.path.join(self.directory, "menu-frost.png")
        with open(old, "wb") as file:
            file.write(b"x" * 1_000_000)
        self.check(self.ALONE)


class StoredThemeTest(PreviewTest):
    window_manager = None

    def stored_after_rendering(self):
        self.render(NoDisplayTest.ALONE)
        return self.defaults.read().get("ThemeName")

    def test_it_is_what_it_was(self):
        self.defaults.write({"ThemeName": "Sorbet", "SpaceNames": {"a": "Mail"}})
        self.assertEqual(self.stored_after_rendering(), "Sorbet")
        self.assertEqual(self.defaults.read()["SpaceNames"], {"a": "Mail"})

    def test_it_is_alpine_where_none_was_stored(self):
        self.assertEqual(self.stored_after_rendering(), "Alpine")

    def test_one_that_does_not_exist_is_kept(self):
        self.defaults.write({"ThemeName": "Sunset of Old"})
        self.assertEqual(self.stored_after_rendering(), "Sunset of Old")


class DisplayTest(PreviewTest):
    def test_renders_everything_and_shows_nothing(self):
        self.check()
        self.assertEqual(self.desktop.windows_of_class("vembrix"), [])

    def test_renders_the_desktops_that_there_are(self):
        self.desktop.set_count(2)
        self.render()
        width, height = png_size(self.files()["menu-stock.png"])
        self.assertEqual((width, height), (MENU[0], MENU[1] - 2 * 24))

    def test_leaves_a_running_vembrix_alone(self):
        program = self.launch()
        self.check()
        self.assertTrue(program.process.running)
        self.assertEqual(program.title(), "Desktop 1")
        self.assertEqual(program.end(), 0)

    def test_the_option_as_the_last_argument_starts_normally(self):
        program = Vembrix(self.desktop, arguments=(OPTION,))
        program.wait_for_strip()
        program.wait_for_title("Desktop 1")
        self.assertNotIn("wrote", program.process.output())
        self.assertEqual(program.end(), 0)


if __name__ == "__main__":
    unittest.main()
