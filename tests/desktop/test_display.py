"""Where there is a display, where there is none, and where it goes away."""

import signal
import unittest

from processes import wait_until
from vembrix import DesktopTest, Vembrix

# How long the program may wait for a window manager; the user may start both at
# the same moment.
PATIENCE = 15


class EndTest(DesktopTest):
    def test_ends_in_order_when_it_is_asked_to(self):
        program = self.launch()
        self.assertEqual(program.end(), 0)
        self.assertEqual(program.lines_besides_tour(), [])

    def test_ends_with_one_line_when_the_display_goes(self):
        for number in (signal.SIGTERM, signal.SIGKILL):
            with self.subTest(number.name):
                program = self.launch()
                self.desktop.end_server(number)
                status = program.process.wait()
                self.assertGreater(status, 0, "a status of its own, not a signal")
                self.assertEqual(len(program.lines_besides_tour()), 1, program.process.output())
                self.desktop.end()
                self.setUp()


class NoWindowManagerTest(DesktopTest):
    window_manager = None

    def test_takes_a_window_manager_that_comes_late(self):
        program = Vembrix(self.desktop)
        self.desktop.start_window_manager("openbox")
        program.wait_for_title("Desktop 1")
        self.desktop.go_to(2)
        program.wait_for_title("Desktop 3")

    def test_does_without_in_the_end(self):
        program = Vembrix(self.desktop)
        program.wait_for_title("Desktop 1", PATIENCE)
        self.assertEqual(len(program.lines_besides_tour()), 1, program.process.output())
        self.assertIn("no window manager", program.lines_besides_tour()[0])
        x, y, width, _ = program.wait_for_strip().frame()
        self.assertEqual((x + width, y), (self.desktop.size[0], 0))
        self.assertEqual(program.end(), 0)

    def test_waits_for_one_where_the_display_is_demanded(self):
        program = self.launch({"VEMBRIX_DESKTOP": "x11"})
        program.wait_for_title("Desktops")
        self.desktop.start_window_manager("openbox")
        program.wait_for_title("Desktop 1")
        self.desktop.go_to(1)
        program.wait_for_title("Desktop 2")


class NoDisplayTest(DesktopTest):
    window_manager = None

    def check_it_runs_without(self, program):
        wait_until(lambda: self.defaults.read().get("KnownSpaceUUIDs"), "its launch")
        self.assertEqual(len(program.lines_besides_tour()), 1, program.process.output())
        self.assertIn("without a screen", program.lines_besides_tour()[0])
        self.assertEqual(program.end(), 0)

    def test_runs_on_the_desktop_in_the_process(self):
        self.check_it_runs_without(Vembrix(self.desktop, {"DISPLAY": ""}))

    def test_a_display_that_does_not_answer_is_none(self):
        self.desktop.end_server()
        self.check_it_runs_without(Vembrix(self.desktop))

    def test_ends_with_one_line_where_a_display_is_demanded(self):
        program = Vembrix(self.desktop, {"DISPLAY": "", "VEMBRIX_DESKTOP": "x11"})
        status = program.process.wait()
        self.assertGreater(status, 0)
        self.assertEqual(len(program.lines_besides_tour()), 1, program.process.output())


class ForcedTest(DesktopTest):
    def test_the_desktop_in_the_process_leaves_the_real_one_alone(self):
        program = Vembrix(self.desktop, {"VEMBRIX_DESKTOP": "embedded"})
        program.wait_for_strip()
        program.wait_for_tour()
        self.assertEqual(self.desktop.current, 0, "the tour was through desktops of its own")
        program.wait_for_title("Desktop 1")
        self.desktop.go_to(2)
        wait_until(lambda: self.desktop.current == 2, "desktop 3")
        self.assertEqual(program.title(), "Desktop 1")
        known = self.defaults.read()["KnownSpaceUUIDs"]
        self.assertFalse([uuid for uuid in known if uuid.startswith("x11-")])
        self.assertEqual(program.end(), 0)


if __name__ == "__main__":
    unittest.main()
