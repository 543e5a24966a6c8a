"""Checks which folder includes which, that no two files and no two folders include each
other, directly or through others, and that no operating system is known outside its
platform's folder. Prints each fault as path:line: text; status 1 if any."""

import os
import re
import sys

from sources import direct_dependencies, files, includes, resolve, text

# A folder may include the folders of its own row and of the rows below it.
ROWS = (
    ("app",),
    ("menubar", "labels", "ui"),
    ("watchers",),
    ("spaces", "settings"),
    ("platform",),
)
RANK = {folder: rank for rank, row in enumerate(ROWS) for folder in row}

# Files that may depend on a system, by their paths.
SYSTEM_FOLDERS = re.compile(
    r"^src/platform/(macos|linux)/|^tests/platform/(macos|linux)/|^tests/desktop/"
    r"|^bench/(.*/)?(macos|linux)/|^packaging/"
    # The Objective-C++ part of the conformance suites.
    r"|^tests/platform/conformance/[A-Za-z]+\.mm$"
)
# The headers of the C++ standard have no suffix and no capital; libraries that
# all systems have are named.
PORTABLE_HEADER = re.compile(r"^[a-z][a-z0-9_]*$")
# A library that all systems have, used by the part that the platforms share.
SHARED_HEADER = re.compile(r"^nlohmann/")
TEST_HEADER = re.compile(r"^(gtest|gmock|benchmark)/")
SYSTEM_CONDITIONAL = re.compile(
    r"^[ \t]*#[ \t]*(?:if|ifdef|ifndef|elif|elifdef|elifndef)\b.*"
    r"(__APPLE__|__MACH__|__linux|__unix|__FreeBSD__|__ANDROID__|_WIN32|_WIN64|_MSC_VER|__OBJC__"
    r"|__GLIBC__|Q_OS_|TARGET_OS_|__has_include)",
    re.MULTILINE,
)


def folder_of(path):
    parts = path.split("/")
    return parts[1] if len(parts) > 2 and parts[0] == "src" else None


def system_faults(path):
    content = text(path)
    for match in SYSTEM_CONDITIONAL.finditer(content):
        line = content.count("\n", 0, match.start()) + 1
        yield line, f"asks for a system by {match[1]}"
    if SYSTEM_FOLDERS.match(path):
        return
    for line, quote, name in includes(path):
        if quote == "<":
            portable = PORTABLE_HEADER.match(name) or (
                path.startswith("src/platform/portable/") and SHARED_HEADER.match(name)
            )
            if not portable and (path.startswith("src/") or not TEST_HEADER.match(name)):
                yield line, f"<{name}> is no header of standard C++"
        elif not resolve(path, name):
            yield line, f'"{name}" is no file of the project'


def arrow_faults(path):
    source = folder_of(path)
    if source is None:
        return
    if source not in RANK:
        yield 1, f"src/{source} has no place among the arrows"
        return
    for line, quote, name in includes(path):
        target_path = resolve(path, name) if quote == '"' else None
        target = folder_of(target_path) if target_path else None
        if target is None:
            continue
        if RANK.get(target, -1) < RANK[source]:
            yield line, f"{source} must not know {target} ({name})"
        elif target == "platform" and not reaches(platform_of(path), platform_of(target_path)):
            yield line, f"{path} must not know the inside of a platform ({name})"


def platform_of(path):
    """The platform whose folder the file is in; None for the seam and for what
    is above it."""
    parts = path.split("/")
    return parts[2] if parts[:2] == ["src", "platform"] and len(parts) > 3 else None


def reaches(own, other):
    # Linux takes the desktop in the process in, for machines without a screen.
    return other in (None, "portable", own) or (own, other) == ("linux", "embedded")


def cycles(nodes, neighbours):
    """Yields each circle of includes once."""
    done, trail = set(), []

    def visit(node):
        if node in trail:
            yield trail[trail.index(node) :] + [node]
            return
        if node in done:
            return
        done.add(node)
        trail.append(node)
        for neighbour in neighbours(node):
            yield from visit(neighbour)
        trail.pop()

    for node in nodes:
        yield from visit(node)


def folder_graph(paths):
    """Returns for each folder of the sources the other folders that its files include, each
    with the first such include."""
    graph = {}
    for path in paths:
        if not path.startswith("src/"):
            continue
        known = graph.setdefault(os.path.dirname(path), {})
        for dependency in direct_dependencies(path):
            folder = os.path.dirname(dependency)
            if folder != os.path.dirname(path):
                known.setdefault(folder, f"{path} includes {dependency}")
    return graph


def folder_faults(paths):
    graph = folder_graph(paths)
    for cycle in cycles(graph, lambda folder: graph.get(folder, {})):
        chain = "; ".join(graph[one][other] for one, other in zip(cycle, cycle[1:]))
        yield f"{cycle[0]}: a circle of folders: {chain}"


def main():
    paths = files("*.h", "*.cpp", "*.mm")
    faults = [
        f"{path}:{line}: {fault}"
        for path in paths
        for check in (system_faults, arrow_faults)
        for line, fault in check(path)
    ]
    faults += [
        f"{cycle[0]}:1: includes itself: {' > '.join(cycle)}"
        for cycle in cycles(paths, direct_dependencies)
    ]
    faults += folder_faults(paths)
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
