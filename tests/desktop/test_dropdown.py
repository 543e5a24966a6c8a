"""The dropdown menu: the desktops' rows, switching and renaming."""

import unittest

from support.dropdown import Dropdown
from support.furniture import hang_wallpaper
from support.processes import wait_until
from support.screen import distance
from support.vembrix import SharedRunTest


class DropdownTest(SharedRunTest):
    def setUp(self):
        super().setUp()
        self.menu = Dropdown(self.program)

    def names(self):
        return self.defaults.read().get("SpaceNames", {})

    def test_opens_with_a_row_per_desktop(self):
        self.menu.open()
        self.assertEqual(self.menu.row_count(), 4)
        self.assertEqual(self.menu.window().read("WM_CLASS"), '"vembrix", "Vembrix"')
        self.menu.key("Escape")
        self.menu.wait_until_closed()

    def test_without_a_compositor_the_edge_is_light_and_the_corners_have_no_specks(self):
        hang_wallpaper(self.desktop)
        self.menu.open()
        x, y, width, height = self.menu.window().frame()
        picture = self.desktop.picture()
        edge = picture.pixel(x + width // 2, y + height - 1)
        ground = picture.pixel(x + width // 2, y + height - 3)
        self.assertTrue(20 < distance(edge, ground) < 80, f"{edge} around {ground}")
        for left in (x, x + width - 8):
            corner = picture.crop(left, y + height - 8, 8, 8)
            self.assertGreater(corner.nearest((0, 0, 0))[1], 100, "darker than the wallpaper")

    def test_a_click_on_a_name_switches(self):
        self.menu.open()
        self.menu.click_row(2)
        self.menu.wait_until_closed()
        wait_until(lambda: self.desktop.current == 2, "the third desktop")

    def test_hovering_tints_the_row_and_shows_the_pencil(self):
        self.menu.open()
        self.menu.point_at(10, 500)
        idle = list(self.menu.row_picture(1).pixels())
        self.menu.hover(1)
        wait_until(lambda: list(self.menu.row_picture(1).pixels()) != idle, "a tint")
        width = self.menu.window().frame()[2]
        row = self.menu.row_picture(1)
        tint = row.pixel(width - 60, 12)
        self.assertNotEqual(tint, self.menu.row_picture(2).pixel(width - 60, 12))
        self.assertNotEqual(row.pixel(width - 26, 7), tint)
        self.menu.point_at(10, 500)
        wait_until(lambda: list(self.menu.row_picture(1).pixels()) == idle, "no tint")

    def test_renames_in_place(self):
        self.menu.open()
        self.menu.click_pencil(0)
        self.menu.type("  Work 🛠 ")
        self.menu.key("Return")
        wait_until(
            lambda: self.names().get("x11-desktop-1") == "Work 🛠",
            lambda: f"the name; there are {self.names()}",
        )
        self.program.wait_for_title("Work 🛠")
        self.assertIsNotNone(self.menu.window())
        self.menu.key("Escape")
        self.menu.wait_until_closed()

    def test_escape_keeps_the_old_name(self):
        self.menu.open()
        self.menu.click_pencil(0)
        self.menu.type("Play")
        self.menu.key("Escape")
        self.assertIsNotNone(self.menu.window())
        self.menu.key("Escape")
        self.menu.wait_until_closed()
        self.assertNotIn("x11-desktop-1", self.names())
        self.assertEqual(self.program.title(), "Desktop 1")

    def test_a_blank_name_brings_the_number_back(self):
        self.menu.open()
        self.menu.click_pencil(0)
        self.menu.type("Play")
        self.menu.key("KP_Enter")
        self.program.wait_for_title("Play")
        self.menu.click_pencil(0)
        self.menu.type("   ")
        self.menu.key("Return")
        self.program.wait_for_title("Desktop 1")
        wait_until(lambda: "x11-desktop-1" not in self.names(), "the name to go")

    def test_desktops_added_while_closed_are_there(self):
        self.menu.open()
        self.menu.key("Escape")
        self.menu.wait_until_closed()
        self.desktop.set_count(6)
        wait_until(lambda: self.desktop.count == 6, "six desktops")
        self.menu.open()
        self.assertEqual(self.menu.row_count(), 6)

    def test_the_keyboard_walks_the_rows(self):
        self.menu.open()
        self.menu.key("Down", "Down", "Return")
        self.menu.wait_until_closed()
        wait_until(lambda: self.desktop.current == 1, "the second desktop")

    def test_control_q_quits(self):
        self.menu.open()
        self.menu.key("ctrl+q")
        self.assertEqual(self.program.process.wait(), 0)


if __name__ == "__main__":
    unittest.main()
