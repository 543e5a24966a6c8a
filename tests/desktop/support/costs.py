"""Measures the cost of a program on a private desktop: start, memory, rest, a switch."""

import statistics
import subprocess
import time
from dataclasses import dataclass

from support.desktop import Desktop
from support.processes import wait_until
from support.vembrix import Defaults, Vembrix
from support.x11_requests import processor_time, processor_times

# Seconds in which fonts, plug-ins and the session bus settle after the start.
SETTLING = 5
STARTS = 5
LABELS_OFF = {"ShowSignInSwipeMode": False, "ShowSignAfterSelection": False}
# Longer than the half second for which a label is shown.
LABEL_PERIOD = 1.0
# The fastest switching by hand.
PLAIN_PERIOD = 0.25


@dataclass
class Cost:
    """Processor time in seconds: the program's own, and that of the X server."""

    own: float
    server: float


class Meter:
    """Counts the processor time of a program and of its X server from now on."""

    def __init__(self, desktop, pid):
        self._pids = (pid, desktop.server.popen.pid)
        self._begin = [processor_times(pid) for pid in self._pids]

    def read(self):
        return Cost(*(processor_time(pid, since) for pid, since in zip(self._pids, self._begin)))


def start_program(desktop, command, settings=None, environment=None):
    """Starts the bare program, or Vembrix where the command is None; returns the process
    once it is at rest."""
    if command:
        process = desktop.start(command, environment)
    else:
        if settings:
            Defaults(desktop).write(settings)
        program = Vembrix(desktop, environment)
        program.wait_for_tour()
        process = program.process
    time.sleep(SETTLING)
    if not process.running:
        raise AssertionError(f"{process.name} ended: {process.output()}")
    return process


def start_time(command):
    """Seconds from the call that starts the program until its strip is on the screen;
    the median of several starts."""
    times = []
    for _ in range(STARTS):
        with Desktop() as desktop, desktop.pixels() as pixels:
            # A row of pixels through the middle of a strip of any width and text.
            places = [(desktop.size[0] - offset, 12) for offset in range(1, 60)]
            ground = [pixels.at(*place) for place in places]
            begin = time.monotonic()
            process = desktop.start(command)
            while [pixels.at(*place) for place in places] == ground:
                if time.monotonic() > begin + 30:
                    raise AssertionError(f"{process.name} shows nothing: {process.output()}")
                time.sleep(0.0005)
            times.append(time.monotonic() - begin)
    return statistics.median(times)


def memory(commands, desktops):
    """Each program's share of the memory in bytes, after visiting every desktop. The
    programs run side by side, so that they share the libraries equally."""
    with Desktop(desktops=desktops) as desktop:
        processes = [start_program(desktop, command) for command in commands]
        drive(desktop, desktops, 0.1, desktops)
        time.sleep(SETTLING)
        return [proportional_set_size(process.popen.pid) for process in processes]


def proportional_set_size(pid):
    with open(f"/proc/{pid}/smaps_rollup", encoding="ascii") as file:
        return next(int(line.split()[1]) * 1024 for line in file if line.startswith("Pss:"))


def rest(commands, seconds):
    """Processor time of each program per second at rest; they rest side by side."""
    with Desktop() as desktop:
        desktop.run("xdotool", "mousemove", "720", "860")
        processes = [start_program(desktop, command) for command in commands]
        meters = [Meter(desktop, process.popen.pid) for process in processes]
        time.sleep(seconds)
        return [meter.read().own / seconds for meter in meters]


def switches(command, count, period, settings=None, compositor=False):
    """Processor time for each switch, less the server's without the program and the
    program's at rest."""
    with Desktop(compositor=compositor) as desktop:
        desktop.run("xdotool", "mousemove", "720", "860")
        idle = Meter(desktop, desktop.server.popen.pid)
        drive(desktop, count, period)
        server_alone = idle.read().server
        process = start_program(desktop, command, settings)
        # The first visit of a desktop is not measured.
        drive(desktop, 8, period)
        meter = Meter(desktop, process.popen.pid)
        time.sleep(SETTLING)
        resting = meter.read()
        meter = Meter(desktop, process.popen.pid)
        drive(desktop, count, period)
        cost = meter.read()
        at_rest = count * period / SETTLING
        own = cost.own - resting.own * at_rest
        return Cost(own / count, max(cost.server - server_alone, 0) / count)


def crowded_switches(crowd, desktops, windows, switches=2000, rate=200):
    """The program's processor time for each of many switches in quick succession, and the
    seconds from the last one until the strip has its name and until its label is shown."""
    with Desktop(desktops=desktops) as desktop:
        desktop.run("xdotool", "mousemove", "720", "860")
        arguments = [crowd, str(windows), str(switches), str(rate)]
        with subprocess.Popen(
            arguments, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
            env=desktop.environment,
        ) as client:  # fmt: skip
            if client.stdout.readline() != "ready\n":
                raise AssertionError("the windows did not come")
            process = start_program(desktop, None)
            meter = Meter(desktop, process.popen.pid)
            client.stdin.write("go\n")
            client.stdin.flush()
            _, strip, label = client.stdout.readline().split()
            return meter.read().own / switches, float(strip) / 1e3, float(label) / 1e3


def drive(desktop, count, period, desktops=4):
    """Goes round the desktops, one switch each period, and waits until all are done."""
    lines = []
    for step in range(1, count + 1):
        lines += [f"set_desktop {step % desktops}", f"sleep {period}"]
    result = subprocess.run(
        ["xdotool", "-"], input="\n".join([*lines, ""]), text=True, check=False,
        env=desktop.environment, capture_output=True,
    )  # fmt: skip
    if result.returncode != 0:
        raise AssertionError(f"xdotool: {result.stderr}")
    last = count % desktops
    wait_until(lambda: desktop.current == last, f"desktop {last + 1}")


def requests_of_a_switch(log, desktop, count, period):
    """How many requests of each kind a switch takes, the most frequent first."""
    log.wait_until_quiet()
    begin = time.monotonic()
    drive(desktop, count, period)
    log.wait_until_quiet()
    return {
        kind: number / count for kind, number in log.between(begin, time.monotonic()).most_common()
    }

