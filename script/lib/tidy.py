"""Runs clang-tidy over a compilation database, several files at once.

Usage: tidy.py BUILD_FOLDER JOBS CLANG_TIDY SUFFIX
SUFFIX is that of the files to check, .cpp or .mm.

A file that passed is not checked again until something that the result depends
on has changed: the file, what it includes of the project, its command line, the
rules, or the tool.
"""

import concurrent.futures
import hashlib
import json
import os
import re
import subprocess
import sys

from sources import ROOT, absolute, all_dependencies, text


def version(tool):
    return subprocess.run(
        [tool, "--version"], check=True, stdout=subprocess.PIPE, encoding="utf-8"
    ).stdout


def commands(build, suffix):
    """(path below ROOT, command line) of the project's own sources, each once."""
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
        entries = json.load(file)
    found = {}
    for entry in entries:
        path = os.path.relpath(entry["file"], ROOT)
        generated = path.startswith(("..", os.path.relpath(build, ROOT)))
        if not generated and path.endswith(suffix):
            found.setdefault(path, entry["command"])
    return sorted(found.items())


def rules(path):
    """The files of rules that hold for the file: its folder's and those above."""
    folder = os.path.dirname(path)
    while True:
        candidate = os.path.join(folder, ".clang-tidy")
        if os.path.isfile(absolute(candidate)):
            yield candidate
        if not folder:
            return
        folder = os.path.dirname(folder)


def fingerprint(path, command, tool_version):
    digest = hashlib.sha256()
    parts = [tool_version, command, *(text(rule) for rule in rules(path))]
    for dependency in sorted(all_dependencies(path)):
        parts += [dependency, text(dependency)]
    for part in parts:
        digest.update(part.encode() + b"\0")
    return digest.hexdigest()


def check(tool, build, path):
    """Returns clang-tidy's output; empty if it has no findings."""
    result = subprocess.run(
        # The command lines also contain GCC's own warnings.
        [tool, "-quiet", "-p", build, "--extra-arg=-Wno-unknown-warning-option",
         absolute(path)],
        stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE,
        # The count of warnings in other people's headers.
        stderr=subprocess.PIPE,
        encoding="utf-8",
        check=False,
    )
    if result.returncode == 0:
        return ""
    return result.stdout.strip() or result.stderr.strip() or f"{path}: clang-tidy failed"


def diagnostics(output):
    """The single diagnostics of clang-tidy's output, each with its lines."""
    return re.split(r"\n(?=\S+:\d+:\d+: (?:error|warning):)", output)


def main():
    build, jobs = os.path.abspath(sys.argv[1]), int(sys.argv[2])
    tool, suffix = sys.argv[3:]
    tool_version = version(tool)
    stamps = os.path.join(build, "tidy")
    os.makedirs(stamps, exist_ok=True)
    known = set(os.listdir(stamps))
    pending = []
    current = set()
    for path, command in commands(build, suffix):
        stamp = fingerprint(path, command, tool_version)
        current.add(stamp)
        if stamp not in known:
            pending.append((path, stamp))
    for stale in known - current:
        os.remove(os.path.join(stamps, stale))
    print(f"{len(pending)} of {len(current)} files to check", file=sys.stderr)

    # A fault in a header is found with every file that includes it.
    faults = set()
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        results = {pool.submit(check, tool, build, path): (path, stamp) for path, stamp in pending}
        for future in concurrent.futures.as_completed(results):
            complaint = future.result()
            if complaint:
                for fault in diagnostics(complaint):
                    if fault not in faults:
                        faults.add(fault)
                        print(fault, flush=True)
            else:
                with open(os.path.join(stamps, results[future][1]), "w", encoding="utf-8"):
                    pass
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
