"""Starting and ending programs, and waiting for what they do."""

import contextlib
import ctypes
import os
import re
import signal
import subprocess
import sys
import time

# Long enough for a sanitizer build on a busy machine. A condition that holds is noticed at
# once, so only failures take this long.
LIMIT = 30.0 * float(os.environ.get("VEMBRIX_TEST_SLOWNESS", "1"))
POLL = 0.02


class Timeout(AssertionError):
    """A condition did not come true in time."""


class WindowGone(AssertionError):
    """A program queried a window that is gone."""


_NO_WINDOW = re.compile("Bad ?(Window|Drawable)|No such window|Can't (get|query) ")


def wait_until(condition, what, limit=LIMIT):
    """Waits until condition() is true and returns its value. It is not true where
    a window goes while the condition looks at it.

    `what` completes the sentence "waited N s for ..." of the failure; a
    function is called for it, so that it can tell what was there instead.
    """
    end = time.monotonic() + limit
    while True:
        with contextlib.suppress(WindowGone):
            value = condition()
            if value:
                return value
        if time.monotonic() > end:
            raise Timeout(f"waited {limit:g} s for {_told(what)}")
        time.sleep(POLL)


def _told(what):
    if not callable(what):
        return what
    try:
        return what()
    except WindowGone as failure:
        return f"what a window was to show: {failure}"


_LIBC = ctypes.CDLL(None)
_PR_SET_PDEATHSIG = 1


def _end_with_parent():
    """Ends the program with the test, even where the test is killed."""
    _LIBC.prctl(_PR_SET_PDEATHSIG, signal.SIGTERM)


class Process:
    """A program that runs beside the test, its output in a file."""

    def __init__(self, arguments, environment, output_path, **options):
        self.name = os.path.basename(arguments[0])
        self.output_path = output_path
        # In a session of its own, so that an interrupt from a terminal ends the test first, and
        # the test ends its programs in order.
        with open(output_path, "ab") as output:
            self.popen = subprocess.Popen(
                arguments,
                env=environment,
                stdin=options.pop("stdin", subprocess.DEVNULL),
                stdout=options.pop("stdout", output),
                stderr=output,
                start_new_session=True,
                preexec_fn=_end_with_parent,
                **options,
            )

    @property
    def running(self):
        return self.popen.poll() is None

    def output(self):
        with open(self.output_path, encoding="utf-8", errors="replace") as output:
            return output.read()

    def wait(self, limit=LIMIT):
        """The exit status; negative for a signal."""
        try:
            return self.popen.wait(limit)
        except subprocess.TimeoutExpired:
            raise Timeout(f"waited {limit:g} s for the end of {self.name}") from None

    def send(self, signal_number):
        if self.running:
            self.popen.send_signal(signal_number)

    def end(self):
        """Ends the program, by SIGTERM first, and returns its exit status."""
        self.send(signal.SIGTERM)
        try:
            status = self.popen.wait(LIMIT)
        except subprocess.TimeoutExpired:
            self.send(signal.SIGKILL)
            status = self.popen.wait()
        for stream in (self.popen.stdin, self.popen.stdout):
            if stream:
                stream.close()
        self._show_sanitizer_reports()
        return status

    def _show_sanitizer_reports(self):
        """Where ctest looks for them: many a test ends a program without asking how it ended."""
        output = self.output()
        if re.search("Sanitizer: |: runtime error: ", output):
            print(f"{self.name} wrote:\n{output}", file=sys.stderr)


def run(arguments, environment, limit=LIMIT):
    """Runs a program to its end; its standard output. Fails if it fails: with
    WindowGone where a window that it looked at went meanwhile."""
    result = subprocess.run(
        arguments,
        env=environment,
        stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE,
        stderr=subprocess.PIPE,
        timeout=limit,
        check=False,
        encoding="utf-8",
        errors="replace",
    )
    if result.returncode != 0:
        kind = WindowGone if _NO_WINDOW.search(result.stderr) else AssertionError
        raise kind(f"{' '.join(arguments)} ended with {result.returncode}: {result.stderr.strip()}")
    return result.stdout
