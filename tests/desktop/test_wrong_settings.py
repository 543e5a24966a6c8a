"""Every key with every wrong value: the default is shown."""

import unittest

from support.preferences import Preferences
from support.processes import wait_until
from support.vembrix import BLACK, PINK, DesktopTest

KEYS = (
    "ThemeName",
    "ShowSpaceNameInMenuBar",
    "HeatPaletteName",
    "SignTextSize",
    "SignSwipeAlpha",
    "ShowSignInSwipeMode",
    "ShowSignAfterSelection",
    "HeatMapSigns",
    "MenuBarWidthMode",
    "InstantMenuSwitch",
    "SpaceColors",
    "ColorMode",
    "SpaceNames",
    "KnownSpaceUUIDs",
    "SpaceHeatRecency",
    "DidMigrateLegacyDefaults",
)
# Keys that the program writes without the user.
OWN = ("KnownSpaceUUIDs", "SpaceHeatRecency", "DidMigrateLegacyDefaults")
WRONG = (
    "<string></string>",
    "<string>no such value</string>",
    "<integer>7</integer>",
    "<integer></integer>",
    "<integer>99999999999999999999</integer>",
    "<real>1e400</real>",
    "<real>1e-400</real>",
    "<date>2026-01-01T00:00:00Z</date>",
    "<data>/w==</data>",
    "<array><integer>1</integer></array>",
    "<dict><key>a</key><integer>1</integer></dict>",
    "<Strin>x</Strin>",
)
# Keys whose value has the right type but is unknown.
RIGHT = {
    "ThemeName": WRONG[:2],
    "HeatPaletteName": WRONG[:2],
    "SignTextSize": WRONG[2:3],
    "SignSwipeAlpha": WRONG[2:3],
}
INSTEAD = "<true/>"
TABS = ("Label", "Colors", "Menu Bar", "Theme")


def value_of(key, wrong):
    return INSTEAD if wrong in RIGHT.get(key, ()) else wrong


class WrongSettingsTest(DesktopTest):
    desktops = 1

    def shown(self):
        """Starts the program, checks the status item, and returns pictures of the tabs."""
        program = self.launch()
        program.wait_for_title("Desktop 1")
        program.wait_for_fill(PINK)
        program.wait_for_ink(BLACK, 40)
        preferences = Preferences(program)
        preferences.open()
        # Puts the keyboard's focus in the same place for both pictures.
        pictures = [program.strip().frame()]
        for tab in TABS:
            preferences.show_tab(tab)
            pictures.append(self.steady(preferences))
        self.assertEqual(program.end(), 0)
        return pictures

    def steady(self, preferences):
        """The window's pixels, once they no longer change."""
        last = [None]

        def settled():
            former, last[0] = last[0], vars(preferences.picture())
            return former == last[0]

        wait_until(settled, "a picture that stays")
        return last[0]

    def test_every_key_with_every_wrong_value_shows_the_default(self):
        expected = self.shown()
        for wrong in WRONG:
            with self.subTest(wrong=wrong):
                entries = {key: f"<key>{key}</key>{value_of(key, wrong)}" for key in KEYS}
                text = "".join(entries.values())
                self.defaults.write_bytes(f"<plist><dict>{text}</dict></plist>".encode())
                self.assertTrue(self.shown() == expected, "other pictures")
                with open(self.defaults.path) as file:
                    left = file.read()
                for key in set(KEYS) - set(OWN):
                    self.assertIn(entries[key], left, "what is wrong is left as it is")


if __name__ == "__main__":
    unittest.main()
