"""Starting the program while it runs: one program per display, whose dropdown opens."""

import unittest

from support.dropdown import Dropdown
from support.processes import wait_until
from support.vembrix import DesktopTest, Vembrix


class AgainTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.defaults.write({"SpaceNames": {"x11-desktop-2": "Mail", "x11-desktop-4": "Music"}})
        self.program = self.launch()
        self.menu = Dropdown(self.program)

    def start_again(self):
        """Starts the program again, as a key bound to it does."""
        again = Vembrix(self.desktop)
        self.assertEqual(again.process.wait(), 0)
        self.assertEqual(len(again.log_lines()), 1, again.process.output())
        wait_until(self.has_keyboard, "the open menu to have the keyboard")

    def has_keyboard(self):
        window = self.menu.window()
        return window and int(self.focus()) == int(window.identifier, 16)

    def focus(self):
        """The window with the keyboard focus."""
        return self.desktop.run("xdotool", "getwindowfocus")

    def strips(self):
        windows = self.desktop.windows_of_class("vembrix")
        return [w for w in windows if w.read("WM_WINDOW_ROLE") == "status-item"]

    def wait_for_active_window(self):
        none = ("0x0", None)
        wait_until(
            lambda: self.desktop.root_property("_NET_ACTIVE_WINDOW") not in none,
            "a window that is active",
        )

    def test_a_second_start_opens_the_dropdown_of_the_first_and_ends(self):
        self.start_again()
        self.assertEqual(self.menu.row_count(), 4)
        self.assertEqual(len(self.strips()), 1)
        self.assertTrue(self.program.process.running)
        # A second time while the menu is open: it stays open.
        self.start_again()
        self.menu.key("Escape")
        self.menu.wait_until_closed()

    def test_the_keys_choose_a_row(self):
        for keys, desktop in (
            (("Down", "Down", "Return"), 1),
            (("3",), 2),
            (("m", "Return"), 1),
            (("m", "m", "Return"), 3),
            (("m", "a", "Return"), 1),
            (("d", "Return"), 0),
            (("Up", "Escape"), 0),
            (("9", "Escape"), 0),
        ):
            with self.subTest(keys=keys):
                self.start_again()
                self.menu.key(*keys)
                self.menu.wait_until_closed()
                wait_until(
                    lambda: self.desktop.current == desktop,
                    lambda: f"desktop {desktop}; it is {self.desktop.current}",
                )

    def test_the_keys_reach_the_dropdown_while_the_bound_key_is_still_held(self):
        self.desktop.start(["xev", "-event", "keyboard"])
        self.wait_for_active_window()
        # A window manager that runs a command for a key keeps the keyboard until the key is
        # released.
        self.desktop.run("xdotool", "keydown", "super+F9")
        self.start_again()
        self.desktop.run("xdotool", "keyup", "super+F9")
        self.menu.key("2")
        wait_until(lambda: self.desktop.current == 1, "the second desktop")

    def test_the_keyboard_goes_back_to_the_window_that_had_it(self):
        self.desktop.start(["xev", "-event", "keyboard"])
        self.wait_for_active_window()
        before = self.focus()
        self.start_again()
        self.menu.key("Escape")
        self.menu.wait_until_closed()
        wait_until(
            lambda: self.focus() == before,
            "the focus where it was",
        )

    def test_a_program_that_was_killed_is_no_obstacle(self):
        self.program.process.popen.kill()
        self.program.process.wait()
        program = self.launch()
        self.assertTrue(program.process.running)
        self.assertEqual(program.lines_besides_tour(), [])


if __name__ == "__main__":
    unittest.main()
