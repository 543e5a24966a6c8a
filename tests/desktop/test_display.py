"""Where there is a display, where there is none, and where it goes away."""

import contextlib
import re
import signal
import time
import unittest

from support.processes import wait_until
from support.vembrix import DesktopTest, Vembrix


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
                self.desktop.tidy()


class NoWindowManagerTest(DesktopTest):
    window_manager = None

    def test_takes_a_window_manager_that_comes_late(self):
        program = Vembrix(self.desktop)
        self.desktop.start_window_manager("openbox")
        program.wait_for_title("Desktop 1")
        self.desktop.go_to(2)
        program.wait_for_title("Desktop 3")

    def test_waits_for_one_for_as_long_as_it_takes(self):
        program = self.launch()
        program.wait_for_title("Desktops")
        x, y, width, _ = program.wait_for_strip().frame()
        self.assertEqual((x + width, y), (self.desktop.size[0], 0))
        # Longer than any time-out of the program.
        time.sleep(5)
        self.assertEqual(program.title(), "Desktops")
        self.desktop.start_window_manager("openbox")
        program.wait_for_title("Desktop 1")
        self.desktop.go_to(1)
        program.wait_for_title("Desktop 2")
        self.assertEqual(program.lines_besides_tour(), [])
        self.assertEqual(program.end(), 0)


class NoDesktopsTest(DesktopTest):
    window_manager = None

    def check_it_ends_with_one_line(self, program):
        self.assertEqual(program.process.wait(), 1)
        self.assertEqual(len(program.log_lines()), 1, program.process.output())
        self.assertIn("X11 session", program.log_lines()[0])

    def test_ends_where_there_is_no_display(self):
        self.check_it_ends_with_one_line(Vembrix(self.desktop, {"DISPLAY": ""}))

    def test_a_display_that_does_not_answer_is_none(self):
        self.desktop.end_server()
        self.check_it_ends_with_one_line(Vembrix(self.desktop))

    def test_ends_where_the_compositor_of_a_wayland_session_has_no_desktops(self):
        log = self.desktop.path("weston.txt")
        self.desktop.start(
            ["weston", "--backend=headless-backend.so", "--xwayland", "--idle-time=0",
             f"--log={log}"],
        )  # fmt: skip

        def display():
            with contextlib.suppress(FileNotFoundError), open(log, encoding="utf-8") as file:
                return re.search(r"listening on display (:\d+)", file.read())
            return None

        number = wait_until(display, "Xwayland")[1]
        self.check_it_ends_with_one_line(Vembrix(self.desktop, {"DISPLAY": number}))

    def test_runs_without_a_display_on_the_desktop_in_the_process(self):
        program = Vembrix(self.desktop, {"DISPLAY": "", "VEMBRIX_DESKTOP": "embedded"})
        wait_until(lambda: self.defaults.read().get("KnownSpaceUUIDs"), "its launch")
        self.assertEqual(program.lines_besides_tour(), [])
        self.assertEqual(program.end(), 0)


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
        self.assertEqual(program.end(), 0)
        known = self.defaults.read()["KnownSpaceUUIDs"]
        self.assertFalse([uuid for uuid in known if uuid.startswith("x11-")])


if __name__ == "__main__":
    unittest.main()
