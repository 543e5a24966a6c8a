"""The tour through all desktops, shortly after the start."""

import re
import time
import unittest

from support.processes import wait_until
from support.vembrix import DesktopTest, Vembrix

# The time from the launch to the end of the first swipe.
DELAY = 1.5


class TourTest(DesktopTest):
    def watch_desktops(self):
        """Starts to record the current desktop; returns the growing list."""
        spy = self.desktop.start(
            ["xprop", "-spy", "-root", "-notype", "_NET_CURRENT_DESKTOP"],
        )

        def seen():
            return [int(number) for number in re.findall(r"= (\d+)", spy.output())]

        wait_until(seen, "the current desktop")
        return seen

    def start_on(self, index):
        self.desktop.go_to(index)
        wait_until(lambda: self.desktop.current == index, f"desktop {index + 1}")

    def check_tour(self, way, lines):
        seen = self.watch_desktops()
        program = self.launch()
        wait_until(lambda: len(seen()) >= len(way), lambda: f"the way {way}; it was {seen()}")
        time.sleep(0.5)  # It does not go on.
        self.assertEqual(seen(), way)
        self.assertEqual(program.log_lines(), lines)
        program.wait_for_title(f"Desktop {way[0] + 1}")

    def test_goes_out_and_back_and_home(self):
        self.start_on(1)
        self.check_tour(
            [1, 2, 3, 2, 1, 0, 1], ["[Vembrix] tour start: 6 steps", "[Vembrix] tour end"]
        )

    def test_from_the_first_desktop(self):
        self.check_tour(
            [0, 1, 2, 3, 2, 1, 0], ["[Vembrix] tour start: 6 steps", "[Vembrix] tour end"]
        )

    def test_from_the_last_desktop(self):
        self.start_on(3)
        self.check_tour(
            [3, 2, 1, 0, 1, 2, 3], ["[Vembrix] tour start: 6 steps", "[Vembrix] tour end"]
        )

    def test_begins_a_while_after_the_launch(self):
        begin = time.monotonic()
        program = Vembrix(self.desktop)
        wait_until(program.log_lines, "the beginning of the tour")
        self.assertGreaterEqual(time.monotonic() - begin, DELAY)
        self.assertEqual(self.desktop.current, 0)


class OtherWindowManagerTest(TourTest):
    window_manager = "icewm"


class OneDesktopTest(DesktopTest):
    desktops = 1

    def test_there_is_nothing_to_tour(self):
        program = self.launch()
        time.sleep(2 * DELAY)
        self.assertEqual(program.log_lines(), [])


if __name__ == "__main__":
    unittest.main()
