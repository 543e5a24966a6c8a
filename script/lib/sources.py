"""The project's C++ sources and what they include."""

import functools
import os
import re
import subprocess

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
INCLUDE = re.compile(r'^[ \t]*#[ \t]*(?:include|import)[ \t]*([<"])([^>"]+)[>"]', re.MULTILINE)
# Where a quoted name is looked for, after the folder of the file itself.
INCLUDE_FOLDERS = ("src", "tests", "bench")


def files(*patterns):
    """Paths below ROOT of the working tree's files, sorted."""
    names = subprocess.run(
        ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard", "--", *patterns],
        cwd=ROOT,
        check=True,
        stdout=subprocess.PIPE,
        encoding="utf-8",
    ).stdout
    return sorted(name for name in names.split("\0") if name and os.path.exists(absolute(name)))


def absolute(path):
    return os.path.join(ROOT, path)


@functools.lru_cache(maxsize=None)
def text(path):
    with open(absolute(path), encoding="utf-8") as file:
        return file.read()


@functools.lru_cache(maxsize=None)
def includes(path):
    """(line number, "<" or '"', name) of each include of the file."""
    content = text(path)
    return [
        (content.count("\n", 0, match.start()) + 1, match[1], match[2])
        for match in INCLUDE.finditer(content)
    ]


@functools.lru_cache(maxsize=None)
def resolve(path, name):
    """The project's file that a quoted include names, or None."""
    for folder in (os.path.dirname(path), *INCLUDE_FOLDERS):
        candidate = os.path.normpath(os.path.join(folder, name))
        if os.path.isfile(absolute(candidate)):
            return candidate
    return None


def direct_dependencies(path):
    found = (resolve(path, name) for _, quote, name in includes(path) if quote == '"')
    return [dependency for dependency in found if dependency]


def all_dependencies(path):
    """The file itself and all it includes, directly or through others."""
    seen = {path}
    open_paths = [path]
    while open_paths:
        for dependency in direct_dependencies(open_paths.pop()):
            if dependency not in seen:
                seen.add(dependency)
                open_paths.append(dependency)
    return seen
