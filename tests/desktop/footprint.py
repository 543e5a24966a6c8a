"""Prints what Vembrix costs beside a bare Qt program that follows the desktop.

Usage: footprint.py PROGRAM BARE_PROGRAM [--short | --scale CROWD_PROGRAM]

Status 1 where a ratio is above its limit; with --scale, where the last of 2,000 switches
is shown too late.
"""

import os
import signal
import sys

from support import costs
from support.desktop import Desktop
from support.x11_requests import RequestLog

# The highest allowed cost, as a multiple of the bare program's.
FIGURES = {
    "start": 1.3,
    "memory, 4 desktops": 1.25,
    "memory, 64 desktops": 1.25,
    "rest": 0.5,
    "switch, labels off": 1.3,
    "switch, no compositor": 2.5,
    "switch, compositor": 5.0,
}
# Allows for differences between machines and between runs.
TOLERANCE = 1.2
# Seconds.
LAST_SWITCH_LIMIT = 0.05


class Table:
    def __init__(self):
        self.good = True
        print(
            f"{'':22}{'unit':>6}{'Vembrix':>10}{'bare':>10}{'ratio':>8}{'limit':>8}"
            f"{'X server':>10}{'bare':>10}",
            flush=True,
        )

    def row(self, name, unit, scale, own, bare, servers=None):
        ratio = own / bare
        limit = FIGURES[name] * TOLERANCE
        self.good = self.good and ratio <= limit
        line = (
            f"{name:22}{unit:>6}{own * scale:10.2f}{bare * scale:10.2f}{ratio:8.2f}{limit:8.2f}"
        )
        if servers:
            line += "".join(f"{server * scale:10.2f}" for server in servers)
        print(line, flush=True)


def measure(program, bare, short):
    table = Table()
    vembrix_start, bare_start = (costs.start_time([path]) for path in (program, bare))
    table.row("start", "ms", 1e3, vembrix_start, bare_start)
    for desktops in (4, 64):
        own, other = costs.memory((None, [bare]), desktops)
        table.row(f"memory, {desktops} desktops", "MB", 1e-6, own, other)
    own, other = costs.rest((None, [bare, "--polls"]), 15 if short else 60)
    table.row("rest", "us/s", 1e6, own, other)
    count = 20 if short else 100
    plain = costs.switches([bare], count, costs.PLAIN_PERIOD)
    for name, period, settings, compositor in (
        ("labels off", costs.PLAIN_PERIOD, costs.LABELS_OFF, False),
        ("no compositor", costs.LABEL_PERIOD, None, False),
        ("compositor", costs.LABEL_PERIOD, None, True),
    ):
        cost = costs.switches(None, count, period, settings, compositor)
        servers = (cost.server, plain.server)
        table.row(f"switch, {name}", "ms", 1e3, cost.own, plain.own, servers)
    return table.good


def print_requests():
    for name, settings, compositor in (
        ("labels off", costs.LABELS_OFF, False),
        ("no compositor", None, False),
        ("compositor", None, True),
    ):
        with Desktop(compositor=compositor) as desktop:
            desktop.run("xdotool", "mousemove", "720", "860")
            log = RequestLog(desktop)
            costs.start_program(desktop, None, settings, log.environment)
            costs.drive(desktop, 8, costs.LABEL_PERIOD)
            asked = costs.requests_of_a_switch(log, desktop, 8, costs.LABEL_PERIOD)
        kinds = ", ".join(f"{number:.4g} {kind}" for kind, number in asked.items())
        print(f"requests, {name}: {sum(asked.values()):.4g} a switch: {kinds}", flush=True)


def measure_scale(crowd):
    good = True
    for desktops, windows in ((4, 0), (1024, 0), (1024, 3000)):
        own, strip, label = costs.crowded_switches(crowd, desktops, windows)
        good = good and max(strip, label) <= LAST_SWITCH_LIMIT
        print(
            f"{desktops} desktops, {windows} windows, 200 switches a second: "
            f"{own * 1e3:.2f} ms a switch, the last one in the strip after {strip * 1e3:.1f} ms, "
            f"its label after {label * 1e3:.1f} ms",
            flush=True,
        )
    return good


def main():
    program, bare, *options = sys.argv[1:]
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    program, bare = os.path.abspath(program), os.path.abspath(bare)
    os.environ["VEMBRIX_PROGRAM"] = program
    try:
        if options[:1] == ["--scale"]:
            good = measure_scale(options[1])
        else:
            good = measure(program, bare, "--short" in options)
            print_requests()
    except AssertionError as failure:
        print(f"footprint: {failure}", file=sys.stderr)
        return 1
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
