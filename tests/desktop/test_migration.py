"""Settings of the former preferences domain are taken over once."""

import unittest

from support.vembrix import Defaults, DesktopTest


class MigrationTest(DesktopTest):
    desktops = 1

    def setUp(self):
        super().setUp()
        self.legacy = Defaults(self.desktop, Defaults.LEGACY)

    def migrations(self, program):
        return [line for line in program.log_lines() if "migrated" in line]

    def test_takes_settings_over_once(self):
        self.legacy.write(
            {"SpaceNames": {"x11-desktop-1": "Old"}, "SignTextSize": 90.5, "HeatMapSigns": False}
        )
        program = self.launch()
        program.wait_for_title("Old")
        self.assertEqual(
            self.migrations(program), ["[Vembrix] migrated 3 settings from legacy domain"]
        )
        self.assertEqual(program.end(), 0)
        stored = self.defaults.read()
        self.assertEqual(stored["SignTextSize"], 90.5)
        self.assertIs(stored["HeatMapSigns"], False)
        self.assertIs(stored["DidMigrateLegacyDefaults"], True)

        self.legacy.write({"SpaceNames": {"x11-desktop-1": "Newer"}, "ThemeName": "Coral"})
        program = self.launch()
        program.wait_for_title("Old")
        self.assertEqual(self.migrations(program), [])
        self.assertNotIn("ThemeName", self.defaults.read())

    def test_settings_under_the_new_name_win(self):
        self.legacy.write({"SpaceNames": {"x11-desktop-1": "Old"}})
        self.defaults.write({"SpaceNames": {"x11-desktop-1": "New"}})
        program = self.launch()
        program.wait_for_title("New")
        self.assertEqual(
            self.migrations(program), ["[Vembrix] migrated 1 settings from legacy domain"]
        )

    def test_says_nothing_where_there_is_nothing(self):
        program = self.launch()
        program.wait_for_title("Desktop 1")
        self.assertEqual(program.log_lines(), [])
        self.assertEqual(program.end(), 0)
        self.assertIs(self.defaults.read()["DidMigrateLegacyDefaults"], True)


if __name__ == "__main__":
    unittest.main()
