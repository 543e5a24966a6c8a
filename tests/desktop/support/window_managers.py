"""The window managers of the matrix, each as a new user meets it: its own default
configuration with four desktops, where that does not have four already."""

import contextlib
import os
from collections.abc import Callable
from dataclasses import dataclass, field

from support.desktop import BUS_CONFIG, OPENBOX_CONFIG, Desktop
from support.processes import run, wait_until

# Programs of a whole session find their settings through the session bus.
SERVICES_CONFIG = BUS_CONFIG.replace("<auth>", "<standard_session_servicedirs/>\n  <auth>", 1)

LASTING_WORDS = {
    "NO_AT_BRIDGE": "1",
    "LIBGL_ALWAYS_SOFTWARE": "1",
}

# Settings outside the file last as long as the program that sets them.
OWN_SETTINGS = {"GSETTINGS_BACKEND": "memory"}

KWIN_CONFIG = """[Desktops]
Number={desktops}
Rows=1
"""

JWM_CONFIG = """<?xml version="1.0"?>
<JWM>
  <Include>/etc/jwm/system.jwmrc</Include>
  <Desktops width="{desktops}" height="1"/>
</JWM>
"""

PEKWM_CONFIG = """INCLUDE = "/etc/pekwm/config"
Screen {{
  Workspaces = "{desktops}"
  WorkspacesPerRow = "{desktops}"
}}
"""

FVWM_CONFIG = """Read $[FVWM_DATADIR]/default-config/config
DesktopSize 1x1
EwmhNumberOfDesktops {desktops}
"""

BSPWM_NAMES = ("I", "II", "III", "IV", "V", "VI")


def _bspwm_config(desktops):
    return "#!/bin/sh\nbspc monitor -d " + " ".join(BSPWM_NAMES[:desktops]) + "\n"


def _herbstluftwm_config(desktops):
    with open("/etc/xdg/herbstluftwm/autostart", encoding="utf-8") as file:
        text = file.read()
    assert "{1..9}" in text
    return text.replace("{1..9}", f"{{1..{desktops}}}")


def _i3_config(_):
    """The one that comes with it, without what begins other programs."""
    with open("/etc/i3/config", encoding="utf-8") as file:
        return "".join(line for line in file if not line.startswith("exec"))


def _awesome_config(desktops):
    with open("/etc/xdg/awesome/rc.lua", encoding="utf-8") as file:
        text = file.read()
    nine = "{ " + ", ".join(f'"{n}"' for n in range(1, 10)) + " }"
    assert nine in text
    return text.replace(nine, "{ " + ", ".join(f'"{n}"' for n in range(1, desktops + 1)) + " }")


# The number of desktops


def _ask(desktop, count):
    desktop.set_count(count)


def _ask_fvwm(desktop, count):
    """Its desktops stay as long as they are in use, or one behind them is."""
    desktop.reach(0)
    for window in desktop.windows_of_class("xterm"):
        if int(window.read("_NET_WM_DESKTOP") or 0) >= count:
            desktop.run("wmctrl", "-i", "-r", window.identifier, "-t", "0")

    def has_as_many():
        # The window manager carries out a request when the next one arrives.
        desktop.set_count(count)
        return desktop.count == count

    wait_until(has_as_many, f"{count} desktops")


def _configure_jwm(desktop, count):
    # It would stay on a desktop that no longer exists.
    desktop.reach(0)
    desktop.write_configuration(count)
    desktop.run("jwm", "-restart")


def _tell_bspwm(desktop, count):
    desktop.run("bspc", "monitor", "-d", *BSPWM_NAMES[:count])


def _tell_herbstluftwm(desktop, count):
    desktop.reach(0)
    for number in range(desktop.count, count, -1):
        desktop.run("herbstclient", "merge_tag", str(number), "1")
    for number in range(desktop.count + 1, count + 1):
        desktop.run("herbstclient", "add", str(number))


def _tell_awesome(desktop, count):
    lua = f"""
      local awful = require("awful")
      local s = awful.screen.focused()
      while #s.tags > {count} do
        local tag = s.tags[#s.tags]
        for _, c in ipairs(tag:clients()) do c:move_to_tag(s.tags[1]) end
        tag:delete()
      end
      for i = #s.tags + 1, {count} do
        awful.tag.add(tostring(i), {{ screen = s, layout = awful.layout.layouts[1] }})
      end"""
    desktop.run("awesome-client", lua)


def _tell_i3(desktop, command):
    def answers():
        # Fails until the program has announced its address.
        with contextlib.suppress(AssertionError):
            return desktop.run("i3-msg", command)
        return None

    wait_until(answers, "i3 to answer")


def _use_i3_workspaces(desktop, count):
    """There are as many as are in use: what is on the others goes to the first."""
    desktop.reach(0)
    for name in desktop.names():
        if int(name) > count:
            _tell_i3(desktop, f'[workspace="^{name}$"] move container to workspace 1')
    for index in range(1, count):
        if str(index + 1) not in desktop.names():
            desktop.reach(index)
            desktop.start(["xterm", "-title", f"Window {index + 1}"])
            wait_until(
                lambda index=index: desktop.active_name() == f"Window {index + 1}", "its window"
            )
    desktop.reach(0)


@dataclass(frozen=True)
class WindowManager:
    # The commands to start, the window manager first; {home} is the user's home folder.
    commands: tuple
    # Files by path in the home folder: a text, or a function of the number of desktops.
    files: dict = field(default_factory=dict)
    environment: dict = field(default_factory=dict)
    # Whether its session has more programs, which are started on demand.
    has_services: bool = False
    with_picom: bool = False
    change_count: Callable = _ask
    # The titles of its desktops before the user names them.
    names: tuple = tuple(f"Desktop {number}" for number in range(1, 7))
    # Whether desktops come and go with their windows.
    on_demand: bool = False
    tiles: bool = False
    size: tuple = (1440, 900)
    # Name and place of each screen, the primary one first.
    monitors: tuple = ()


OPENBOX = {
    "commands": (("openbox", "--config-file", "{home}/openbox.xml", "--sm-disable"),),
    "files": {"openbox.xml": OPENBOX_CONFIG},
}

WINDOW_MANAGERS = {
    "openbox": WindowManager(**OPENBOX),
    "openbox-picom": WindowManager(**OPENBOX, with_picom=True),
    "xfwm4": WindowManager(
        (("xfwm4", "--compositor=on", "--sm-client-disable"),), has_services=True
    ),
    "xfce": WindowManager(
        (
            ("xfwm4", "--sm-client-disable"),
            ("xfsettingsd", "--no-daemon", "--disable-wm-check"),
            ("xfce4-panel", "--disable-wm-check"),
        ),
        has_services=True,
    ),
    "metacity": WindowManager((("metacity", "--sm-disable"),), environment=OWN_SETTINGS),
    "marco": WindowManager(
        (("marco", "--sm-disable"), ("mate-panel",)), has_services=True
    ),
    "mutter": WindowManager((("mutter", "--x11", "--sm-disable"),), environment=OWN_SETTINGS),
    "kwin_x11": WindowManager(
        (("kwin_x11",),), {".config/kwinrc": KWIN_CONFIG}, has_services=True
    ),
    "fluxbox": WindowManager((("fluxbox",),)),
    "icewm": WindowManager((("icewm",),)),
    "jwm": WindowManager(
        (("jwm",),), {".jwmrc": JWM_CONFIG}, change_count=_configure_jwm
    ),
    "pekwm": WindowManager(
        (("pekwm", "--config", "{home}/.pekwm/config"),),
        {".pekwm/config": PEKWM_CONFIG},
    ),
    "fvwm3": WindowManager(
        (("fvwm3", "-f", "{home}/.fvwm/config"),),
        {".fvwm/config": FVWM_CONFIG},
        change_count=_ask_fvwm,
        names=("Main", "Desk1", "Desk2", "Desk3", "Desktop 5", "Desktop 6"),
    ),
    "i3": WindowManager(
        (("i3", "-c", "{home}/.config/i3/config"),),
        {".config/i3/config": _i3_config},
        change_count=_use_i3_workspaces,
        on_demand=True,
        tiles=True,
    ),
    "bspwm": WindowManager(
        (("bspwm", "-c", "{home}/.config/bspwm/bspwmrc"),),
        {".config/bspwm/bspwmrc": _bspwm_config},
        change_count=_tell_bspwm,
        names=BSPWM_NAMES,
        tiles=True,
    ),
    "herbstluftwm": WindowManager(
        (("herbstluftwm", "-c", "{home}/.config/herbstluftwm/autostart"),),
        {".config/herbstluftwm/autostart": _herbstluftwm_config},
        change_count=_tell_herbstluftwm,
        tiles=True,
    ),
    "awesome": WindowManager(
        (("awesome", "-c", "{home}/.config/awesome/rc.lua"),),
        {".config/awesome/rc.lua": _awesome_config},
        change_count=_tell_awesome,
    ),
    "two-monitors": WindowManager(
        **OPENBOX,
        size=(2000, 900),
        monitors=(("Left", (0, 0, 1100, 900)), ("Right", (1100, 0, 900, 900))),
    ),
}


class MatrixDesktop(Desktop):
    """A private desktop with one of these window managers, and what belongs to its
    session."""

    def __init__(self, name, desktops=4):
        self.kind = WINDOW_MANAGERS[name]
        super().__init__(name, desktops, self.kind.with_picom, self.kind.size)
        self._is_begun = False

    def _make_folders(self):
        super()._make_folders()
        # Some window managers read their configuration from no other place.
        os.symlink(self.path("config"), self.path("home", ".config"))

    def bus_config(self):
        return SERVICES_CONFIG if self.kind.has_services else BUS_CONFIG

    def start_window_manager(self, name=None):
        """Starts it, and at first what belongs to its session."""
        if not self._is_begun:
            self._add_monitors()
            self.write_configuration(self._desktops)
        environment = {**LASTING_WORDS, **self.kind.environment}
        commands = [
            [word.format(home=self.path("home")) for word in command]
            for command in self.kind.commands
        ]
        self.window_manager = self.start(commands[0], environment)
        wait_until(self._window_manager_answers, f"{commands[0][0]} to manage the screen")
        if not self.kind.on_demand:
            # Some window managers create them one by one.
            wait_until(lambda: self.count == self._desktops, "its desktops")
            self._wait_until_it_obeys()
        if not self._is_begun:
            for command in commands[1:]:
                self.start(command, environment)
            self._is_begun = True
        return self.window_manager

    def write_configuration(self, desktops):
        for path, text in self.kind.files.items():
            path = self.path("home", path)
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "w", encoding="utf-8") as file:
                file.write(text(desktops) if callable(text) else text.format(desktops=desktops))
            os.chmod(path, 0o755)

    def _add_monitors(self):
        for index, (name, (x, y, width, height)) in enumerate(self.kind.monitors):
            self.run(
                "xrandr", "--setmonitor", f"*{name}" if index == 0 else name,
                f"{width}/{width}x{height}/{height}+{x}+{y}", "screen" if index == 0 else "none",
            )  # fmt: skip

    def primary(self):
        """x, y, width and height of the primary monitor."""
        return self.kind.monitors[0][1] if self.kind.monitors else (0, 0, *self.size)

    # The desktops

    def reach(self, index):
        """Goes to the desktop, which is created where the window manager does so."""
        if self.kind.on_demand:
            _tell_i3(self, f"workspace {index + 1}")
            wait_until(
                lambda: self.names()[self.current :][:1] == [str(index + 1)],
                f"workspace {index + 1}",
            )
        else:
            # Once more if the window manager has restarted meanwhile.
            wait_until(lambda: self._obeys(index), f"desktop {index + 1}")

    def change_count(self, count):
        self.kind.change_count(self, count)
        wait_until(lambda: self.count == count, lambda: f"{count} desktops; there are {self.count}")

    def names(self):
        value = self.root_property("_NET_DESKTOP_NAMES")
        return [name.strip('"') for name in value.split(", ")] if value else []

    # The windows

    def focused_name(self):
        """The title of the window with the keyboard focus; empty where there is none."""
        # Fails when no window, or one without a name, has the focus.
        with contextlib.suppress(AssertionError):
            return self.run("xdotool", "getwindowfocus", "getwindowname").strip()
        return ""

    def active_name(self):
        """The title of the window manager's active window."""
        # Fails when there is none.
        with contextlib.suppress(AssertionError):
            return run(["xdotool", "getactivewindow", "getwindowname"], self.environment).strip()
        return ""
