"""The strip's properties for the window manager and other programs."""

import unittest

from support.furniture import open_window
from support.processes import wait_until
from support.vembrix import SharedRunTest

ALL_DESKTOPS = str(0xFFFFFFFF)


class StripTest(SharedRunTest):
    def setUp(self):
        super().setUp()
        self.strip = self.program.strip()

    def test_says_what_it_is(self):
        self.assertEqual(self.strip.read("WM_CLASS"), '"vembrix", "Vembrix"')
        self.assertEqual(self.strip.read("WM_WINDOW_ROLE"), "status-item")
        self.assertEqual(self.strip.read("_NET_WM_WINDOW_TYPE"), "_NET_WM_WINDOW_TYPE_DOCK")

    def test_is_on_all_desktops(self):
        self.assertEqual(self.strip.read("_NET_WM_DESKTOP"), ALL_DESKTOPS)
        for index in range(4):
            self.desktop.go_to(index)
            self.program.wait_for_title(f"Desktop {index + 1}")
            self.assertTrue(self.strip.visible)

    def test_is_no_window_to_switch_to(self):
        state = self.strip.read("_NET_WM_STATE").split(", ")
        self.assertIn("_NET_WM_STATE_SKIP_TASKBAR", state)
        self.assertIn("_NET_WM_STATE_SKIP_PAGER", state)
        self.assertNotEqual(self.desktop.root_property("_NET_ACTIVE_WINDOW"), self.strip.identifier)

    def test_sits_at_the_top_right(self):
        x, y, width, height = self.strip.frame()
        self.assertEqual((x + width, y), (self.desktop.size[0], 0))
        self.assertGreater(width, height)

    def test_reserves_its_place(self):
        x, _, width, height = self.strip.frame()
        strut = [int(n) for n in self.strip.read("_NET_WM_STRUT_PARTIAL").split(", ")]
        top, start, end = strut[2], strut[8], strut[9]
        self.assertEqual(top, height)
        self.assertLessEqual(start, x)
        self.assertGreaterEqual(end, x + width - 1)
        work_area = [int(n) for n in self.desktop.root_property("_NET_WORKAREA").split(", ")]
        self.assertEqual(work_area[1], height)

    def test_there_is_one(self):
        roles = [w.read("WM_WINDOW_ROLE") for w in self.desktop.windows_of_class("vembrix")]
        self.assertEqual(roles.count("status-item"), 1)

    def test_a_window_that_fills_the_screen_covers_it(self):
        open_window(self.desktop, "xterm", "-title", "All", "-bg", "#102030")
        self.desktop.run("wmctrl", "-r", "All", "-b", "add,fullscreen")
        x, y, width, height = self.strip.frame()
        wait_until(
            lambda: self.desktop.picture().pixel(x + width - 3, y + height // 2) == (16, 32, 48),
            "the window over the status item",
        )

    def test_cannot_be_closed(self):
        self.desktop.run("wmctrl", "-i", "-c", self.strip.identifier)
        self.desktop.go_to(1)
        self.program.wait_for_title("Desktop 2")
        self.assertTrue(self.strip.visible)
        self.test_sits_at_the_top_right()

    def test_comes_back_when_it_is_unmapped(self):
        frame, identifier = self.strip.frame(), self.strip.identifier
        self.desktop.run("xdotool", "windowunmap", identifier)
        wait_until(lambda: self.strip.read("WM_WINDOW_ROLE") is None, "the window to be made anew")
        self.strip = self.program.wait_for_strip()
        self.assertEqual(self.strip.frame(), frame)
        self.test_says_what_it_is()
        self.test_is_on_all_desktops()
        self.test_is_no_window_to_switch_to()

    def test_is_dragged_along_the_edge_and_home_again(self):
        home = self.strip.frame()
        self.drag(-400)
        x, y, width, height = home
        moved = (x - 400, y, width, height)
        wait_until(lambda: self.strip.frame() == moved, "the strip to be where it was dragged")
        self.program.end()
        self.program = self.launch()
        self.strip = self.program.strip()
        self.assertEqual(self.strip.frame(), moved, "also the next time")
        self.drag(395)
        wait_until(lambda: self.strip.frame() == home, "the strip to be at home")
        wait_until(lambda: "LinuxStatusItemPlaces" not in self.defaults.read(), "no stored place")

    def drag(self, distance):
        x, y, width, height = self.strip.frame()
        middle, row = x + width // 2, y + height // 2
        steps = ["mousemove", middle, row, "mousedown", 1]
        for part in (1, 2, 3, 4):
            steps += ["mousemove", middle + distance * part // 4, row + 3, "sleep", "0.05"]
        self.desktop.run("xdotool", *map(str, steps), "mouseup", "1")


if __name__ == "__main__":
    unittest.main()
