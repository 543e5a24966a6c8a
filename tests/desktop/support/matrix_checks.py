"""What has to hold on every window manager. A check raises AssertionError where it does
not."""

import os
import re
import time

from support.dropdown import Dropdown
from support.processes import WindowGone, wait_until
from support.vembrix import Defaults

# Index of the desktop where the program is started.
HOME = 1
NAMED = 1
NAME = "Mail"
# A label is shown for half a second; the other half is an allowance for a busy machine.
LABEL_LIMIT = 1.0

_TREE_LINE = re.compile(r"^( +)(0x[0-9a-f]+) .*?(\d+)x(\d+)\+-?\d+\+-?\d+ +\+(-?\d+)\+(-?\d+)$")


def expect(condition, otherwise):
    if not condition:
        raise AssertionError(otherwise)


def overlap(a, b):
    return (
        a[0] < b[0] + b[2] and b[0] < a[0] + a[2] and a[1] < b[1] + b[3] and b[1] < a[1] + a[3]
    )  # fmt: skip


def top_windows(desktop):
    """The root window's children: their frames, and all windows in them."""
    found = []
    for line in desktop.run("xwininfo", "-root", "-tree").splitlines():
        if not (match := _TREE_LINE.match(line)):
            continue
        width, height, x, y = map(int, match.groups()[2:])
        if len(match[1]) == 5:
            found.append(((x, y, width, height), [match[2]]))
        elif found:
            found[-1][1].append(match[2])
    return found


def frame_of(desktop, window):
    """The frame of the window, its window manager's decoration included."""
    for frame, windows in top_windows(desktop):
        if window.identifier in windows:
            return frame
    raise WindowGone(window.identifier)


def is_drawn(desktop, identifier):
    text = desktop.run("xwininfo", "-id", identifier)
    return "IsViewable" in text and "InputOutput" in text


def tour(trial):
    expect(trial.desktop.current == HOME, f"it ended on desktop {trial.desktop.current + 1}")
    trial.program.wait_for_title(trial.names[HOME])


def panels(trial):
    desktop = trial.desktop
    strip = trial.program.strip()
    x, y, width, height = strip.frame()
    left, top, screen_width, screen_height = desktop.primary()
    inside = left <= x and x + width <= left + screen_width and top <= y
    expect(inside, f"the strip is not on the primary monitor: {strip.frame()}")
    clients = {window.identifier for window in desktop.clients() if not trial.is_panel(window)}
    for frame, windows in top_windows(desktop):
        is_whole = frame[2] >= screen_width and frame[3] >= screen_height
        is_other = strip.identifier in windows or clients.intersection(windows)
        if is_whole or is_other or not overlap(frame, (x, y, width, height)):
            continue
        expect(not is_drawn(desktop, windows[0]), f"{frame} is under the strip {strip.frame()}")


def maximised(trial):
    desktop = trial.desktop
    window = trial.open("Wide")
    trial.add_state(window, "maximized_vert,maximized_horz")
    if not desktop.kind.tiles:
        least = desktop.primary()[2] * 0.8
        wait_until(lambda: window.frame()[2] > least, lambda: f"maximising; {window.frame()}")
    x, y, width, height = trial.settled(lambda: frame_of(desktop, window))
    # The window's border may extend beyond the free area; the title bar lies inside it.
    border = int((window.read("_NET_FRAME_EXTENTS") or "0").split(", ")[0])
    frame = (x + border, y + border, width - 2 * border, height - 2 * border)
    strip = trial.program.strip().frame()
    trial.close(window)
    expect(not overlap(frame, strip), f"the strip {strip} is on the window {frame}")


def full_screen(trial):
    desktop = trial.desktop
    window = trial.open("All", "-bg", "#102030")
    trial.add_state(window, "fullscreen")
    x, y, width, height = trial.program.strip().frame()
    point = (x + width - 3, y + height // 2)
    try:
        wait_until(
            lambda: desktop.picture().pixel(*point) == (16, 32, 48),
            lambda: f"the window over the strip; it is {desktop.picture().pixel(*point)}",
        )
    finally:
        trial.close(window)


def label(trial):
    """One on arrival, in the middle of the primary monitor, and none a second later."""
    left, top, width, height = trial.desktop.primary()
    for index in (2, 3, 0, HOME):
        with trial.labels.arrival(index) as shown:
            expect(shown.role == "label", f"{shown.role} was seen on arrival")
            expect(shown.name == trial.names[index], f"{shown.name!r} on desktop {index + 1}")
            x, y, w, h = shown.frame()
            off = max(abs(2 * (x - left) + w - width), abs(2 * (y - top) + h - height))
            expect(off <= 4, f"the label is not in the middle: {shown.frame()}")
            trial.keep("label", only_once=True)
    trial.visit(0)
    time.sleep(1)
    begin = time.monotonic()
    trial.desktop.go_to(HOME)
    trial.program.wait_for_title(trial.names[HOME])
    time.sleep(1.5)
    expect(not trial.labels.shown(), f"still seen: {trial.labels.shown()}")
    seen = [s for s in trial.showings.since(begin) if trial.is_label(s.identifier)]
    expect(len(seen) == 1, f"{len(seen)} labels were seen")
    duration = seen[0].duration
    expect(duration <= LABEL_LIMIT, f"the label was seen for {duration:.2f} s")


def clicks(trial):
    """Clicks reach the window below the label."""
    desktop = trial.desktop
    trial.visit(HOME)
    script = r'printf "\033[?1000h"; stty raw -echo; : >"$0"; head -c 1 >"$0"; exec sleep 100000'
    path = desktop.path("clicked")
    # Large, because the window manager may place it anywhere.
    window = trial.open(
        "Clicked", "-geometry", "200x70", "-fs", "8", "-e", "sh", "-c", script, path
    )
    wait_until(lambda: os.path.exists(path), "the window to be ready")
    # In front of the other window of the desktop.
    desktop.run("wmctrl", "-i", "-a", window.identifier)
    try:
        with trial.labels.arrival(HOME) as shown:
            point = middle_of_both(shown.frame(), window.frame())
            desktop.run("xdotool", "mousemove", *map(str, point))

            def arrives():
                # A second click: a window manager that shows a desktop's name after a switch takes the first.
                desktop.run("xdotool", "click", "1")
                return os.path.getsize(path)

            wait_until(arrives, "a click below the label")
    finally:
        trial.point_aside()
        trial.close(window)


def middle_of_both(a, b):
    """The middle of the area that the two frames have in common."""
    expect(overlap(a, b), f"{a} and {b} have nothing in common")
    return [
        (max(a[i], b[i]) + min(a[i] + a[i + 2], b[i] + b[i + 2])) // 2 for i in (0, 1)
    ]  # fmt: skip


def focus(trial):
    """The same window has the focus with and without the program: after the tour, after
    each switch, and while a label is visible."""
    expect(trial.focus_after_tour == trial.focus[HOME],
           f"after the tour {trial.focus_after_tour!r}, not {trial.focus[HOME]!r}")  # fmt: skip
    for index in (2, 3, 0, HOME):
        wanted = trial.focus[index]
        with trial.labels.arrival(index):
            trial.wait_for_focus(wanted, f"under the label of desktop {index + 1}")
        trial.wait_for_focus(wanted, f"on desktop {index + 1}")


def places(trial):
    """New windows open where they do beside a panel of the strip's size, without it."""
    trial.visit(HOME)
    found = trial.open_three()
    wanted = trial.places_without_it()
    # One pixel: awesome draws a border around panels, too.
    off = max(abs(a - b) for pair in zip(found, wanted) for a, b in zip(*pair))
    expect(off <= 1, f"{found} in place of {wanted}")


def clients(trial):
    """No label is known to the window manager."""
    desktop = trial.desktop
    listed = {w.identifier: w.read("WM_WINDOW_ROLE") for w in desktop.clients()}
    roles = [role for role in listed.values() if role in ("label", "tour-overlay", "menu")]
    expect(not roles, f"the window manager lists {roles}")
    expect(len(trial.labels.all()) >= 4, "there are no labels on four desktops")
    expect(all(not w.is_managed for w in trial.labels.all()), "a label is managed")
    tree = trial.tree()
    if tree is not None:
        known = [w.identifier for w in trial.labels.all() if w.identifier in tree]
        expect(not known, f"the tree has labels: {known}")


def dropdown(trial):
    desktop = trial.desktop
    trial.visit(HOME)
    wanted = trial.focus[HOME]
    menu = Dropdown(trial.program)
    trial.open_menu(menu)
    trial.keep("")
    menu.hover(NAMED)
    menu.wait_for_tint(NAMED)
    menu.click_pencil(NAMED)
    menu.type(NAME)
    menu.key("Return")
    stored = lambda: list(Defaults(desktop).read().get("SpaceNames", {}).values())  # noqa: E731
    wait_until(lambda: stored() == [NAME], lambda: f"the stored name; there is {stored()}")
    trial.names[NAMED] = NAME
    menu.wait_for_label(NAMED)
    menu.click_row(2)
    menu.wait_until_closed()
    trial.program.wait_for_title(trial.names[2])
    trial.point_aside()
    trial.wait_for_focus(trial.focus[2], "after the dropdown")
    trial.visit(NAMED)
    trial.wait_for_focus(wanted, "after the dropdown, at home")


def settings(trial):
    """The settings open on the active desktop at their full size."""
    desktop = trial.desktop
    trial.visit(0)
    menu = Dropdown(trial.program)
    trial.open_menu(menu)
    menu.key("ctrl+comma")
    window = trial.program.wait_for_settings()
    size = trial.settled(window.frame)[2:]
    hints = window.read("WM_NORMAL_HINTS") or desktop.run("xprop", "-id", window.identifier)
    wanted = re.search(r"minimum size: (\d+) by (\d+)", hints)
    trial.keep("settings")
    expect(wanted and size == tuple(map(int, wanted.groups())), f"{size}, not {wanted and wanted[0]}")
    wait_until(lambda: desktop.active_name() == window.name, "the settings to be active")
    desktop.run("xdotool", "key", "Escape")
    wait_until(lambda: not window.visible, "the settings to close")
    trial.point_aside()
    trial.wait_for_focus(trial.focus[0], "after the settings")
    trial.visit(HOME)


def rest(trial):
    """The program sends the X server no requests and maps no label."""
    trial.visit(HOME)
    trial.labels.wait_for_rest()
    trial.log.wait_until_quiet()
    asked = trial.log.during(3)
    expect(not asked, f"asked at rest: {dict(asked)}")


def killed(trial):
    desktop, program = trial.desktop, trial.program
    trial.visit(HOME)
    place = program.strip().frame()
    desktop.kill_window_manager()
    program.wait_for_title("Desktops")
    desktop.start_window_manager()
    wait_until(lambda: program.title() != "Desktops", "it to follow the window manager")
    trial.visit(HOME)
    strip = program.wait_for_strip()
    wait_until(lambda: strip.frame() == place, lambda: f"{strip.frame()} in place of {place}")
    expect(strip.read("_NET_WM_WINDOW_TYPE") == "_NET_WM_WINDOW_TYPE_DOCK", "the strip is no dock")
    names(trial)


def names(trial):
    """Names stay with their desktops."""
    for index in (0, 2, NAMED):
        trial.visit(index)


def four_two_six(trial):
    desktop = trial.desktop
    for count in (2, 6, 4):
        desktop.change_count(count)
        program_sees = lambda count=count: trial.row_count() == count  # noqa: E731
        wait_until(program_sees, lambda: f"{count} rows; there are {trial.row_count()}")
        for index in {0, NAMED, count - 1}:
            trial.visit(index)
    # One for each of the most desktops at one time, and none for a desktop of a moment.
    known = Defaults(desktop).read().get("KnownSpaceUUIDs", [])
    expect(len(known) == 6, f"known are {known}")


CHECKS = {
    "tour": tour,
    # Before other desktops change the numbers that the window manager uses.
    "places": places,
    "panels": panels,
    "maximised": maximised,
    "full screen": full_screen,
    "label": label,
    "clicks": clicks,
    "focus": focus,
    "clients": clients,
    "dropdown": dropdown,
    "names": names,
    "settings": settings,
    "rest": rest,
    "killed": killed,
    "4-2-6": four_two_six,
}
