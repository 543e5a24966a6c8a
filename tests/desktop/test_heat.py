"""Work in other programs is noticed; everything else is not."""

import time
import unittest

from support.processes import wait_until
from support.vembrix import SharedRunTest

# Longer than the program takes to store what it noticed.
QUIET = 0.5


class HeatTest(SharedRunTest):
    # The program reads the setting once.
    kept_settings = ("SpaceHeatRecency",)

    def setUp(self):
        super().setUp()
        # The user worked on the last desktop before.
        self.point_at_other_program()
        self.go_to(4)
        self.do("click", 1)
        self.wait_for_recency(4)
        self.go_to(1)
        self.desktop.start(["xev", "-geometry", "400x300+100+200"])
        self.other = wait_until(self.other_program, "another program's window")
        self.focus_other_program()
        self.before = self.recency()

    def do(self, *words):
        self.desktop.run("xdotool", *map(str, words))

    def point_at_other_program(self):
        self.do("mousemove", 300, 400)

    def focus_other_program(self):
        self.do("windowfocus", "--sync", self.other)

    def other_program(self):
        """Its window; None while there is none."""
        for window in self.desktop.clients():
            if window.read("WM_NAME") == "Event Tester" and window.visible:
                return window.identifier
        return None

    def recency(self):
        return self.defaults.read().get("SpaceHeatRecency", [])

    def wait_for_recency(self, *numbers):
        """The desktops on which the user worked last."""
        wanted = [f"x11-desktop-{number}" for number in numbers]
        wait_until(
            lambda: self.recency()[: len(wanted)] == wanted,
            lambda: f"{wanted} in front; it is {self.recency()}",
        )

    def check_nothing_is_noticed(self):
        time.sleep(QUIET)
        self.assertEqual(self.recency(), self.before)

    def go_to(self, number):
        self.desktop.go_to(number - 1)
        self.program.wait_for_title(f"Desktop {number}")

    def test_a_click_in_another_program(self):
        self.do("click", 1)
        self.wait_for_recency(1)
        self.go_to(2)
        self.do("click", 2)
        self.wait_for_recency(2, 1, 4)
        self.go_to(3)
        self.do("click", 3)
        self.wait_for_recency(3, 2, 1, 4)

    def test_a_key_in_another_program(self):
        self.do("key", "a")
        self.wait_for_recency(1)

    def test_the_last_desktop_is_in_front(self):
        for number, recency in ((1, (1, 4)), (2, (2, 1, 4)), (4, (4, 2, 1)), (1, (1, 4, 2))):
            self.go_to(number)
            self.do("click", 1)
            self.wait_for_recency(*recency)
        self.assertEqual(len(self.recency()), len(set(self.recency())), "each is there once")

    def test_movement_is_no_work(self):
        self.do("mousemove", 350, 420)
        self.do("mousemove", 900, 700)
        self.check_nothing_is_noticed()

    def test_scrolling_is_no_work(self):
        for button in (4, 5, 6, 7):
            self.do("click", button)
        self.check_nothing_is_noticed()

    def test_a_click_on_the_status_item_is_no_work(self):
        x, y, width, height = self.program.strip().frame()
        self.do("mousemove", x + width // 2, y + height // 2, "click", 1)
        self.do("click", 3)
        self.check_nothing_is_noticed()

    def test_the_order_outlives_the_program(self):
        self.do("click", 1)
        self.wait_for_recency(1)
        self.go_to(3)
        self.do("click", 1)
        self.wait_for_recency(3, 1)
        self.assertEqual(self.program.end(), 0)
        type(self).program = self.launch()
        self.go_to(2)
        self.do("click", 1)
        self.wait_for_recency(2, 3, 1)


if __name__ == "__main__":
    unittest.main()
