#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Counts the power of the tests: makes small changes (mutants) in the sources of layers, one at a
# time, in a checkout of its own below build/, and runs the tests of that layer, then those of all.
# Usage: mutants.py LAYER... [--count N] [--seed S]
# The same seed makes the same mutants. Those that change nothing are listed, each with its reason,
# in dev/equivalent_mutants.tsv: file, old line, new line, reason.
import argparse
import random
import re
import resource
import subprocess
import sys
from pathlib import Path

SOURCES = Path(__file__).resolve().parents[1]
TREE = SOURCES / "build/mutants"
BUILD = TREE / "build/release"

# What is changed, and into what. Templates, streams and includes stand apart by their blanks.
OPERATORS = [
    (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "),
    (r" == ", " != "), (r" != ", " == "), (r" && ", " || "), (r" \|\| ", " && "),
    (r" \+ ", " - "), (r" - ", " + "), (r" \* ", " / "), (r" / ", " * "),
    (r" \+= ", " -= "), (r" -= ", " += "), (r"\+\+(?=\w)", "--"),
    (r"\btrue\b", "false"), (r"\bfalse\b", "true"),
    (r"std::min\b", "std::max"), (r"std::max\b", "std::min"),
    (r"(?<![\w.])(\d+)(?![\w.'])", lambda m: str(int(m.group()) + 1)),
    (r"(?<![\w.])(\d+\.\d+(?:e-?\d+)?)(?!\w)",
     lambda m: repr(float(m.group()) * 1.5 if float(m.group()) else 1.0)),
    (r"^(\s+)continue;$", r"\1break;"), (r"^(\s+)break;$", r"\1continue;"),
    (r"^(\s+)[\w.\->]+\([^()]*\);$", r"\1;"), (r"^(\s+)(?!const|auto)[\w.\[\]]+ = .*;$", r"\1;"),
]


def mutants_of(layer):
    """Every mutant of a layer: file, number of the line, old and new line."""
    for path in sorted((SOURCES / layer).glob("*.cpp")):
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines()):
            code = re.sub(r'"(?:\\.|[^"\\])*"', lambda m: "\0" * len(m.group()), line)
            code = re.sub(r"//.*", lambda m: "\0" * len(m.group()), code)
            if code.lstrip().startswith(("#", "static_assert", "template", "using")):
                continue
            for pattern, new in OPERATORS:
                for found in re.finditer(pattern, code):
                    changed = found.expand(new) if isinstance(new, str) else new(found)
                    mutant = line[: found.start()] + changed + line[found.end() :]
                    if mutant != line:
                        yield str(path.relative_to(SOURCES)), number, line, mutant


def run(*command):
    return subprocess.run(command, cwd=TREE, capture_output=True, text=True).returncode == 0


def build(target):
    return run("cmake", "--build", str(BUILD), "--target", target)


def tests_pass(*selection):
    return run("ctest", "--test-dir", str(BUILD), "--stop-on-failure", "--timeout", "120",
               "--exclude-regex", "identical|monkey|road|interrupted|hostile_files|generated",
               *selection)


def fate(layer):
    """What becomes of the tree as it stands now."""
    if not build(f"tests/{layer}/all"):
        return "refused"
    names = sorted(path.stem for path in (SOURCES / f"tests/{layer}").glob("tst_*.cpp"))
    if not tests_pass("--tests-regex", f"^({'|'.join(names)})$"):
        return "killed"
    if not build("all"):
        return "refused"
    return "survived" if tests_pass("--label-regex", "unit|widget|hostile") else "killed"


def prepare():
    if not TREE.exists():
        subprocess.run(["git", "worktree", "add", "--detach", TREE], cwd=SOURCES, check=True)
    subprocess.run(["git", "checkout", "--quiet", "--force", "--detach",
                    subprocess.check_output(["git", "rev-parse", "HEAD"], cwd=SOURCES,
                                            text=True).strip()], cwd=TREE, check=True)
    if not (run("cmake", "--preset", "release", "-DAEROLITH_BUILD_TESTS=ON") and build("all")):
        sys.exit("mutants: the tree does not build")


def equivalents():
    lines = (SOURCES / "dev/equivalent_mutants.tsv").read_text(encoding="utf-8").splitlines()
    return {tuple(line.split("\t")[:3]) for line in lines if not line.startswith("#")}


def main():
    parser = argparse.ArgumentParser(description="Counts the power of the tests.")
    parser.add_argument("layers", nargs="+")
    parser.add_argument("--count", type=int, default=40)
    parser.add_argument("--seed", type=int, default=1)
    arguments = parser.parse_args()
    prepare()
    # A loop without end must not take the whole memory with it.
    resource.setrlimit(resource.RLIMIT_AS, (8 << 30, 8 << 30))
    known = equivalents()
    for layer in arguments.layers:
        every = list(mutants_of(layer))
        random.Random(f"{arguments.seed} {layer}").shuffle(every)
        counts = {"killed": 0, "survived": 0}
        for name, number, old, new in every:
            if sum(counts.values()) >= arguments.count:
                break
            if (name, old.strip(), new.strip()) in known:
                continue
            path = TREE / name
            text = path.read_text(encoding="utf-8")
            lines = text.split("\n")
            lines[number] = new
            path.write_text("\n".join(lines), encoding="utf-8")
            try:
                result = fate(layer)
            finally:
                path.write_text(text, encoding="utf-8")
            if result != "refused":
                counts[result] += 1
                print(f"{result} {name}:{number + 1}: {old.strip()} -> {new.strip()}", flush=True)
        print(f"{layer}: {counts['killed']} of {sum(counts.values())} killed, "
              f"seed {arguments.seed}, {len(every)} possible", flush=True)


main()
