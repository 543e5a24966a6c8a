"""The settings file from outside: what other programs write is read, what this
program writes is read by others, and neither crashes nor other writers spoil it.

The first argument is the program that gets and sets settings."""

import datetime
import os
import pathlib
import plistlib
import random
import re
import shutil
import signal
import stat
import subprocess
import sys
import tempfile
import time
import unittest

TOOL = None
NOBODY = 65534

EVERYTHING = {
    "true": True,
    "false": False,
    "zero": 0,
    "negative": -5,
    "large": 2**63 - 1,
    "small": -(2**63),
    "real": 0.78,
    "tiny": 5e-324,
    "infinite": float("-inf"),
    "empty": "",
    "markup": "<a href=\"x\">&amp;</a> ]]>",
    "lines": "a\nb\n\nd\te ",
    "scripts": "été שלום مرحبا 日本語 \U0001F469\u200D\U0001F680 \uFEFF",
    "date": datetime.datetime(2026, 2, 28, 23, 59, 59),
    "past": datetime.datetime(1, 1, 1),
    "future": datetime.datetime(4001, 1, 1),
    "data": bytes(range(256)),
    "nothing": b"",
    "array": [1, "two", [3.5, []], {}],
    "dictionary": {"": "empty key", "a.b/c": {"<&>": [b"x"]}},
    "many": list(range(300)),
}


class DefaultsTest(unittest.TestCase):
    def setUp(self):
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="vembrix-defaults-"))
        self.addCleanup(shutil.rmtree, self.home, ignore_errors=True)
        self.directory = self.home / "vembrix"
        self.file = self.directory / "com.vembrix.app.plist"
        self.temporary = self.directory / ".com.vembrix.app.plist.tmp"
        self.environment = dict(os.environ, XDG_CONFIG_HOME=str(self.home), HOME="/nonexistent")
        self.processes = []
        self.addCleanup(self.end_processes)

    def end_processes(self):
        for process in self.processes:
            if process.poll() is None:
                process.kill()
            process.communicate()

    def start(self, *arguments):
        process = subprocess.Popen(
            [TOOL, *map(str, arguments)],
            env=self.environment,
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
        )
        self.processes.append(process)
        return process

    def run_tool(self, *arguments, value=None, **options):
        """Its exit status, standard output and the lines of its log."""
        done = subprocess.run(
            [TOOL, *arguments],
            env=self.environment,
            input=b"" if value is None else plistlib.dumps(value),
            capture_output=True,
            timeout=30,
            **options,
        )
        log = [line for line in done.stderr.decode().splitlines() if "[Vembrix] " in line]
        return done.returncode, done.stdout, log

    def get(self, key):
        """The value as the program reads it; None when there is none."""
        status, output, log = self.run_tool("get", key)
        self.assertEqual(log, [])
        return plistlib.loads(output) if status == 0 else None

    def set(self, key, value):
        status, _, log = self.run_tool("set", key, value=value)
        self.assertEqual((status, log), (0, []))

    def write(self, contents, form=plistlib.FMT_XML):
        self.directory.mkdir(parents=True, exist_ok=True)
        self.file.write_bytes(plistlib.dumps(contents, fmt=form))

    def read(self):
        return plistlib.loads(self.file.read_bytes())

    def names(self):
        return sorted(path.name for path in self.directory.iterdir())


class InterchangeTest(DefaultsTest):
    def test_what_python_writes_is_read(self):
        self.write({"all": EVERYTHING})
        self.assertEqual(self.get("all"), EVERYTHING)

    def test_what_plistutil_writes_is_read(self):
        # Which leaves the zeros of early years away.
        contents = {key: value for key, value in EVERYTHING.items() if key != "past"}
        source = self.home / "source.plist"
        source.write_bytes(plistlib.dumps({"all": contents}, fmt=plistlib.FMT_BINARY))
        self.directory.mkdir()
        subprocess.run(["plistutil", "-i", source, "-o", self.file, "-f", "xml"], check=True)
        self.assertEqual(self.get("all"), contents)

    def test_a_binary_file_is_left_alone_until_it_is_converted(self):
        self.write({"Key": "theirs"}, plistlib.FMT_BINARY)
        before = self.file.read_bytes()
        for command in (("get", "Key"), ("set", "Other")):
            _, output, log = self.run_tool(*command, value=1)
            self.assertEqual(output, b"")
            self.assertIn("plutil -convert xml1", log[0])
            self.assertEqual(self.file.read_bytes(), before)
        subprocess.run(["plistutil", "-i", self.file, "-o", self.file, "-f", "xml"], check=True)
        self.set("Other", 1)
        self.assertEqual(self.read(), {"Key": "theirs", "Other": 1})
        self.assertEqual(self.names(), [self.file.name])

    def test_python_reads_what_is_stored(self):
        for key, value in EVERYTHING.items():
            self.set(key, value)
        self.assertEqual(self.read(), EVERYTHING)
        for key, value in EVERYTHING.items():
            self.assertEqual(self.get(key), value)

    def test_plistutil_reads_what_is_stored(self):
        self.set("all", EVERYTHING)
        converted = self.home / "converted.plist"
        subprocess.run(["plistutil", "-i", self.file, "-o", converted, "-f", "bin"], check=True)
        self.assertEqual(plistlib.loads(converted.read_bytes()), {"all": EVERYTHING})

    def test_a_write_keeps_all_that_others_wrote(self):
        self.write({"theirs": EVERYTHING})
        self.set("ours", 1)
        self.assertEqual(self.read(), {"theirs": EVERYTHING, "ours": 1})

    def test_a_key_is_removed(self):
        self.write({"a": 1, "b": 2})
        self.assertEqual(self.run_tool("remove", "a")[0], 0)
        self.assertEqual(self.read(), {"b": 2})


class PlaceTest(DefaultsTest):
    def test_modes(self):
        former = os.umask(0)
        self.addCleanup(os.umask, former)
        self.set("Key", 1)
        self.assertEqual(stat.S_IMODE(self.file.stat().st_mode), 0o600)
        self.assertEqual(stat.S_IMODE(self.directory.stat().st_mode), 0o700)

    def test_a_relative_directory_in_the_environment_does_not_count(self):
        for value in ("relative", "", None):
            self.environment.pop("XDG_CONFIG_HOME", None)
            if value is not None:
                self.environment["XDG_CONFIG_HOME"] = value
            self.environment["HOME"] = str(self.home)
            status, _, log = self.run_tool("set", "Key", value=str(value), cwd=self.home)
            self.assertEqual((status, log), (0, []))
            file = self.home / ".config" / "vembrix" / "com.vembrix.app.plist"
            self.assertEqual(plistlib.loads(file.read_bytes()), {"Key": str(value)})
            self.assertFalse((self.home / "relative").exists())

    def test_other_domains_are_found_by_name_alone(self):
        self.directory.mkdir()
        (self.directory / "com.example.plist").write_bytes(plistlib.dumps({"b": 1, "a": 2}))
        (self.home / "outside.plist").write_bytes(plistlib.dumps({"a": 3}))
        status, keys, log = self.run_tool("keys", "com.example")
        self.assertEqual((status, log), (0, []))
        self.assertEqual(sorted(plistlib.loads(keys)), ["a", "b"])
        self.assertEqual(plistlib.loads(self.run_tool("get-from", "com.example", "a")[1]), 2)
        for name in ("../outside", f"{self.home}/outside", "com.example/", "", "..", "none"):
            self.assertEqual(self.run_tool("keys", name), (1, b"", []), name)
            self.assertEqual(self.run_tool("get-from", name, "a"), (1, b"", []), name)

    def test_an_empty_domain_has_an_empty_list_of_keys(self):
        self.directory.mkdir()
        (self.directory / "com.example.plist").write_bytes(plistlib.dumps({}))
        self.assertEqual(plistlib.loads(self.run_tool("keys", "com.example")[1]), [])


class DamageTest(DefaultsTest):
    def test_a_damaged_file_is_logged_once_and_kept(self):
        self.directory.mkdir()
        self.file.write_bytes(b"<plist><dict><key>cut off")
        # Just written, it could be half of what is to come.
        os.utime(self.file, (0, 0))
        status, output, log = self.run_tool("get", "Key")
        self.assertEqual((status, output, len(log)), (1, b"", 1))
        self.assertEqual(self.names(), [self.file.name])
        status, _, log = self.run_tool("set", "Key", value=1)
        self.assertEqual((status, len(log)), (0, 1))
        self.assertEqual(self.read(), {"Key": 1})
        kept = self.directory / (self.file.name + ".damaged")
        self.assertEqual(kept.read_bytes(), b"<plist><dict><key>cut off")
        self.assertEqual(self.names(), [self.file.name, kept.name])

    def as_another_user(self):
        """For root no file is unreadable and no directory read-only."""
        if os.geteuid() != 0:
            return {}
        os.chmod(self.home, 0o755)
        for path in [self.home, *self.home.rglob("*")]:
            os.chown(path, NOBODY, NOBODY)
        return {"user": NOBODY, "group": NOBODY, "extra_groups": []}

    def test_a_file_that_may_not_be_read_is_left_alone(self):
        self.write({"Key": "secret"})
        before = self.file.read_bytes()
        self.file.chmod(0)
        user = self.as_another_user()
        status, output, log = self.run_tool("get", "Key", **user)
        self.assertEqual((status, output, len(log)), (1, b"", 1))
        self.assertIn("Permission denied", log[0])
        status, _, log = self.run_tool("set", "Key", value=1, **user)
        self.assertEqual((status, len(log)), (0, 2))
        self.file.chmod(0o600)
        self.assertEqual(self.file.read_bytes(), before)
        self.assertEqual(self.names(), [self.file.name])

    def test_a_directory_that_may_not_be_written_to_loses_nothing(self):
        self.write({"Key": "kept"})
        user = self.as_another_user()
        self.directory.chmod(0o500)
        self.addCleanup(self.directory.chmod, 0o700)
        status, _, log = self.run_tool("set", "Key", value="new", **user)
        self.assertEqual((status, len(log)), (0, 1))
        self.assertEqual(plistlib.loads(self.run_tool("get", "Key", **user)[1]), "kept")
        self.assertEqual(self.names(), [self.file.name])


class ConcurrencyTest(DefaultsTest):
    KILLS = 200

    def check_pair(self):
        """The pair that is stored; it must be whole."""
        pair = self.read()["Pair"]
        self.assertEqual(pair["text"], str(pair["number"]))
        self.assertEqual(pair["weight"], "w" * (pair["number"] % 50 * 100))
        return pair["number"]

    def test_a_killed_writer_leaves_a_whole_file(self):
        seed = random.randrange(2**32)
        chance = random.Random(seed)
        first = self.start("write-pairs", 1)
        first.stdout.readline()
        first.kill()
        first.wait()
        reader = self.start("read-pairs")
        number = self.check_pair()
        told = 0
        for _ in range(self.KILLS):
            writer = self.start("write-pairs", number + 1)
            if chance.random() < 0.9:
                told += writer.stdout.readline() != b""
            time.sleep(chance.random() * 0.01)
            writer.send_signal(signal.SIGKILL)
            lines = re.findall(rb"(\d+)\n", writer.communicate()[0])
            stored = self.check_pair()
            last = int(lines[-1]) if lines else stored
            told += len(lines)
            # What was told was stored; one more may be that could not be told.
            self.assertLessEqual(last, stored, f"seed {seed}")
            self.assertLessEqual(number, stored, f"seed {seed}")
            self.assertLessEqual(set(self.names()), {self.file.name, self.temporary.name})
            number = stored
        self.assertGreater(told, self.KILLS / 2, "the writers wrote")
        output, _ = reader.communicate(b"end\n")
        self.assertEqual(reader.returncode, 0, f"seed {seed}: {output.decode()}")
        self.assertGreater(int(output), self.KILLS, "the reader read all the time")
        self.set("Key", 1)
        self.assertEqual(self.names(), [self.file.name])

    def test_writers_at_one_time_lose_no_key(self):
        count = 100
        prefixes = ("A", "B", "C")
        writers = [self.start("set-many", prefix, count) for prefix in prefixes]
        for writer in writers:
            self.assertEqual(writer.wait(), 0)
        expected = {f"{prefix}{i}": i for prefix in prefixes for i in range(count)}
        self.assertEqual(self.read(), expected)
        self.assertEqual(self.names(), [self.file.name])

    def test_a_writer_that_stands_still_holds_nobody_up_for_long(self):
        self.write({"Key": "kept"})
        writer = self.start("write-pairs", 1)
        writer.stdout.readline()
        deadline = time.monotonic() + 30
        # Until it stands still with the temporary open.
        while time.monotonic() < deadline:
            writer.send_signal(signal.SIGSTOP)
            os.waitpid(writer.pid, os.WUNTRACED)
            if self.temporary.exists():
                break
            writer.send_signal(signal.SIGCONT)
            time.sleep(0.001)
        self.assertTrue(self.temporary.exists())
        start = time.monotonic()
        status, _, log = self.run_tool("set", "Key", value="new")
        self.assertLess(time.monotonic() - start, 10)
        self.assertEqual(status, 0)
        self.assertLessEqual(len(log), 1)
        self.assertIn(self.read()["Key"], ("kept", "new"))
        writer.send_signal(signal.SIGKILL)
        writer.wait()
        self.set("Key", "newer")
        self.assertEqual(self.read()["Key"], "newer")


if __name__ == "__main__":
    with tempfile.TemporaryDirectory(prefix="vembrix-tool-") as folder:
        # The folder of the build may be one that only its owner may enter.
        os.chmod(folder, 0o755)
        TOOL = shutil.copy(sys.argv.pop(1), folder)
        unittest.main()
