"""The installed program: it starts with a session, and its settings outlive a new version.

For script/check-package, which says which program by VEMBRIX_PROGRAM, of which version by
VEMBRIX_VERSION, and how to install that by VEMBRIX_UPGRADE. The start with a session can be
tried on any installation:

    VEMBRIX_PROGRAM=/usr/local/bin/vembrix python3 -B installed.py AutostartTest
"""

import os
import subprocess
import time
import unittest

from support.desktop import Desktop
from test_version import shown_version
from support.vembrix import Defaults, DesktopTest, Vembrix, program_path
from support.window_managers import LASTING_WORDS, SERVICES_CONFIG

# Set by the installer's test. Without it the machine's fonts are used, as the program itself
# does.
os.environ.setdefault("FONTCONFIG_FILE", "/etc/fonts/fonts.conf")

NAMES = {"x11-desktop-1": "Mail", "x11-desktop-2": "Müsli 🥣"}


class UpgradeTest(DesktopTest):
    """An older version is installed and is replaced, as a system's upgrade does it."""

    def setUp(self):
        super().setUp()
        self.defaults.write({"SpaceNames": NAMES, "SignTextSize": 120, "Unknown": [1, "two"]})

    def test_the_settings_are_kept_and_the_running_program_goes_on(self):
        running = self.launch()
        running.wait_for_title("Mail")
        subprocess.run(os.environ["VEMBRIX_UPGRADE"], shell=True, check=True)
        self.desktop.go_to(1)
        running.wait_for_title("Müsli 🥣")
        self.assertEqual(running.end(), 0)
        kept = self.defaults.read()
        for key, value in (("SpaceNames", NAMES), ("SignTextSize", 120), ("Unknown", [1, "two"])):
            self.assertEqual(kept[key], value)

        upgraded = self.launch()
        upgraded.wait_for_title("Müsli 🥣")
        self.assertEqual(self.defaults.read()["SpaceNames"], NAMES)
        self.assertEqual(upgraded.lines_besides_tour(), [])
        self.assertEqual(shown_version(upgraded), os.environ["VEMBRIX_VERSION"])
        self.assertEqual(upgraded.end(), 0)


class SessionDesktop(Desktop):
    """A screen and a session bus on which Xfce's session begins, with those programs."""

    def __init__(self, clients):
        super().__init__(window_manager=None)
        self._clients = clients

    def bus_config(self):
        return SERVICES_CONFIG

    def begin_session(self):
        """Begins it and returns the process."""
        values = "".join(
            f"""
      <property name="Client{index}_Command" type="array">
        <value type="string" value="{client}"/>
      </property>
      <property name="Client{index}_Priority" type="int" value="{15 + 5 * index}"/>"""
            for index, client in enumerate(self._clients)
        )
        folder = self.path("config", "xfce4", "xfconf", "xfce-perchannel-xml")
        os.makedirs(folder)
        path = os.path.join(folder, "xfce4-session.xml")
        with open(path, "w", encoding="utf-8") as file:
            file.write(XFCE_SESSION.format(count=len(self._clients), clients=values))
        path = os.path.dirname(program_path()) + ":" + self.environment["PATH"]
        return self.start(["xfce4-session"], {**LASTING_WORDS, "PATH": path})


XFCE_SESSION = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-session" version="1.0">
  <property name="general" type="empty">
    <property name="FailsafeSessionName" type="string" value="Failsafe"/>
    <property name="SaveOnExit" type="bool" value="false"/>
  </property>
  <property name="sessions" type="empty">
    <property name="Failsafe" type="empty">
      <property name="IsFailsafe" type="bool" value="true"/>
      <property name="Count" type="int" value="{count}"/>{clients}
    </property>
  </property>
  <property name="startup" type="empty">
    <property name="ssh-agent" type="empty">
      <property name="enabled" type="bool" value="false"/>
    </property>
    <property name="gpg-agent" type="empty">
      <property name="enabled" type="bool" value="false"/>
    </property>
  </property>
</channel>
"""


class StartedBySession(Vembrix):
    """The run of the program that a session has started. Its output is mixed with that of
    the session's other programs."""

    def __init__(self, desktop, session):
        self.desktop = desktop
        self.process = session
        self._strip = None


class AutostartTest(unittest.TestCase):
    """A session with a copy of the desktop file among those that start with it."""

    def begin(self, *clients):
        self.desktop = SessionDesktop(clients)
        self.desktop.__enter__()
        self.addCleanup(self.desktop.end)
        prefix = os.path.dirname(os.path.dirname(program_path()))
        # The command in the documentation.
        self.desktop.run(
            "install", "-Dm644", "-t", self.desktop.path("config", "autostart"),
            f"{prefix}/share/applications/com.vembrix.app.desktop",
        )  # fmt: skip
        Defaults(self.desktop).write({"SpaceNames": NAMES})
        program = StartedBySession(self.desktop, self.desktop.begin_session())
        program.wait_for_strip()
        return program

    def check_it_is_right(self, program):
        program.wait_for_title("Mail")
        self.desktop.go_to(1)
        program.wait_for_title("Müsli 🥣")
        self.assertEqual(program.lines_besides_tour(), [])

    def test_it_starts_after_the_window_manager(self):
        program = self.begin("xfwm4", "xfsettingsd", "xfce4-panel")
        program.wait_for_tour()
        self.check_it_is_right(program)

    def test_it_starts_before_the_window_manager(self):
        program = self.begin("xfsettingsd")
        program.wait_for_title("Desktops")
        # The tour, for which there are no desktops, is due 1.5 seconds after the start.
        time.sleep(3)
        self.desktop.start(["xfwm4"], LASTING_WORDS)
        self.check_it_is_right(program)


if __name__ == "__main__":
    unittest.main()
