"""The settings window: opened, operated by keyboard and mouse, and closed."""

import json
import os
import stat
import time
import unittest

from support.preferences import Preferences
from support.processes import wait_until
from support.screen import distance, rgb
from test_settings import WRONG_TYPES
from support.vembrix import PINK, TOLERANCE, DesktopTest, SharedRunTest

ALPINE = rgb(0.96, 0.965, 0.973)
CORAL = rgb(0.1, 0.1, 0.11)
PAPER = rgb(1, 1, 1)
STOCK = (236, 236, 236)


def read(path):
    """The file's text; empty when there is no file."""
    try:
        with open(path) as file:
            return file.read()
    except FileNotFoundError:
        return ""


class PreferencesTest(SharedRunTest):
    @classmethod
    def launch(cls, environment=None):
        # Makes a test's tools take precedence over others of the same names.
        path = f"{cls.desktop.path('tools')}:{os.environ['PATH']}"
        return super().launch({"PATH": path, **(environment or {})})

    def setUp(self):
        super().setUp()
        self.preferences = Preferences(self.program)

    def wait_for(self, key, value):
        wait_until(
            lambda: self.defaults.read().get(key) == value,
            lambda: f"{key} = {value!r}; it is {self.defaults.read().get(key)!r}",
        )

    def wait_for_ground(self, color):
        # A point below the title bar without a control.
        wait_until(
            lambda: distance(self.preferences.picture().pixel(3, 3), color) <= TOLERANCE,
            lambda: f"the ground {color}; it is {self.preferences.picture().pixel(3, 3)}",
        )

    def press(self, tab, control, *keys):
        self.preferences.show_tab(tab)
        self.preferences.focus(control)
        self.preferences.key(*keys)

    def test_the_command_brings_an_open_one_to_the_desktop_that_is_seen(self):
        self.preferences.choose()
        self.desktop.go_to(2)
        self.program.wait_for_title("Desktop 3")
        wait_until(lambda: self.preferences.window() is None, "the other desktop's window to go")
        self.preferences.choose()
        self.assertEqual(self.preferences.window().read("_NET_WM_DESKTOP"), "2")
        self.assertEqual(self.desktop.current, 2)
        # Openbox 3.6 crashes when a window ends that may still be flashing.
        time.sleep(1)

    def test_the_command_opens_it(self):
        self.preferences.choose()
        window = self.preferences.window()
        self.assertEqual(window.read("WM_CLASS"), '"vembrix", "Vembrix"')
        self.assertEqual(window.name, "Vembrix Preferences")
        x, y, width, height = window.frame()
        self.assertEqual((width, height), (600, 520))
        self.assertLess(abs(x + width / 2 - self.desktop.size[0] / 2), 20)
        self.assertLess(abs(y + height / 2 - self.desktop.size[1] / 2), 40)
        self.wait_for_ground(ALPINE)

    def test_escape_and_the_system_key_close_it(self):
        for key in ("Escape", "ctrl+w"):
            self.preferences.open()
            self.preferences.key(key)
            self.preferences.wait_until_closed()

    def test_can_neither_be_resized_nor_minimised(self):
        self.preferences.open()
        # The window's own request. Some window managers minimise windows without one.
        hints = self.preferences.window().read("_MOTIF_WM_HINTS").split(", ")
        functions, decorations = int(hints[1], 16), int(hints[2], 16)
        minimise, maximise, close = 1 << 3, 1 << 4, 1 << 5
        self.assertEqual(functions & (minimise | maximise | close), close)
        title, minimise_button, maximise_button = 1 << 3, 1 << 5, 1 << 6
        self.assertEqual(decorations & (title | minimise_button | maximise_button), title)
        actions = self.preferences.window().read("_NET_WM_ALLOWED_ACTIONS").split(", ")
        self.assertNotIn("_NET_WM_ACTION_RESIZE", actions)
        self.assertIn("_NET_WM_ACTION_CLOSE", actions)

    def test_the_label_tab(self):
        self.preferences.open()
        self.press("Label", 0, "End")
        self.wait_for("SignTextSize", 300)
        self.press("Label", 0, "Home")
        self.wait_for("SignTextSize", 60)
        self.press("Label", 1, "End")
        self.wait_for("SignSwipeAlpha", 1)
        for place, key in ((2, "ShowSignInSwipeMode"), (3, "ShowSignAfterSelection")):
            self.press("Label", place, "space")
            self.wait_for(key, False)
            self.press("Label", place, "space")
            self.wait_for(key, True)
        self.press("Label", 4, "space")
        self.wait_for("HeatMapSigns", False)
        self.press("Label", 5, "End")
        wait_until(
            lambda: self.defaults.read().get("HeatPaletteName") not in (None, "Ember"),
            "another heat palette",
        )

    def test_the_colors_tab(self):
        self.preferences.open()
        self.press("Colors", 0, "Home")
        self.wait_for("ColorMode", "colorForeground")
        self.press("Colors", 0, "End")
        self.wait_for("ColorMode", "colorBackground")
        self.press("Colors", 1, "End")
        wait_until(lambda: "SpaceColors" in self.defaults.read(), "colours of a palette")

    def test_the_dialog_of_a_well_changes_the_colour_at_once(self):
        self.open_dialog()
        self.pick("#00ff00")
        self.program.wait_for_fill((0, 255, 0))
        self.preferences.key("Return")
        self.wait_until_dialog_closed()
        wait_until(lambda: "SpaceColors" in self.defaults.read(), "the stored colour")
        colors = json.loads(self.defaults.read()["SpaceColors"])
        self.assertEqual(colors["x11-desktop-1"]["background"]["green"], 1)

    def test_escape_in_the_dialog_brings_the_former_colour_back(self):
        self.open_dialog()
        self.pick("#00ff00")
        self.program.wait_for_fill((0, 255, 0))
        self.preferences.key("Escape")
        self.wait_until_dialog_closed()
        self.program.wait_for_fill(PINK)

    def test_the_dialog_stands_beside_the_settings(self):
        self.open_dialog()
        left, _, width, _ = self.preferences.window().frame()
        x, y, dialog_width, height = self.dialog().frame()
        self.assertGreaterEqual(x, left + width)
        self.assertLessEqual(x + dialog_width, self.desktop.size[0])
        self.assertLessEqual(y + height, self.desktop.size[1])
        kinds = self.dialog().read("_NET_WM_WINDOW_TYPE").split(", ")
        self.assertEqual(kinds[0], "_NET_WM_WINDOW_TYPE_DIALOG")
        self.assertIn(self.preferences.window().identifier, self.dialog().read("WM_TRANSIENT_FOR"))
        self.assertIn("_NET_WM_STATE_SKIP_TASKBAR", self.dialog().read("_NET_WM_STATE"))
        self.preferences.key("Escape")
        self.wait_until_dialog_closed()

    def open_dialog(self):
        """Opens the dialog of the first desktop's well."""
        self.preferences.open()
        self.press("Colors", 2, "space")
        wait_until(self.dialog, "the dialog for colours")
        wait_until(lambda: self.is_active(self.dialog()), "the keyboard in the dialog")

    def pick(self, color):
        # The dialog's field for the colour's name.
        self.preferences.key("alt+h")
        self.preferences.key("ctrl+a")
        self.desktop.run("xdotool", "type", "--delay", "20", color)

    def wait_until_dialog_closed(self):
        wait_until(lambda: self.dialog() is None, "the dialog to close")
        wait_until(
            lambda: self.is_active(self.preferences.window()), "the keyboard in the settings"
        )

    def is_active(self, window):
        active = self.desktop.root_property("_NET_ACTIVE_WINDOW")
        return int(active.split()[-1], 16) == int(window.identifier, 16)

    def dialog(self):
        for window in self.desktop.windows_of_class("vembrix"):
            if window.visible and window.read("WM_WINDOW_ROLE") == "color-dialog":
                return window
        return None

    def test_the_menu_bar_tab(self):
        self.preferences.open()
        self.press("Menu Bar", 0, "End")
        self.wait_for("MenuBarWidthMode", "maxTitleLength")
        self.press("Menu Bar", 0, "Home")
        self.wait_for("MenuBarWidthMode", "fitToTitle")
        self.press("Menu Bar", 2, "space")
        wait_until(lambda: "InstantMenuSwitch" in self.defaults.read(), "the switch's setting")
        self.press("Menu Bar", 1, "space")
        self.wait_for("ShowSpaceNameInMenuBar", False)

    def test_a_theme_shows_at_once_and_stays_on_its_tab(self):
        self.preferences.open()
        self.press("Theme", 0, "Down")
        self.wait_for("ThemeName", "Coral")
        self.wait_for_ground(CORAL)
        # The keyboard is still on the popup.
        self.preferences.key("Down")
        self.wait_for("ThemeName", "Paper")
        self.wait_for_ground(PAPER)
        self.preferences.key("Home")
        self.wait_for("ThemeName", "Stock")
        self.wait_for_ground(STOCK)

    def test_the_about_tab_opens_the_website(self):
        opened = self.desktop.path("opened")
        self.put_tool("xdg-open", f'echo "$1" > {opened}')
        self.preferences.open()
        self.press("About", 2, "space")
        wait_until(lambda: read(opened).startswith("https://"), "the website's address")

    def test_copies_the_log_and_the_command(self):
        self.put_tool("journalctl", 'echo "$@"; echo; echo second')
        self.preferences.open()
        self.press("Diagnostics", 0, "space")
        expected = "--identifier=Vembrix --since=-10min --output=short-iso\n\nsecond\n"
        wait_until(lambda: self.clipboard() == expected, lambda: f"the log; {self.clipboard()!r}")
        self.press("Diagnostics", 2, "space")
        command = f"journalctl {expected.splitlines()[0]}"
        wait_until(lambda: self.clipboard() == command, lambda: f"it; {self.clipboard()!r}")

    def clipboard(self):
        try:
            return self.desktop.run("xclip", "-selection", "clipboard", "-out")
        except AssertionError:
            return None

    def put_tool(self, name, script):
        """Puts a program before all others of that name until the test's end."""
        folder = self.desktop.path("tools")
        os.makedirs(folder, exist_ok=True)
        path = os.path.join(folder, name)
        with open(path, "w") as file:
            file.write(f"#!/bin/sh\n{script}\n")
        os.chmod(path, stat.S_IRWXU)
        self.addCleanup(os.remove, path)


class StoredPreferencesTest(DesktopTest):
    desktops = 1

    def test_opens_with_the_defaults_where_every_type_is_wrong(self):
        self.defaults.write(WRONG_TYPES)
        program = self.launch()
        preferences = Preferences(program)
        preferences.open()
        wait_until(
            lambda: distance(preferences.picture().pixel(3, 3), ALPINE) <= TOLERANCE,
            "the default theme",
        )


class LargeScalePreferencesTest(DesktopTest):
    def test_fits_on_a_screen_that_is_too_small_for_it(self):
        self.program = self.launch({"QT_SCALE_FACTOR": "2"})
        x, y, width, height = self.program.strip().frame()
        self.desktop.run(
            *f"xdotool mousemove {x + width // 2} {y + height // 2} click 1 key ctrl+comma".split()
        )
        _, y, width, height = self.program.wait_for_settings().frame()
        self.assertEqual(width, 1200)
        # Below the strip and the window's title bar.
        self.assertGreaterEqual(y, 48 + 16)
        self.assertLessEqual(y + height, self.desktop.size[1])


if __name__ == "__main__":
    unittest.main()
