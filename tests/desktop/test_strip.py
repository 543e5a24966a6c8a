"""What the strip tells the window manager and other programs of itself."""

import unittest

from vembrix import SharedRunTest

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


if __name__ == "__main__":
    unittest.main()
