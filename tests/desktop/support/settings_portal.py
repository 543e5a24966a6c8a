"""Starts and controls the desktop's settings portal."""

import os
import subprocess

from support.desktop import HERE, SYSTEM_PYTHON, Desktop


class Portal:
    """The desktop's settings portal, for light and dark and for motion."""

    LIGHT, DARK = 2, 1

    def __init__(self, desktop, color_scheme, reduced_motion=False):
        portal = os.path.join(HERE, "portal.py")
        self._process = desktop.start(
            [SYSTEM_PYTHON, "-B", portal, str(color_scheme), str(int(reduced_motion))],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
        )  # fmt: skip
        self._expect("ready")

    def set(self, color_scheme):
        """Changes it; returns when all subscribers were notified."""
        self._process.popen.stdin.write(f"{color_scheme}\n")
        self._process.popen.stdin.flush()
        self._expect(f"told {color_scheme}")

    def _expect(self, line):
        found = Desktop.first_line(self._process.popen.stdout, self._process)
        if found != line:
            raise AssertionError(f"the portal said {found!r}, not {line!r}")
