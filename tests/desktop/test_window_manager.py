"""The program outlives the window manager and works with its successor."""

import unittest

from support.vembrix import BLUE, DesktopTest


class WindowManagerTest(DesktopTest):
    def check_it_works(self, program):
        """After a window manager has come: the list is there, the strip docked."""
        strip = program.wait_for_strip()
        self.desktop.go_to(0)
        program.wait_for_title("Desktop 1")
        self.desktop.go_to(1)
        program.wait_for_title("Desktop 2")
        program.wait_for_fill(BLUE)
        self.assertEqual(strip.read("_NET_WM_WINDOW_TYPE"), "_NET_WM_WINDOW_TYPE_DOCK")
        x, y, width, _ = strip.frame()
        self.assertEqual((x + width, y), (self.desktop.size[0], 0))
        self.desktop.set_count(5)
        self.desktop.go_to(4)
        program.wait_for_title("Desktop 5")
        # The window may have been created again for the new window manager.
        self.assertTrue(program.wait_for_strip().visible)

    def test_survives_the_crash_of_the_window_manager(self):
        program = self.launch()
        self.desktop.go_to(2)
        program.wait_for_title("Desktop 3")
        self.desktop.kill_window_manager()
        # Properties that a dead window manager left on the root window are out of
        # date.
        program.wait_for_title("Desktops")
        self.assertTrue(program.strip().visible)
        self.desktop.start_window_manager("openbox")
        self.check_it_works(program)

    def test_takes_another_window_manager_in_its_place(self):
        program = self.launch()
        program.wait_for_title("Desktop 1")
        self.desktop.kill_window_manager()
        self.desktop.start_window_manager("icewm")
        self.check_it_works(program)

    def test_survives_two_crashes(self):
        program = self.launch()
        for _ in range(2):
            self.desktop.kill_window_manager()
            self.desktop.start_window_manager("openbox")
        self.check_it_works(program)


class OtherWindowManagerTest(WindowManagerTest):
    window_manager = "icewm"


if __name__ == "__main__":
    unittest.main()
