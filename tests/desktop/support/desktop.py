"""A whole desktop of its own: virtual screen, window manager, session bus.

Nothing of the user's session is seen by what runs on it, and nothing of it
outlives its end.
"""

import contextlib
import os
import re
import select
import shutil
import signal
import subprocess
import sys
import tempfile

from support.processes import LIMIT, Process, Timeout, WindowGone, run, wait_until
from support.screen import Picture, Pixels
from support.window import Window, property_value

HERE = os.path.dirname(os.path.abspath(__file__))
SYSTEM_PYTHON = "/usr/bin/python3"

OPENBOX_CONFIG = """<?xml version="1.0"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew></focus>
  <placement><policy>Smart</policy></placement>
  <theme><name>Clearlooks</name><titleLayout>NLIMC</titleLayout></theme>
  <desktops><number>{desktops}</number><firstdesk>1</firstdesk><popupTime>0</popupTime></desktops>
</openbox_config>
"""

PICOM_CONFIG = """
backend = "xrender";
vsync = false;
shadow = true;
shadow-radius = 14;
shadow-offset-x = -14;
shadow-offset-y = -10;
shadow-opacity = 0.45;
shadow-exclude = ["_GTK_FRAME_EXTENTS@:c"];
wintypes: { dock = { shadow = false; }; };
"""

# Without service directories no service is started on demand, so the only services are
# those of the test.
BUS_CONFIG = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path={socket}</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""

# Variables of the caller's session that would reach the programs on this desktop.
FOREIGN = re.compile(
    r"^(DISPLAY|WAYLAND_DISPLAY|XAUTHORITY|SESSION_MANAGER|DESKTOP_.*|GNOME_.*|GTK_.*|KDE_.*|"
    r"DBUS_.*|XDG_.*|QT_.*|VEMBRIX_.*|LANG|LANGUAGE|LC_.*)$"
)


USER_FOLDERS = {
    "HOME": "home",
    "XDG_CONFIG_HOME": "config",
    "XDG_CACHE_HOME": "cache",
    "XDG_DATA_HOME": "data",
    "XDG_RUNTIME_DIR": "run",
}

DESKTOP_NAMES = "_NET_DESKTOP_NAMES"


class Desktop:
    """A private desktop; a context manager.

    `window_manager`: a key of `WINDOW_MANAGERS`, or None to start without.
    """

    WINDOW_MANAGERS = ("openbox", "icewm")

    def __init__(self, window_manager="openbox", desktops=4, compositor=False, size=(1440, 900)):
        self._first_window_manager = window_manager
        self._desktops = desktops
        self._with_compositor = compositor
        self.size = size
        self._processes = []
        self._starts = 0
        self.server = None
        self.window_manager = None

    def __enter__(self):
        # Short, because the path of a socket has at most 107 characters.
        self.directory = tempfile.mkdtemp(prefix="vembrix-", dir="/tmp")
        try:
            self._start()
        except BaseException:
            self.end()
            raise
        return self

    def __exit__(self, *_):
        self.end()

    def _start(self):
        self.environment = {k: v for k, v in os.environ.items() if not FOREIGN.match(k)}
        for variable, name in USER_FOLDERS.items():
            self.environment[variable] = self.path(name)
        self.environment["LC_ALL"] = "C.UTF-8"
        os.mkdir(self.path("bus"), mode=0o700)
        self._make_folders()
        if "FONTCONFIG_FILE" not in self.environment:
            # Keeps the machine's fonts out of the pictures.
            raise AssertionError("FONTCONFIG_FILE must name a set of tests/fonts, as ctest has it")
        self._start_server()
        self._start_bus()
        self.window_manager = None
        if self._first_window_manager:
            self.start_window_manager(self._first_window_manager)
        if self._with_compositor:
            self._start_compositor()
        self._lasting = list(self._processes)
        self._first_names = self.root_property(DESKTOP_NAMES)

    def end(self):
        """Ends everything that was started here, last first."""
        self._end_processes(())
        shutil.rmtree(self.directory, ignore_errors=True)

    def _end_processes(self, lasting):
        for process in [p for p in reversed(self._processes) if p not in lasting]:
            with contextlib.suppress(OSError):
                process.end()
            self._processes.remove(process)

    def tidy(self, lasting=()):
        """Restores the initial state: ends what runs on it but the given processes,
        forgets all files and goes to the first of as many desktops. Where it has lost its
        server or has another window manager, it begins anew."""
        self._end_processes([*self._lasting, *lasting])
        if self._has_all_that_lasts():
            if not lasting:
                self._make_folders()
            self._reset_desktops()
        else:
            self._tell_what_ended()
            self.end()
            self.__enter__()

    def _has_all_that_lasts(self):
        if self.window_manager and self.window_manager not in self._lasting:
            return False
        return all(process.running for process in self._lasting)

    def _tell_what_ended(self):
        """The desktop's programs that have ended by themselves."""
        for process in self._lasting:
            if not process.running and process.popen.returncode != -signal.SIGKILL:
                print(
                    f"{process.name} ended with {process.popen.returncode}: {process.output()}",
                    file=sys.stderr,
                )

    def _reset_desktops(self):
        self.run("xdotool", "mousemove", *(str(length // 2) for length in self.size))
        if not self.window_manager:
            return
        if self.count != self._desktops:
            self.set_count(self._desktops)
        if self.current != 0:
            self.go_to(0)
        wait_until(lambda: (self.count, self.current) == (self._desktops, 0), "the first desktop")
        if self.root_property(DESKTOP_NAMES) != self._first_names:
            self.run("xprop", "-root", "-remove", DESKTOP_NAMES)
            wait_until(
                lambda: self.root_property(DESKTOP_NAMES) == self._first_names,
                lambda: f"the desktops' first names; they are {self.root_property(DESKTOP_NAMES)}",
            )

    def path(self, *names):
        return os.path.join(self.directory, *names)

    # Programs

    def start(self, arguments, environment=None, **options):
        """Starts a program on this desktop; it ends with the desktop."""
        self._starts += 1
        output = self.path(f"{self._starts:02}-{os.path.basename(arguments[0])}.log")
        process = Process(arguments, {**self.environment, **(environment or {})}, output, **options)
        self._processes.append(process)
        return process

    def run(self, *arguments):
        return run(list(arguments), self.environment)

    def _make_folders(self):
        """The user's folders, empty."""
        for name in USER_FOLDERS.values():
            shutil.rmtree(self.path(name), ignore_errors=True)
            os.mkdir(self.path(name), mode=0o700)

    def _start_server(self):
        os.mkdir(self.path("screen"))
        reader, writer = os.pipe()
        width, height = self.size
        self.server = self.start(
            ["Xvfb", "-displayfd", str(writer), "-screen", "0", f"{width}x{height}x24",
             "-fbdir", self.path("screen"), "-dpi", "96", "-noreset", "-nolisten", "tcp"],
            pass_fds=(writer,),
        )  # fmt: skip
        os.close(writer)
        with os.fdopen(reader) as pipe:
            number = self.first_line(pipe, self.server)
        self.environment["DISPLAY"] = f":{number}"

    @staticmethod
    def first_line(stream, process):
        if not select.select([stream], [], [], LIMIT)[0]:
            raise Timeout(f"waited {LIMIT:g} s for {process.name}")
        line = stream.readline().strip()
        if not line:
            raise AssertionError(f"{process.name} did not start: {process.output()}")
        return line

    def end_server(self, signal_number=signal.SIGTERM):
        self.server.send(signal_number)
        self.server.wait()

    def bus_config(self):
        return BUS_CONFIG

    def _start_bus(self):
        config = self.path("bus.conf")
        with open(config, "w", encoding="utf-8") as file:
            file.write(self.bus_config().format(socket=self.path("bus", "socket")))
        bus = self.start(
            ["dbus-daemon", f"--config-file={config}", "--nofork", "--nopidfile",
             "--print-address=1"],
            stdout=subprocess.PIPE, text=True,
        )  # fmt: skip
        address = self.first_line(bus.popen.stdout, bus)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address

    def start_window_manager(self, name="openbox"):
        if name == "openbox":
            config = self.path("openbox.xml")
            with open(config, "w", encoding="utf-8") as file:
                file.write(OPENBOX_CONFIG.format(desktops=self._desktops))
            process = self.start(["openbox", "--config-file", config, "--sm-disable"])
        else:
            config = self.path("icewm")
            os.makedirs(config, exist_ok=True)
            names = ", ".join(f'"{n}"' for n in range(1, self._desktops + 1))
            with open(os.path.join(config, "preferences"), "w", encoding="utf-8") as file:
                file.write("ShowTaskBar=0\nShowWorkspaceStatus=0\n")
                file.write(f"WorkspaceNames={names}\n")
            process = self.start(["icewm"], {"ICEWM_PRIVCFG": config})
        self.window_manager = process
        wait_until(self._window_manager_answers, f"{name} to manage the screen")
        self._wait_until_it_obeys()
        return process

    def _window_manager_answers(self):
        if not self.window_manager.running:
            raise AssertionError(
                f"{self.window_manager.name} ended: {self.window_manager.output()}"
            )
        # The property outlives a killed window manager. The window that it names does
        # not.
        window = self.root_property("_NET_SUPPORTING_WM_CHECK")
        if not window:
            return False
        self.run("xprop", "-id", window.split()[-1], "_NET_WM_NAME")
        return self.count is not None and self.current is not None

    def _wait_until_it_obeys(self):
        # It announces the desktops before it handles requests; earlier requests are
        # lost.
        if self.count < 2:
            return
        first = self.current
        for index in (0 if first else 1, first):
            wait_until(lambda: self._obeys(index), "a switch to another desktop")

    def _obeys(self, index):
        self.go_to(index)
        return self.current == index

    def kill_window_manager(self):
        """Ends it as a crash does: at once, without notice to its clients."""
        self.window_manager.send(signal.SIGKILL)
        self.window_manager.wait()

    def _start_compositor(self):
        config = self.path("picom.conf")
        with open(config, "w", encoding="utf-8") as file:
            file.write(PICOM_CONFIG)
        process = self.start(["picom", "--config", config])

        def answers():
            if not process.running:
                raise AssertionError(f"picom ended: {process.output()}")
            return self.windows_of_class("picom")

        wait_until(answers, "the compositor")

    # The desktops

    def root_property(self, name):
        """The value as xprop writes it, or None."""
        return property_value(self.run("xprop", "-root", "-notype", name))

    def _root_number(self, name):
        value = self.root_property(name)
        return int(value) if value is not None and value.isdigit() else None

    @property
    def count(self):
        return self._root_number("_NET_NUMBER_OF_DESKTOPS")

    @property
    def current(self):
        """The index of the current desktop, from 0."""
        return self._root_number("_NET_CURRENT_DESKTOP")

    def go_to(self, index):
        """Asks the window manager for the desktop; does not wait for it."""
        self.run("wmctrl", "-s", str(index))

    def set_count(self, count):
        """Asks the window manager for that many; does not wait for them."""
        self.run("wmctrl", "-n", str(count))

    # The screen

    def picture(self):
        return Picture.read(self.path("screen", "Xvfb_screen0"))

    def still_picture(self):
        """A picture of the screen, once it no longer changes."""
        path = self.path("screen", "Xvfb_screen0")
        last = None

        def is_still():
            nonlocal last
            with open(path, "rb") as file:
                before, last = last, file.read()
            return last == before

        wait_until(is_still, "a screen that stands still")
        return self.picture()

    def pixels(self):
        return Pixels(self.path("screen", "Xvfb_screen0"))

    def clients(self):
        """The windows that the window manager lists. Any may be gone again."""
        identifiers = self.root_property("_NET_CLIENT_LIST") or ""
        return [Window(self, match) for match in re.findall("0x[0-9a-f]+", identifiers)]

    def windows_of_class(self, name):
        """Windows of any depth. Any may be gone again."""
        # Fails when a window ends while its children are listed.
        tree = wait_until(lambda: self.run("xwininfo", "-root", "-tree"), "the windows")
        pattern = re.compile(r'^\s+(0x[0-9a-f]+) .*: \("([^"]*)" "([^"]*)"\)', re.MULTILINE)
        return [
            Window(self, match[1]) for match in pattern.finditer(tree) if name in match.groups()[1:]
        ]


if __name__ == "__main__":
    sys.exit("desktop.py is a module of the desktop tests")
