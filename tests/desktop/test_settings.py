"""Stored settings and the desktop's appearance, as the status item shows them."""

import time
import unittest

from support.settings_portal import Portal
from support.dropdown import Dropdown
from support.processes import wait_until
from support.screen import rgb
from support.vembrix import BLACK, BLUE, HALVED_PINK, PINK, DesktopTest, SharedRunTest

FIXED_WIDTH = 140

# For every stored key, a value of a wrong type.
WRONG_TYPES = {
    "ThemeName": ["Coral"],
    "ShowSpaceNameInMenuBar": "no",
    "HeatPaletteName": 7,
    "SignTextSize": "large",
    "SignSwipeAlpha": {"alpha": 0.5},
    "ShowSignInSwipeMode": "no",
    "ShowSignAfterSelection": [False],
    "HeatMapSigns": b"\0",
    "MenuBarWidthMode": 140,
    "InstantMenuSwitch": "yes",
    "SpaceColors": "red",
    "ColorMode": True,
    "SpaceNames": ["Mail", "Code"],
    "KnownSpaceUUIDs": {"x11-desktop-1": True},
    "SpaceHeatRecency": "x11-desktop-1",
}

COLOR = '{"red":0.1,"green":0.3,"blue":0.2,"alpha":1}'


def wait_for_width(program, width):
    wait_until(
        lambda: program.strip().frame()[2] == width,
        lambda: f"a width of {width}; it is {program.strip().frame()[2]}",
    )


class StoredSettingsTest(DesktopTest):
    """Settings stored before the program starts."""

    desktops = 1

    def test_an_empty_name_is_none(self):
        self.defaults.write({"SpaceNames": {"x11-desktop-1": ""}})
        self.launch().wait_for_title("Desktop 1")

    def test_shows_the_colors_of_a_space(self):
        colors = f'{{"x11-desktop-1":{{"foreground":{COLOR},"background":{COLOR}}}}}'
        self.defaults.write({"SpaceColors": colors.encode()})
        program = self.launch()
        program.wait_for_fill(rgb(0.1, 0.3, 0.2))
        program.wait_for_ink((255, 255, 255), 40)

    def test_black_ink_on_a_light_fill(self):
        program = self.launch()
        program.wait_for_fill(PINK)
        program.wait_for_ink(BLACK, 40)

    def test_icon_in_place_of_the_name(self):
        self.defaults.write({"ShowSpaceNameInMenuBar": False, "MenuBarWidthMode": "maxTitleLength"})
        program = self.launch()
        _, _, width, height = program.strip().frame()
        self.assertEqual(width, height)
        self.assertGreater(program.picture().nearest(PINK)[1], 24, "an icon has no fill")
        program.wait_for_ink(BLACK, 60)

    def test_dark_from_the_start(self):
        Portal(self.desktop, Portal.DARK)
        self.defaults.write({"ColorMode": "colorForeground"})
        program = self.launch()
        program.wait_for_ink(PINK, 24)

    def test_follows_light_and_dark_while_it_runs(self):
        portal = Portal(self.desktop, Portal.LIGHT)
        self.defaults.write({"ColorMode": "colorForeground"})
        program = self.launch()
        program.wait_for_ink(HALVED_PINK, 24)
        portal.set(Portal.DARK)
        program.wait_for_ink(PINK, 24)
        portal.set(Portal.LIGHT)
        program.wait_for_ink(HALVED_PINK, 24)


class ChangedSettingsTest(SharedRunTest):
    """Settings that another program stores while this one runs."""

    def switch_there_and_back(self):
        """Makes the program update its title."""
        self.desktop.go_to(1)
        self.program.wait_for_title("Desktop 2")
        self.desktop.go_to(0)

    def test_color_mode_is_read_while_it_runs(self):
        self.program.wait_for_fill(PINK)
        self.defaults.update({"ColorMode": "colorForeground"})
        self.switch_there_and_back()
        self.program.wait_for_ink(HALVED_PINK, 24)
        self.assertGreater(self.program.picture().nearest(PINK)[1], 24, "no fill is left")

    def test_the_icon_comes_and_goes_while_it_runs(self):
        # The previous test may have ended on another desktop.
        self.program.wait_for_title("Desktop 1")
        named = self.program.strip().frame()[2]
        self.defaults.update({"ShowSpaceNameInMenuBar": False})
        self.desktop.go_to(1)
        wait_for_width(self.program, self.program.strip().frame()[3])
        self.defaults.update({"ShowSpaceNameInMenuBar": True})
        self.desktop.go_to(0)
        self.program.wait_for_title("Desktop 1")
        wait_for_width(self.program, named)



class StoredNamesTest(DesktopTest):
    LONG = "A name that is far too long for any menu bar to show it whole"

    def test_shows_names_as_far_as_there_is_room(self):
        self.defaults.write({"SpaceNames": {"x11-desktop-1": self.LONG, "x11-desktop-2": "Mail"}})
        program = self.launch()
        program.wait_for_title(self.LONG)
        self.assertGreater(program.strip().frame()[2], FIXED_WIDTH)
        self.defaults.update({"MenuBarWidthMode": "maxTitleLength"})
        self.desktop.go_to(1)
        program.wait_for_title("Mail")
        program.wait_for_fill(BLUE)
        wait_for_width(program, FIXED_WIDTH)
        self.desktop.go_to(0)
        program.wait_for_title(self.LONG)
        wait_for_width(program, FIXED_WIDTH)
        x, _, width, _ = program.strip().frame()
        self.assertEqual(x + width, self.desktop.size[0])


class KilledProgramTest(DesktopTest):
    desktops = 1

    def test_what_is_older_than_half_a_second_outlives_a_kill(self):
        for name in ("Mail", "Work", "Play"):
            with self.subTest(name=name):
                program = self.launch()
                self.rename(program, name)
                time.sleep(1)
                program.process.popen.kill()
                program.process.wait()
                next_run = self.launch()
                next_run.wait_for_title(name)
                self.assertEqual(self.defaults.read()["SpaceNames"], {"x11-desktop-1": name})
                self.assertEqual(next_run.end(), 0)

    @staticmethod
    def rename(program, name):
        menu = Dropdown(program)
        menu.open()
        menu.click_pencil(0)
        menu.key("ctrl+a")
        menu.type(name)
        menu.key("Return")
        program.wait_for_title(name)


class MalformedSettingsTest(DesktopTest):
    desktops = 1

    def test_a_value_of_a_wrong_type_is_the_default(self):
        for key, value in WRONG_TYPES.items():
            with self.subTest(key=key):
                self.defaults.write({key: value})
                self.check_defaults()

    def test_wrong_types_everywhere(self):
        self.defaults.write(WRONG_TYPES)
        self.check_defaults()

    def test_a_file_that_is_no_property_list(self):
        self.defaults.write_bytes(b"nothing of the kind")
        self.check_defaults()

    def check_defaults(self):
        program = self.launch()
        program.wait_for_title("Desktop 1")
        program.wait_for_fill(PINK)
        program.wait_for_ink(BLACK, 40)
        self.assertNotEqual(program.strip().frame()[2], FIXED_WIDTH)
        self.assertEqual(program.end(), 0)
        self.assertEqual(self.defaults.read()["KnownSpaceUUIDs"], ["x11-desktop-1"])


if __name__ == "__main__":
    unittest.main()
