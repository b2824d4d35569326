#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Counts the power of the tests: makes small changes (mutants) in the sources of layers, one at a
# time, and runs the tests of that layer, then those of the layers that depend on it.
# Usage: mutants.py LAYER... [--count N] [--seed S]
# The same seed makes the same mutants; a change of the sources affects only those of its lines.
# Those that change nothing are listed, each with its reason, in dev/equivalent_mutants.tsv.
# Results are kept in build/mutants: an interrupted run continues, and a later one tries only the
# survivors again. Layers of different roads can run at once.
import argparse
import hashlib
import os
import re
import resource
import shutil
import subprocess
import sys
import time
from pathlib import Path

SOURCES = Path(__file__).resolve().parents[1]
PLACE = SOURCES / "build/mutants"

# Each layer, and the folders whose tests see it.
ROADS = {
    "window": {
        "numerics": ["document", "airfoil", "editor", "app", "identity"],
        "document": ["airfoil", "editor", "app", "identity", "hostile"],
        "airfoil": ["editor", "app", "identity"],
        "editor": ["app", "identity", "hostile"],
        "app": ["hostile"],
    },
    "companion": {
        "tables": ["sections", "fitting", "cli"],
        "sections": ["fitting", "drawings", "cli"],
        "fitting": ["cli"],
        "drawings": ["cli"],
        "cli": [],
    },
}
# These take long, need a display, or measure what varies.
LEFT_OUT = "x11|monkey|interrupted|hostile_files|fit_hostile|generated|scale|memory"
# So do these, where the mutant is in a layer below.
LEFT_OUT_ABOVE = LEFT_OUT + "|tst_fit$|road_cli|readers|report_pages"

# What is changed, and into what. Templates, streams and includes stand apart by their blanks.
OPERATORS = [
    (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "),
    (r" == ", " != "), (r" != ", " == "), (r" && ", " || "), (r" \|\| ", " && "),
    (r" \+ ", " - "), (r" - ", " + "), (r" \* ", " / "), (r" / ", " * "),
    (r" \+= ", " -= "), (r" -= ", " += "), (r"\+\+(?=\w)", "--"),
    (r"\btrue\b", "false"), (r"\bfalse\b", "true"),
    (r"std::min\b", "std::max"), (r"std::max\b", "std::min"),
    (r"(?<![\w.'])(\d+)(?![\w.'])", lambda m: str(int(m.group()) + 1)),
    (r"(?<![\w.])(\d+\.\d+(?:e-?\d+)?)(?!\w)",
     lambda m: repr(float(m.group()) * 1.5 if float(m.group()) else 1.0)),
    (r"^(\s+)continue;$", r"\1break;"), (r"^(\s+)break;$", r"\1continue;"),
    (r"^(\s+)[\w.\->]+\([^()]*\);$", r"\1;"), (r"^(\s+)(?!const|auto)[\w.\[\]]+ = .*;$", r"\1;"),
]
TEXT = re.compile(r'R"(\w*)\((?s:.*?)\)\1"|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])\'|//[^\n]*')


def mutants_of(layer):
    """Every mutant of a layer: (file, old line, new line), and the number of the line. Of lines
    that are alike in a file the first is changed."""
    mutants = {}
    for path in sorted((SOURCES / layer).glob("*.cpp")):
        text = path.read_text(encoding="utf-8")
        code = TEXT.sub(lambda m: re.sub(r"[^\n]", "\0", m.group()), text)
        for number, (old, bare) in enumerate(zip(text.split("\n"), code.split("\n"))):
            if bare.lstrip().startswith(("#", "static_assert", "template", "using")):
                continue
            for pattern, change in OPERATORS:
                for found in re.finditer(pattern, bare):
                    changed = found.expand(change) if isinstance(change, str) else change(found)
                    new = old[: found.start()] + changed + old[found.end() :]
                    if new != old:
                        mutants.setdefault((f"{layer}/{path.name}", old, new), number)
    return mutants


class Tree:
    """A checkout of its own in which shared libraries are built, so that a mutant costs one
    compilation and one link."""

    def __init__(self, road):
        self.folders = [*ROADS[road], *(["identity", "hostile"] if road == "window" else [])]
        self.targets = [f"tests/{folder}/all" for folder in self.folders]
        if road == "companion":
            self.targets += ["aerolith-cli", "make_documents"]
        self.root = PLACE / road
        self.build_folder = self.root / "build/release"
        if not self.root.exists():
            self.need("git", "worktree", "add", "--detach", self.root, place=SOURCES)
        head = subprocess.check_output(["git", "rev-parse", "HEAD"], cwd=SOURCES, text=True).strip()
        self.need("git", "checkout", "--quiet", "--force", "--detach", head)
        self.need("cmake", "--preset", "release", "-DAEROLITH_BUILD_TESTS=ON",
                  "-DAEROLITH_WERROR=ON", "-DAEROLITH_LAYERS=SHARED",
                  "-DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON", "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON",
                  f"-DCMAKE_CXX_COMPILER_LAUNCHER={shutil.which('ccache') or ''}")
        if not self.build():
            sys.exit("mutants: the tree does not build")
        tested = PLACE / f"{road}-tested"
        if tested.exists() and tested.read_text() == head:
            return
        failing = [folder for folder in self.folders if not self.passes(folder)]
        if failing:
            sys.exit(f"mutants: tests fail without a mutant: {' '.join(failing)}")
        tested.write_text(head)

    def need(self, *command, place=None):
        subprocess.run(command, cwd=place or self.root, check=True, stdout=subprocess.DEVNULL)

    def succeeds(self, *command):
        return subprocess.run(command, cwd=self.root, capture_output=True).returncode == 0

    def build(self):
        return self.succeeds("cmake", "--build", self.build_folder, "-j", "1", "--target",
                             *self.targets)

    def passes(self, folder, left_out=LEFT_OUT):
        return self.succeeds("ctest", "--test-dir", self.build_folder / "tests" / folder,
                             "--stop-on-failure", "--exclude-regex", left_out)

    def fate(self, layer, above, mutant, number):
        path = self.root / mutant[0]
        text = path.read_text(encoding="utf-8")
        lines = text.split("\n")
        lines[number] = mutant[2]
        path.write_text("\n".join(lines), encoding="utf-8")
        try:
            if not self.build():
                return "refused"
            survived = self.passes(layer) and all(
                self.passes(folder, LEFT_OUT_ABOVE) for folder in above)
            return "survived" if survived else "killed"
        finally:
            path.write_text(text, encoding="utf-8")


def table(path, columns):
    """The rows of a file: the last columns, by the first ones."""
    if not path.exists():
        return {}
    rows = [line.split("\t") for line in path.read_text(encoding="utf-8").splitlines()]
    return {tuple(row[:columns]): row[columns:] for row in rows if not row[0].startswith("#")}


def count(tree, layer, above, arguments):
    mutants = mutants_of(layer)
    equivalent = table(SOURCES / "dev/equivalent_mutants.tsv", 3)
    results = PLACE / f"{layer}-{arguments.seed}.tsv"
    fates = table(results, 3)
    counts = {"killed": 0, "survived": 0, "equivalent": 0}
    for mutant in sorted(mutants, key=lambda m: hashlib.sha256(
            f"{arguments.seed} {m}".encode()).hexdigest()):
        if counts["killed"] + counts["survived"] >= arguments.count:
            break
        name, old, new = key = (mutant[0], mutant[1].strip(), mutant[2].strip())
        fate = "equivalent" if key in equivalent else fates.get(key, ["survived"])[0]
        if fate == "survived":
            start = time.monotonic()
            fate = tree.fate(layer, above, mutant, mutants[mutant])
            with results.open("a", encoding="utf-8") as lines:
                print(*key, fate, round(time.monotonic() - start), sep="\t", file=lines)
            print(f"{fate} {name}:{mutants[mutant] + 1}: {old} -> {new}", flush=True)
        if fate in counts:
            counts[fate] += 1
    print(f"{layer}: {counts['killed']} of {counts['killed'] + counts['survived']} killed, "
          f"{counts['equivalent']} equivalent, seed {arguments.seed}, {len(mutants)} possible",
          flush=True)


def main():
    parser = argparse.ArgumentParser(description="Counts the power of the tests.")
    parser.add_argument("layers", nargs="+",
                        choices=[layer for road in ROADS.values() for layer in road])
    parser.add_argument("--count", type=int, default=40)
    parser.add_argument("--seed", type=int, default=1)
    arguments = parser.parse_args()
    # A loop without end takes neither the time nor the memory of the machine.
    resource.setrlimit(resource.RLIMIT_CPU, (60, 60))
    resource.setrlimit(resource.RLIMIT_DATA, (8 << 30, 8 << 30))
    os.environ["QTEST_FUNCTION_TIMEOUT"] = "100000"
    for road, layers in ROADS.items():
        chosen = [layer for layer in arguments.layers if layer in layers]
        tree = Tree(road) if chosen else None
        for layer in chosen:
            count(tree, layer, layers[layer], arguments)


main()
