"""Measures Vembrix at rest: what it asks of the X server, and the processor time
it takes beside that of a bare Qt program with the same two timers.

Usage: idle.py PROGRAM BARE_PROGRAM [SECONDS]

Status 1 where anything is asked or the ratio is above the limit.
"""

import os
import signal
import sys
import time

from desktop import Desktop
from processes import wait_until
from vembrix import Vembrix
from x11_requests import RequestLog, processor_time, processor_times

RATIO_LIMIT = 1.5
SECONDS = 60
# It ends after 20 s at the latest, however many desktops there are.
TOUR_LIMIT = 30
# At the start fonts, plug-ins and the session bus still have their say.
SETTLING = 5


def visit_all(desktop, program, count):
    """The tour stops after its 20 s: so that each desktop has its label."""
    for index in [*range(count), 0]:
        desktop.go_to(index)
        program.wait_for_title(f"Desktop {index + 1}")


def measure(count, bare_program, seconds):
    with Desktop(desktops=count, compositor=True) as desktop:
        desktop.run("xdotool", "mousemove", "720", "860")
        log = RequestLog(desktop)
        program = Vembrix(desktop, log.environment)
        program.wait_for_strip()
        wait_until(
            lambda: "[Vembrix] tour end" in program.log_lines(), "the end of the tour", TOUR_LIMIT
        )
        visit_all(desktop, program, count)
        bare = desktop.start([bare_program])
        time.sleep(SETTLING)
        log.wait_until_quiet()
        pids = (program.process.popen.pid, bare.popen.pid)
        begin = [processor_times(pid) for pid in pids]
        asked = log.during(seconds)
        own, other = (processor_time(pid, since) for pid, since in zip(pids, begin))
        if not bare.running:
            raise AssertionError(f"the bare program ended: {bare.output()}")
    return asked, own, other


def report(count, asked, own, other, seconds):
    kinds = ", ".join(f"{number} {kind}" for kind, number in asked.most_common())
    ratio = own / other
    print(f"{count} desktops, {seconds:g} s at rest:")
    print(f"  requests: {sum(asked.values())}" + (f" ({kinds})" if kinds else ""))
    print(
        f"  processor time: {own * 1e3:.1f} ms, of the bare program {other * 1e3:.1f} ms, "
        f"ratio {ratio:.2f}",
        flush=True,
    )
    return not asked and ratio <= RATIO_LIMIT


def main():
    program, bare_program, *rest = sys.argv[1:]
    seconds = float(rest[0]) if rest else SECONDS
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    os.environ["VEMBRIX_PROGRAM"] = os.path.abspath(program)
    good = True
    try:
        for count in (4, 64):
            figures = measure(count, os.path.abspath(bare_program), seconds)
            good = report(count, *figures, seconds) and good
    except AssertionError as failure:
        print(f"idle: {failure}", file=sys.stderr)
        return 1
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
