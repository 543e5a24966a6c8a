"""At rest the program asks the X server nothing, however often its timers fire."""

import time
import unittest

from labels import Labels
from processes import wait_until
from vembrix import DesktopTest, Vembrix
from x11_requests import RequestLog

# Longer than all periods: the longest is that of the labels' places.
WATCHED = 6


class RestTest(DesktopTest):
    compositor = True

    def test_nothing_is_asked(self):
        self.desktop.run("xdotool", "mousemove", "720", "860")
        log = RequestLog(self.desktop)
        program = Vembrix(self.desktop, log.environment)
        program.wait_for_tour()
        Labels(program).wait_for_rest(4, "Desktop 1")
        log.wait_until_quiet()
        self.assertEqual(log.during(WATCHED), {})
        # The log sees what there is.
        begin = time.monotonic()
        self.desktop.go_to(1)
        wait_until(lambda: log.between(begin, time.monotonic()), "the requests of a switch")


class IcewmTest(RestTest):
    window_manager = "icewm"


class WithoutCompositorTest(RestTest):
    compositor = False


if __name__ == "__main__":
    unittest.main()
