#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Tests the completions in zsh and in fish. The test of a missing shell is skipped, unless
# AEROLITH_READERS is set. Usage: shells.py <folder of the completions>
import os
import pathlib
import pty
import select
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest

NEEDED = "AEROLITH_READERS" in os.environ
COMPLETIONS = None

# The typed words, and the line after the Tab key.
ROWS = [
    ("f", "fit "),
    ("--v", "--version "),
    ("fit --b", "fit --best "),
    ("check --js", "check --json "),
    ("check fit --b", "check fit --b"),
    ("fit wing.dat --po", "fit wing.dat --points "),
    ("convert --to led", "convert --to lednicer "),
    ("convert -t led", "convert -t lednicer "),
    ("convert --openings 1 4 --dec", "convert --openings 1 4 --decimals "),
    ("convert -d wi", "convert -d wings/"),
    ("check wing.", "check wing.dat "),
    ("check --jobs ", "check --jobs "),
]

ZSH = r"""stty -echo
PS1= fpath=("$COMPLETIONS" $fpath)
autoload -Uz compinit && compinit -u -D
tell() { print -r -- "<$BUFFER>"; BUFFER= }
zle -N tell
bindkey '^X' tell
bindkey '^I' complete-word
unsetopt autolist beep
print REA''DY
"""


class Shells(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="aerolith-shells-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        (self.folder / "wing.dat").touch()
        (self.folder / "wings").mkdir()
        self.settings = {"PATH": os.environ["PATH"], "HOME": str(self.folder), "TERM": "dumb",
                         "LC_ALL": "C.UTF-8", "COMPLETIONS": COMPLETIONS}

    def shell(self, name):
        if not shutil.which(name):
            (self.fail if NEEDED else self.skipTest)(f"{name} is missing")
        return name

    def read(self, end):
        """The output of the terminal up to `end`."""
        text = b""
        while end not in text:
            self.assertTrue(select.select([self.terminal], [], [], 60)[0], text)
            text += os.read(self.terminal, 65536)
        return text.decode()

    def test_zsh(self):
        shell = self.shell("zsh")
        child, self.terminal = pty.fork()
        if child == 0:
            os.chdir(self.folder)
            os.execvpe(shell, [shell, "-f", "-i"], self.settings)
        self.addCleanup(os.close, self.terminal)
        self.addCleanup(os.waitpid, child, 0)
        self.addCleanup(os.kill, child, signal.SIGKILL)
        os.write(self.terminal, ZSH.encode())
        self.read(b"READY")
        for typed, expected in ROWS:
            with self.subTest(typed=typed):
                os.write(self.terminal, f"aerolith-cli {typed}\t\x18".encode())
                self.assertIn(f"<aerolith-cli {expected}>", self.read(b">"))

    def test_fish(self):
        shell = self.shell("fish")
        script = "source $COMPLETIONS/aerolith-cli.fish; complete -C $argv[1]"
        for typed, expected in ROWS:
            with self.subTest(typed=typed):
                run = subprocess.run([shell, "--no-config", "-c", script, f"aerolith-cli {typed}"],
                                     capture_output=True, check=True, cwd=self.folder,
                                     env=self.settings, text=True, timeout=60)
                self.assertEqual(run.stderr, "")
                found = [line.split("\t")[0] for line in run.stdout.splitlines()]
                self.assertEqual(found, [expected.split()[-1]] if expected != typed else [])


if __name__ == "__main__":
    COMPLETIONS = os.path.abspath(sys.argv[1])
    unittest.main(argv=sys.argv[:1] + sys.argv[2:], verbosity=1)
