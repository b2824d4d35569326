#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Runs the command line program as a process, for what needs one: closed pipes, full disks, folders
# without permissions, interrupts, locales, terminals.
import fcntl
import json
import os
import pathlib
import pty
import random
import re
import resource
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import termios
import time
import unittest

import jsonschema

SOURCES = pathlib.Path(__file__).resolve().parents[2]
INTERRUPTS = int(os.environ.get("AEROLITH_INTERRUPTS", "20"))
NOBODY = 65534
PROGRAM = COMPLETION = DOCUMENTS = None

TABLE = b"A plain section\n" + b"".join(
    b"%.5f %.5f\n" % (x, y) for x, y in
    [(1, 0), (.75, .05), (.5, .08), (.25, .07), (.05, .03), (0, 0), (.05, -.02), (.25, -.04),
     (.5, -.04), (.75, -.02), (1, 0)])


def long_table(seed):
    """A section of several thousand points, so that a run takes some time."""
    count, height = 2000, 0.05 + 0.0001 * seed
    upper = [(i / count, height * (i / count) ** .5 * (1 - i / count)) for i in range(count, 0, -1)]
    lower = [(x, -0.7 * y) for x, y in reversed(upper)]
    return f"Section {seed}\n".encode() + b"".join(
        b"%.6f %.6f\n" % point for point in upper + [(0, 0)] + lower)


class Road(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="aerolith-road-"))
        self.folder.chmod(0o755)
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.before = os.getcwd()
        self.addCleanup(os.chdir, self.before)
        os.chdir(self.folder)

    def run_cli(self, *arguments, **options):
        options.setdefault("env", {"PATH": os.environ["PATH"]})
        return subprocess.run([PROGRAM, *arguments], capture_output=True, timeout=60, **options)

    def put(self, name, data=TABLE):
        path = os.fsencode(name)
        os.makedirs(os.path.dirname(path) or b".", exist_ok=True)
        with open(path, "wb") as file:
            file.write(data)

    def files(self):
        return sorted(os.path.join(folder, name)[2:]
                      for folder, _, names in os.walk(b".") for name in names)

    # Names

    def test_names_that_steer_terminals(self):
        names = [b"in/a\nb.dat", b"in/\x1b[2J.dat", b"in/\xff\xfe.dat", b"in/\xc2\x9b.dat",
                 b"in/ .dat", b"in/-f", b"in/[a,b]", b"in/%1 %s.dat", "in/flügel.dat".encode()]
        for name in names:
            self.put(name)
        run = self.run_cli("convert", "in", "-d", b"out\xfe\x07")
        self.assertEqual((run.returncode, run.stderr), (0, b""))
        self.assertFalse(re.search(rb"[\x00-\x09\x0b-\x1f\x7f]", run.stdout))
        self.assertEqual(run.stdout.count(b"\n"), len(names))
        run.stdout.decode()
        outputs = [name for name in self.files() if name.startswith(b"out\xfe\x07/")]
        self.assertEqual(len(outputs), len(names))
        for verb, more in (("check", []), ("convert", ["-f", "-d", b"out\xfe\x07"])):
            objects = json.loads(self.run_cli(verb, "--json", "in", *more).stdout)
            self.assertEqual(
                [bytes.fromhex(o["path_hex"]) if "path_hex" in o else o["path"].encode()
                 for o in objects], sorted(names))
        self.assertEqual(self.run_cli("check", *names).returncode, 0)
        self.assertEqual(
            self.run_cli("check", "--files-from", "-", "-0", input=b"\0".join(names)).returncode, 0)

    # Streams

    def test_json_is_what_the_schema_says(self):
        self.put("in/good.dat")
        self.put(b"in/\xff.dat")
        self.put("in/bad.dat", b"O.123 1.234.5\n")
        shutil.copy(SOURCES / "samples/symmetric.spl", "in/spline.spl")
        sample = str(SOURCES / "samples/symmetric.spl")
        for verb, *more in (["check"], ["convert", "-d", "out"],
                            ["convert", "-d", "out", "-f", "--to", "spl"],
                            ["fit", "-d", "out", "-f", "--points", "8"],
                            ["measure", "--at", "0,20,100", "--chord", "2850"],
                            ["compare", "--align", "--tolerance", "0.001", sample],
                            ["draw", "-o", "picture.svg", "--deviation"]):
            schema = json.loads((SOURCES / f"docs/schemas/{verb}.json").read_text())
            jsonschema.Draft7Validator.check_schema(schema)
            run = self.run_cli(verb, "--json", *more, "in", "missing", str(SOURCES / "samples"))
            lines = run.stdout.decode().splitlines()
            self.assertEqual((lines[0], lines[-1]), ("[", "]"))
            # draw adds an object for the picture.
            count = 4 + len(os.listdir(SOURCES / "samples")) + (verb == "draw")
            self.assertEqual(len(lines), 2 + 1 + count)
            jsonschema.validate(json.loads(run.stdout), schema)
            with self.assertRaises(jsonschema.ValidationError):
                jsonschema.validate([{**json.loads(run.stdout)[0], "more": 1}], schema)

    def test_closed_pipe(self):
        for index in range(300):
            self.put(f"in/{index}.dat")
        for inherited in (signal.SIG_DFL, signal.SIG_IGN):
            process = subprocess.Popen(
                [PROGRAM, "check", "in"], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                restore_signals=False, preexec_fn=lambda: signal.signal(signal.SIGPIPE, inherited))
            process.stdout.readline()
            process.stdout.close()
            self.assertEqual(process.stderr.read(), b"")
            process.stderr.close()
            self.assertEqual(process.wait(timeout=60), -signal.SIGPIPE)

    def test_closed_streams(self):
        self.put("a.dat")
        for closed in range(8):
            def close():
                for fd in range(3):
                    if closed & 1 << fd:
                        os.close(fd)
            process = subprocess.Popen([PROGRAM, "convert", "a.dat", "-o", f"{closed}.txt"],
                                       preexec_fn=close, stdout=subprocess.DEVNULL,
                                       stderr=subprocess.DEVNULL)
            self.assertEqual(process.wait(timeout=60), 1 if closed & 2 else 0)
            with open(f"{closed}.txt", "rb") as file:
                self.assertIn(b"1.00000000", file.readline() + file.readline())

    # Disks

    def test_full_standard_output(self):
        self.put("a.dat")
        for arguments in (["check", "a.dat"], ["check", "a.dat", "--json"], ["--version"],
                          ["convert", "a.dat", "-o", "-"]):
            with open("/dev/full", "wb") as full:
                run = subprocess.run([PROGRAM, *arguments], stdout=full, stderr=subprocess.PIPE,
                                     timeout=60)
            self.assertEqual(run.returncode, 1)
            self.assertIn(b"standard output: No space left on device", run.stderr)

    def test_file_size_limit(self):
        self.put("a.dat", long_table(1))
        self.put("b.dat")
        self.put("out/a.txt", b"old")
        limit = (20000, resource.getrlimit(resource.RLIMIT_FSIZE)[1])
        run = self.run_cli("convert", "a.dat", "b.dat", "-d", "out", "-f", preexec_fn=lambda:
                           resource.setrlimit(resource.RLIMIT_FSIZE, limit))
        self.assertEqual(run.returncode, 1)
        self.assertIn(b"out/a.txt: cannot be written", run.stderr)
        self.assertEqual(self.files(), [b"a.dat", b"b.dat", b"out/a.txt", b"out/b.txt"])
        self.assertEqual(pathlib.Path("out/a.txt").read_bytes(), b"old")

    def test_full_disk(self):
        self.put("in/a.dat", long_table(1))
        self.put("in/b.dat")
        script = ('mkdir disk && mount -t tmpfs -o size=32k none disk && echo old > disk/a.txt && '
                  '"$0" convert in -d disk -f; code=$?; ls -A disk; cat disk/a.txt; exit $code')
        if subprocess.run(["unshare", "--mount", "true"], capture_output=True).returncode != 0:
            self.skipTest("no rights to mount a small disk")
        run = subprocess.run(["unshare", "--mount", "sh", "-c", script, PROGRAM],
                             capture_output=True, timeout=60)
        self.assertEqual(run.returncode, 1)
        self.assertIn(b"disk/a.txt: cannot be written", run.stderr)
        self.assertTrue(run.stdout.endswith(b"a.txt\nb.txt\nold\n"), run.stdout)

    def test_folder_without_rights(self):
        self.put("in/a.dat")
        self.put("in/closed/b.dat")
        self.put("out/keep", b"")
        os.chmod("in/closed", 0)
        os.chmod("out", 0o555)
        program = shutil.copy(PROGRAM, "program")
        as_user = {"user": NOBODY, "group": NOBODY} if os.geteuid() == 0 else {}
        run = subprocess.run(["./program", "convert", "in", "-d", "out"], capture_output=True,
                             timeout=60, **as_user)
        os.chmod("in/closed", 0o755)
        os.chmod("out", 0o755)
        self.assertEqual(run.returncode, 1)
        self.assertIn(b"out/a.txt: cannot be written", run.stderr)
        self.assertIn(b"in/closed/: Permission denied", run.stderr)
        self.assertEqual(os.listdir("out"), ["keep"])
        self.assertTrue(program)

    # Interrupts

    def test_interrupts(self):
        seed = int(os.environ.get("AEROLITH_SEED", random.randrange(2 ** 32)))
        generator = random.Random(seed)
        count = 120
        for index in range(count):
            self.put(f"in/{index}.dat", long_table(index))
        start = time.monotonic()
        self.assertEqual(self.run_cli("convert", "in", "-d", "whole", "-j4").returncode, 0)
        duration = time.monotonic() - start
        whole = {name: pathlib.Path("whole", name).read_bytes() for name in os.listdir("whole")}
        interrupted = 0
        for round_number in range(INTERRUPTS):
            # Every other round replaces old files.
            out = pathlib.Path("out")
            shutil.rmtree(out, ignore_errors=True)
            old = b"old" if round_number % 2 else None
            if old:
                for name in whole:
                    self.put(f"out/{name}", old)
            # A background process inherits ignored interrupts.
            process = subprocess.Popen(
                [PROGRAM, "convert", "in", "-d", "out", "-j4", "-f"], stdout=subprocess.PIPE,
                stderr=subprocess.PIPE,
                preexec_fn=lambda: signal.signal(signal.SIGINT, signal.SIG_DFL))
            time.sleep(generator.uniform(0, 0.9 * duration))
            process.send_signal(signal.SIGINT)
            _, messages = process.communicate(timeout=60)
            self.assertIn(process.returncode, (0, -signal.SIGINT), f"seed {seed}")
            self.assertEqual(messages, b"", f"seed {seed}")
            interrupted += process.returncode != 0
            for name in os.listdir("out") if out.exists() else []:
                self.assertIn(name, list(whole), f"seed {seed}: left behind")
                self.assertTrue((out / name).read_bytes() in (whole[name], old),
                                f"seed {seed}: {name} is half written")
        self.assertGreater(interrupted, INTERRUPTS // 3)

    # Environments

    def test_surroundings_change_nothing(self):
        self.put("in/a.dat")
        self.put("in/b.dat", b"1,5 x\n")
        locales = self.folder / "locales"
        locales.mkdir()
        subprocess.run(["localedef", "-i", "de_DE", "-f", "UTF-8", str(locales / "de_DE.UTF-8")],
                       check=True, capture_output=True)
        # In a build that detects leaks, the fonts of Qt must stay suppressed.
        bare = {name: value for name, value in os.environ.items() if name == "ASAN_OPTIONS"}
        path = {**bare, "PATH": os.environ["PATH"]}
        surroundings = [
            bare, path, {**path, "LC_ALL": "C"}, {**path, "LC_ALL": "C.UTF-8", "HOME": "/nowhere"},
            {**path, "LC_ALL": "de_DE.UTF-8", "LANG": "de_DE.UTF-8", "LOCPATH": str(locales)},
            {**path, "DISPLAY": ":99", "QT_QPA_PLATFORM": "none-such", "TZ": "Asia/Tokyo"}]
        # The locale works: its numbers have a decimal comma.
        comma = subprocess.run(["printf", "%.1f", "0"], env=surroundings[4], capture_output=True)
        self.assertEqual(comma.stdout, b"0,0")
        seen = set()
        for env in surroundings:
            runs = [self.run_cli("check", "--json", "in", env=env),
                    self.run_cli("convert", "in/a.dat", "-o", "-", "--openings", "9.5", "20",
                                 env=env)]
            runs += [self.run_cli("draw", "in/a.dat", "-o", "-", "--to", kind, "--nose", env=env)
                     for kind in ("svg", "pdf", "png")]
            seen.add(tuple((run.returncode, run.stdout, run.stderr) for run in runs))
        self.assertEqual(len(seen), 1)
        self.assertIn(b"0.75000000", runs[1].stdout)

    def test_same_bytes_for_all_jobs_and_folders(self):
        for index in range(40):
            self.put(f"in/{index}.dat", long_table(index))
        seen = set()
        for jobs in (1, 3, 8):
            out = f"out{jobs}"
            self.assertEqual(
                self.run_cli("convert", "in", "-d", out, f"-j{jobs}").returncode, 0)
            seen.add(tuple(sorted((name, pathlib.Path(out, name).read_bytes())
                                  for name in os.listdir(out))))
        self.assertEqual(len(seen), 1)

    # Terminals

    def on_terminal(self, arguments, columns, feed=None, only_errors=False):
        """The output on a terminal with a number of columns."""
        master, slave = pty.openpty()
        fcntl.ioctl(slave, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
        with open("stdout", "wb") as out:
            process = subprocess.Popen([PROGRAM, *arguments], stdin=subprocess.PIPE, stderr=slave,
                                       stdout=out if only_errors else slave)
        os.close(slave)
        if feed:
            feed(process.stdin)
        process.stdin.close()
        text = b""
        while True:
            try:
                part = os.read(master, 65536)
            except OSError:
                break
            if not part:
                break
            text += part
        os.close(master)
        process.wait(timeout=60)
        return text.decode()

    def test_narrow_terminal(self):
        self.put("in/a.dat")
        self.put("in/b.dat", b"no table\n")
        for arguments in ([], ["check", "--help"], ["convert", "--help"], ["check", "in"],
                          ["check", "--jsno"], ["convert", "in/a.dat"]):
            text = self.on_terminal(arguments, 40)
            for line in text.replace("\r\n", "\n").split("\n"):
                # Programs read findings as well: "name:line: text" is never wrapped.
                if not line.startswith("in/"):
                    self.assertTrue(len(line) <= 40, f"{arguments}: {line!r}")

    def test_progress_bar(self):
        def slowly(stream):
            time.sleep(1.5)
            stream.write(TABLE)

        self.put("a.dat")
        arguments = ["check", "-", "a.dat"]
        text = self.on_terminal(arguments, 40, slowly, only_errors=True).replace("\x1b[K", "")
        self.assertIn("\r[", text)
        self.assertIn(" 1/2", text)
        self.assertIn("\r2 files: ", text)
        for part in re.split(r"[\r\n]", text):
            self.assertLessEqual(len(part), 40)
        quick = self.on_terminal(arguments, 40, lambda stream: stream.write(TABLE),
                                 only_errors=True)
        self.assertNotIn("[", quick)
        both = self.on_terminal(arguments, 80, slowly)
        self.assertNotIn("\r[", both)

    # Real files

    @unittest.skipUnless("AEROLITH_TABLES" in os.environ, "AEROLITH_TABLES names no folder")
    def test_real_tables(self):
        folder = os.path.join(self.before, os.environ["AEROLITH_TABLES"])
        check = self.run_cli("check", "--json", folder)
        verdicts = {one["path"]: one for one in json.loads(check.stdout)}
        self.assertEqual(set(verdicts), {os.path.join(path, name) for path, _, names
                                         in os.walk(folder) for name in names})
        run = self.run_cli("convert", "--json", folder, "-d", "out")
        written = {one["path"]: one for one in json.loads(run.stdout) if "output" in one}
        refused = {path for path, one in verdicts.items() if one["verdict"] in ("ask", "bad")}
        self.assertLessEqual(set(written), set(verdicts) - refused)
        for path in set(verdicts) - refused - set(written):
            self.assertIn(path.encode(), run.stderr)
        # The window shows each file as it is meant.
        for one in json.loads(self.run_cli("check", "--json", "out").stdout):
            self.assertEqual((one["verdict"], one["path"]), ("ok", one["path"]))
        print(f"{len(verdicts)} files, {len(written)} written, {len(refused)} refused")

    # Completion

    def completed(self, *words):
        script = ('source "$0"; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); compopt() { :; }; '
                  '_aerolith_cli; printf "%s\\n" "${COMPREPLY[@]}"')
        run = subprocess.run(["bash", "-c", script, COMPLETION, "aerolith-cli", *words],
                             capture_output=True, check=True, timeout=60)
        self.assertEqual(run.stderr, b"")
        return run.stdout.decode().split("\n")[:-1]

    def test_bash_completion(self):
        self.put("wing.dat")
        os.mkdir("wings")
        self.assertEqual(self.completed("ch"), ["check"])
        self.assertEqual(self.completed("check", "--js"), ["--json"])
        self.assertEqual(self.completed("convert", "--to", "led"), ["lednicer"])
        self.assertEqual(self.completed("convert", "-t", "led"), ["lednicer"])
        self.assertEqual(sorted(self.completed("check", "wi")), ["wing.dat", "wings"])
        self.assertEqual(self.completed("convert", "-d", "wi"), ["wings"])
        self.assertEqual(self.completed("check", "--jobs", ""), [""])

    def test_bash_completes_every_option(self):
        self.put("wing.dat")
        os.mkdir("wings")
        grammar = subprocess.run([DOCUMENTS, "grammar"], capture_output=True, check=True, text=True,
                                 timeout=60).stdout
        verbs = {}
        for line in grammar.splitlines():
            name, *values = line.split()
            if name == "verb":
                options = verbs[values[0]] = {}
            else:
                options[name] = values
        self.assertEqual(sorted(self.completed("")), sorted([*verbs, "--help", "--version"]))
        for verb, options in verbs.items():
            self.assertEqual(sorted(self.completed(verb, "-")), sorted(options))
            for option, values in options.items():
                # A file can be any text, which cannot be completed.
                value = values[0].strip("{}") if values else "file"
                expected = [[""]]
                if value == "file":
                    expected = [["wing.dat", "wings"]] + expected * len(values)
                elif value == "folder":
                    expected = [["wings"]]
                elif ".." not in value:
                    expected = [sorted(value.split("|"))]
                with self.subTest(verb=verb, option=option):
                    self.assertIn(sorted(self.completed(verb, option, "")), expected)


if __name__ == "__main__":
    PROGRAM, COMPLETION, DOCUMENTS = map(os.path.abspath, sys.argv[1:4])
    unittest.main(argv=sys.argv[:1] + sys.argv[4:], verbosity=1)
