"""At rest the program asks the X server nothing, however often its timers fire."""

import time
import unittest

from support.labels import Labels
from support.processes import wait_until
from support.vembrix import DesktopTest, Vembrix
from support.x11_requests import RequestLog

# Longer than the longest period, that of the check of the labels' Spaces.
WATCHED = 6


class RestTest(DesktopTest):
    compositor = True

    def test_nothing_is_asked(self):
        self.desktop.run("xdotool", "mousemove", "720", "860")
        log = RequestLog(self.desktop)
        program = Vembrix(self.desktop, log.environment)
        program.wait_for_tour()
        Labels(program).wait_for_rest()
        log.wait_until_quiet()
        self.assertEqual(log.during(WATCHED), {})
        # The requests at the start show that the log works.
        begin = time.monotonic()
        self.desktop.go_to(1)
        wait_until(lambda: log.between(begin, time.monotonic()), "the requests of a switch")
        self.check_showing(program, log)

    def check_showing(self, program, log):
        """A label shown before costs its mapping, its unmapping and, where a compositor
        fades it, its opacity: it is not painted again."""
        labels = Labels(program)
        for index in (0, 1, 0):
            self.desktop.go_to(index)
            program.wait_for_title(f"Desktop {index + 1}")
            log.wait_until_quiet()
        begin = time.monotonic()
        self.desktop.go_to(1)
        program.wait_for_title("Desktop 2")
        log.wait_until_quiet()
        labels.wait_for_rest()
        asked = log.between(begin, time.monotonic())
        self.assertEqual((asked["MapWindow"], asked["UnmapWindow"]), (1, 1), asked)
        pictures = asked["CreateWindow"] + asked["CreatePixmap"] + asked["PutImage"]
        self.assertEqual(pictures, 0, asked)
        # Without the requests for the strip's name.
        self.assertLess(asked["ChangeProperty"], 60 if self.compositor else 12, asked)


class IcewmTest(RestTest):
    window_manager = "icewm"


class WithoutCompositorTest(RestTest):
    compositor = False


if __name__ == "__main__":
    unittest.main()
