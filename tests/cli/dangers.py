#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Runs the command line program where files are links or vanish, or where the system refuses
# resources. A run may fail, but must not damage any file.
import os
import pathlib
import resource
import shutil
import subprocess
import sys
import tempfile
import threading
import unittest

NOBODY = 65534
PROGRAM = None

TABLE = b"A plain section\n" + b"".join(
    b"%.5f %.5f\n" % (x, y) for x, y in
    [(1, 0), (.75, .05), (.5, .08), (.25, .07), (.05, .03), (0, 0), (.05, -.02), (.25, -.04),
     (.5, -.04), (.75, -.02), (1, 0)])

# Each row: name, links with targets, arguments, exit code, part of the message, changed files.
LINKS = [
    ("to-a-file", {"l.dat": "a.dat"}, "convert l.dat -o new.txt", 0, "", ["new.txt"]),
    ("dangling-input", {"l.dat": "none"}, "convert l.dat -o new.txt", 1, "No such file", []),
    ("loop-input", {"l.dat": "l.dat"}, "convert l.dat -o new.txt", 1, "Too many levels", []),
    ("folder-input", {"l": "in"}, "convert l -d new", 0, "", ["new/c.txt", "new/d.txt"]),
    ("loop-below-a-folder", {"in/l": "."}, "convert in -d new", 0, "", ["new/c.txt", "new/d.txt"]),
    ("link-stays", {"l.txt": "old.txt"}, "convert a.dat -o l.txt -f", 0, "", ["old.txt"]),
    ("link-is-old", {"l.txt": "old.txt"}, "convert a.dat -o l.txt", 2, "l.txt exists", []),
    ("dangling-output", {"l.txt": "new.txt"}, "convert a.dat -o l.txt", 0, "", ["new.txt"]),
    ("loop-output", {"l.txt": "l.txt"}, "convert a.dat -o l.txt -f", 1, "cannot be written", []),
    ("link-to-input", {"l.txt": "a.dat"}, "convert a.dat -o l.txt -f", 2, "is an input", []),
    ("linked-folder", {"l": "in"}, "convert a.dat -d l", 0, "", ["in/a.txt"]),
    ("loop-folder", {"l": "l"}, "convert a.dat -d l", 1, "cannot make the folder", []),
    ("dangling-folder", {"l": "none"}, "convert a.dat -d l", 1, "cannot make the folder", []),
    ("two-by-a-link", {"new/c.txt": "d.txt"}, "convert in -d new", 2, "same file", []),
    ("two-of-one-name", {}, "convert in b/in -d new", 2, "would both be written", []),
    ("twice", {}, "convert a.dat ./a.dat -d new", 2, "would both be written", []),
    ("input-is-output", {}, "convert a.dat -t csv -o ./in/../a.dat -f", 2, "is an input", []),
    ("picture-is-input", {}, "draw a.dat b.dat -t svg -o b.dat -f", 2, "is an input", []),
    ("page-is-input", {}, "check a.dat b.dat --report b.dat -f", 2, "is an input", []),
    ("page-is-list", {}, "check --files-from list --report list -f", 2, "is an input", []),
    ("output-is-list", {}, "convert --files-from list -o list -f", 2, "is an input", []),
    ("output-in-a-rib-list", {}, "convert --ribs ribs -t dxf -o a.dat -f", 1, "the output", []),
]


class Dangers(unittest.TestCase):
    def setUp(self):
        self.before = os.getcwd()
        self.addCleanup(os.chdir, self.before)

    def fresh_folder(self):
        folder = pathlib.Path(tempfile.mkdtemp(prefix="aerolith-dangers-"))
        self.addCleanup(shutil.rmtree, folder, ignore_errors=True)
        folder.chmod(0o777)
        os.chdir(folder)
        for name in ("a.dat", "b.dat", "in/c.dat", "in/d.dat", "b/in/c.dat"):
            self.put(name, TABLE)
        self.put("old.txt", b"old")
        self.put("list", b"a.dat\n")
        self.put("ribs", b"a.dat,300\n")

    @staticmethod
    def put(name, data):
        os.makedirs(os.path.dirname(name) or ".", exist_ok=True)
        pathlib.Path(name).write_bytes(data)

    @staticmethod
    def contents():
        """The bytes of each file and the target of each link."""
        found = {}
        for folder, folders, names in os.walk("."):
            for name in names + folders:
                path = pathlib.Path(folder, name)
                if path.is_symlink():
                    found[str(path)] = os.readlink(path)
                elif path.is_file():
                    found[str(path)] = path.read_bytes()
        return found

    def run_cli(self, arguments, program=None, **options):
        return subprocess.run([program or PROGRAM, *arguments.split()], capture_output=True,
                              timeout=120, **options)

    def require_whole(self, run, written):
        """Requires complete files with these names, and messages for the missing ones."""
        self.assertIn(run.returncode, (0, 1), run.stderr)
        contents = self.contents()
        self.assertLessEqual({name for name in contents if name.startswith("./new/")}, set(written))
        for name in contents.keys() & set(written):
            self.assertEqual(contents[name].count(b"\n"), 12, name)
        failed = [name for name in written if not os.path.exists(name)]
        self.assertEqual(bool(failed), run.returncode == 1, run.stderr)
        self.assertGreaterEqual(run.stderr.count(b"\n"), len(failed))

    def test_names(self):
        for name, links, arguments, code, message, new in LINKS:
            with self.subTest(name):
                self.fresh_folder()
                for link, target in links.items():
                    os.makedirs(os.path.dirname(link) or ".", exist_ok=True)
                    os.symlink(target, link)
                before = self.contents()
                run = self.run_cli(arguments)
                after = self.contents()
                self.assertEqual(run.returncode, code, run.stderr)
                self.assertIn(message.encode(), run.stderr)
                changed = sorted(os.path.normpath(path) for path in before.keys() | after.keys()
                                 if before.get(path) != after.get(path))
                self.assertEqual(changed, new)

    # Folders that vanish

    def test_working_folder_that_is_gone(self):
        self.fresh_folder()
        given = os.path.abspath("a.dat")
        for arguments, code in ((f"check {given}", 0), (f"convert {given} -o new.txt", 1),
                                (f"convert {given} -d new", 1), ("check a.dat", 1),
                                (f"draw {given} -o new.svg", 1),
                                (f"check {given} --report page.html", 2)):
            os.mkdir("gone")
            run = self.run_cli(arguments, preexec_fn=lambda: (os.chdir("gone"), os.rmdir("../gone")))
            self.assertEqual(run.returncode, code, (arguments, run.stderr))

    def test_folder_that_vanishes(self):
        """After the first result the folder has been read; standard input keeps the run waiting."""
        for gone, arguments in (("in", "measure a.dat - in"), ("b", "draw a.dat - -o b/new.svg"),
                                ("b", "check a.dat - --report b/page.html")):
            self.fresh_folder()
            process = subprocess.Popen([PROGRAM, *arguments.split(), "-j1"], stdin=subprocess.PIPE,
                                       stdout=subprocess.PIPE, stderr=subprocess.PIPE)
            self.assertIn(b"a.dat", process.stdout.readline())
            shutil.rmtree(gone)
            out, messages = process.communicate(TABLE, timeout=120)
            self.assertEqual(process.returncode, 1, messages)
            self.assertIn(f"{gone}/".encode(), messages)
            self.assertIn(b"-", out)
            self.assertFalse(os.path.exists(gone))

    def test_folder_that_vanishes_again_and_again(self):
        self.fresh_folder()
        for index in range(300):
            self.put(f"many/{index}.dat", TABLE)
        ended = threading.Event()

        def remove():
            while not ended.wait(0.001):
                shutil.rmtree("new", ignore_errors=True)

        remover = threading.Thread(target=remove)
        remover.start()
        run = self.run_cli("convert many -d new -j4")
        ended.set()
        remover.join()
        self.assertIn(run.returncode, (0, 1), run.stderr)
        for name in os.listdir("new") if os.path.exists("new") else []:
            self.assertRegex(name, r"^\d+\.txt$")
            self.assertEqual(pathlib.Path("new", name).read_bytes().count(b"\n"), 12)

    # Resources that the system refuses

    def refused(self, kind, limit, arguments, program=None, **options):
        def limited():
            resource.setrlimit(kind, (limit, limit))
        return self.run_cli(arguments, program, preexec_fn=limited, **options)

    def test_few_file_descriptors(self):
        self.fresh_folder()
        for index in range(60):
            self.put(f"many/{index}.dat", TABLE)
        written = [f"./new/{index}.txt" for index in range(60)]
        for limit in (8, 12, 16, 32):
            for jobs in (1, 64):
                shutil.rmtree("new", ignore_errors=True)
                run = self.refused(resource.RLIMIT_NOFILE, limit, f"convert many -d new -j{jobs}")
                if b"has invalid vptr" in run.stderr:
                    continue  # A sanitizer needs a pipe, which it cannot open.
                self.require_whole(run, written)
                if jobs == 1:
                    self.assertEqual(run.returncode, 0, run.stderr)

    @unittest.skipUnless(os.geteuid() == 0, "needs another user")
    def test_few_processes(self):
        self.fresh_folder()
        for index in range(60):
            self.put(f"many/{index}.dat", TABLE)
        program = shutil.copy(PROGRAM, "program")
        written = [f"./new/{index}.txt" for index in range(60)]
        for limit in (1, 2, 5):
            shutil.rmtree("new", ignore_errors=True)
            run = self.refused(resource.RLIMIT_NPROC, limit, "convert many -d new -j64",
                               "./" + program, user=NOBODY, group=NOBODY)
            self.require_whole(run, written)
            self.assertEqual(run.returncode, 0, run.stderr)


if __name__ == "__main__":
    PROGRAM = os.path.abspath(sys.argv[1])
    unittest.main(argv=sys.argv[:1] + sys.argv[2:], verbosity=1)
