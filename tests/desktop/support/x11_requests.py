"""Records a program's requests to its X server, as a proxy between the two."""

import os
import time
from collections import Counter

from support.desktop import HERE, SYSTEM_PYTHON
from support.processes import wait_until

# Names of the requests of a running program. Others are shown by number.
CORE_NAMES = {
    1: "CreateWindow", 2: "ChangeWindowAttributes", 4: "DestroyWindow", 8: "MapWindow",
    10: "UnmapWindow", 12: "ConfigureWindow", 14: "GetGeometry", 15: "QueryTree",
    16: "InternAtom", 18: "ChangeProperty", 19: "DeleteProperty", 20: "GetProperty",
    25: "SendEvent", 38: "QueryPointer", 40: "TranslateCoordinates", 43: "GetInputFocus",
    53: "CreatePixmap", 54: "FreePixmap", 72: "PutImage", 98: "QueryExtension",
}  # fmt: skip


class RequestLog:
    """Serves a desktop's display at another address and records the requests."""

    def __init__(self, desktop):
        self._process = desktop.start(
            [SYSTEM_PYTHON, "-B", os.path.join(HERE, "x11_proxy.py")],
        )
        number = wait_until(lambda: self._lines()[:1], "the display to be served once more")[0]
        self.environment = {"DISPLAY": f":{number}"}

    def _lines(self):
        # The last line may be incomplete.
        return self._process.output().split("\n")[:-1]

    def between(self, begin, end):
        """The number of requests of each kind between two times of time.monotonic()."""
        kinds = Counter()
        for line in self._lines()[1:]:
            moment, _, major, minor = line.split()
            if begin <= float(moment) <= end:
                major = int(major)
                kinds[CORE_NAMES.get(major, f"{major}" if major < 128 else f"{major}.{minor}")] += 1
        return kinds

    def during(self, seconds):
        begin = time.monotonic()
        time.sleep(seconds)
        return self.between(begin, begin + seconds)

    def wait_until_quiet(self, seconds=1.0):
        """Waits until no request was sent for that long."""
        wait_until(lambda: not self.during(seconds), "nothing to be asked any more")


def processor_times(pid):
    """By thread, in seconds and by the scheduler's own clock: the ticks of
    /proc/PID/stat are as long as all that a program at rest does in a second."""
    times = {}
    for thread in os.listdir(f"/proc/{pid}/task"):
        with open(f"/proc/{pid}/task/{thread}/schedstat", encoding="ascii") as file:
            times[thread] = int(file.read().split()[0]) / 1e9
    return times


def processor_time(pid, since):
    """The processor time of the living threads since processor_times() returned `since`."""
    return sum(
        seconds - since.get(thread, 0) for thread, seconds in processor_times(pid).items()
    )
