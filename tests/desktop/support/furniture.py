"""Other programs on a private desktop, so that it looks like one in use."""

from support.processes import wait_until

NOTES = {
    0: ("Notes", "Today\n-----\n* answer the mail\n* review the release notes\n* call Ada at four"),
    1: ("Mail", "Inbox (3)\n\n  Grace   Re: Thursday\n  Ada     The engine works\n  Alan    Lunch?"),
    2: ("Build", "$ ninja\n[42/42] Linking\n$ ctest\n100% tests passed"),
    3: ("Music", "Now playing\n\n  The Well-Tempered Clavier\n  Book I, Prelude in C"),
}


def hang_wallpaper(desktop):
    desktop.run("hsetroot", "-add", "#27436b", "-add", "#7d9bc1", "-gradient", "30")


def open_window(desktop, program, *arguments):
    """Starts a program and waits until its window, titled by the first option, is visible."""
    title = arguments[1]
    desktop.start([program, *arguments])
    wait_until(
        lambda: any(
            window.visible and window.read("WM_NAME") == title
            for window in desktop.windows_of_class(program)
        ),
        f"the window {title!r}",
    )


def open_note(desktop, index, geometry, font_size):
    """The note of that desktop, on the current one."""
    title, text = NOTES[index]
    script = 'printf "%s\\n" "$0"; exec sleep 100000'
    open_window(
        desktop, "xterm", "-title", title, "-geometry", geometry, "-fa", "DejaVu Sans Mono",
        "-fs", str(font_size), "-bg", "#fdfdf8", "-fg", "#202020", "-b", "10", "+sb",
        "-e", "sh", "-c", script, text,
    )  # fmt: skip
