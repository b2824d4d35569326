#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Checks every command, option and value of an option that the documents name against the help of
# the program, and the table of layouts against its verdicts.
# Usage: check_commands.py PROGRAM
import json
import re
import subprocess
import sys
from pathlib import Path

SOURCES = Path(__file__).resolve().parents[2]
PROGRAM = Path(sys.argv[1]).resolve()
PAGES = [SOURCES / "README.md", *sorted(SOURCES.glob("docs/*.md"))]
# Arguments that are one of a list of words.
CHOSEN = {"NAME", "FORMAT", "KIND", "SHAPE", "UNIT", "PAPER"}
problems = []


def printed(*words):
    return subprocess.run([PROGRAM, *words], capture_output=True, text=True, check=False).stdout


def options_of(verb):
    """The options of a verb, each with the words that it takes; an empty list for any."""
    options = {}
    found = re.findall(r"^(?:  (-\w), |      )(--[\w-]+)(?: (\S+(?: B)?))?((?:.|\n)*?)"
                       r"(?=^(?:  -\w, |      )--|^\S|\Z)", printed(verb, "--help"), re.MULTILINE)
    for letter, name, argument, text in found:
        words = re.search(r": ([\w-]+(?:, [\w-]+)*)(?: \(default|$)", " ".join(text.split()))
        options[name] = words[1].split(", ") if argument in CHOSEN and words else []
        if letter:
            options[letter] = options[name]
    return options


VERBS = re.findall(r"^  (\w+)  ", printed("--help"), re.MULTILINE)
OPTIONS = {verb: options_of(verb) for verb in VERBS}
seen = {"commands": 0, "options": 0, "values": 0, "layouts": 0}


def check_words(words, options, where):
    """Options of a command line, and the word behind one that takes a word of a list."""
    for word, value in zip(words, [*words[1:], ""]):
        name, equal, behind = word.partition("=")
        if not re.fullmatch(r"--[a-z][a-z-]*|-[a-zA-Z0]", name) or name == "--":
            continue
        seen["options"] += 1
        if name not in options:
            problems.append(f"{where}: no option {name}")
        elif options[name]:
            value = behind if equal else value
            seen["values"] += 1
            if value and not value.isupper() and value not in options[name]:
                problems.append(f"{where}: {name} does not take {value}")


def check_page(page):
    text = page.read_text(encoding="utf-8")
    where = page.relative_to(SOURCES)
    blocks = re.findall(r"^```[^\n]*\n(.*?)^```", text, re.MULTILINE | re.DOTALL)
    rest = re.sub(r"^```.*?^```", "", text, flags=re.MULTILINE | re.DOTALL)
    spans = [" ".join(span.split()) for span in re.findall(r"`([^`]+)`", rest)]
    lines = [line for block in blocks for line in block.splitlines()]
    for line in spans + lines:
        for command in re.findall(r"(?<![/\w-])aerolith-cli ([\w-]+(?: [^|<>;]*|$))", line):
            verb = command.split()[0]
            if verb in VERBS:
                seen["commands"] += 1
                words = [word.strip("'\"") for word in command.split()[1:]]
                check_words(words, OPTIONS[verb], where)
            elif verb not in ("VERB", "--version", "--help"):
                problems.append(f"{where}: no verb {verb}")
    every = {name: words for verb in VERBS for name, words in OPTIONS[verb].items()}
    every["--to"] = OPTIONS["convert"]["--to"] + OPTIONS["draw"]["--to"]
    for span in spans:
        if span.startswith("-") and not re.match(r"-[\d.]", span):
            check_words(span.split(), {**every, "--version": []}, where)


def check_layouts():
    """What the table of layouts says of its examples."""
    text = (SOURCES / "docs/file-formats.md").read_text(encoding="utf-8")
    shows = {"nothing": "nothing", "nan": "`nan`", "diagonal": "a diagonal"}
    rows = r"^\| ([^|]*) \|(?:[^|]*\|)? `([\w./-]+)` \| ([^|]*) \|$"
    for first, example, window in re.findall(rows, text, re.MULTILINE):
        path = SOURCES / ("" if example.startswith("samples/") else "docs/old") / example
        if not path.is_file():
            continue
        seen["layouts"] += 1
        (result,) = json.loads(printed("check", "--json", path))
        if first.startswith("`") and result["layout"] != first.strip("`"):
            problems.append(f"{example} is read as {result['layout']}, not {first}")
        reason = result["reason"].split()[-1] if result["reason"] else ""
        expected = "shows it" if result["verdict"] == "ok" else shows.get(reason)
        if not expected or not window.startswith(expected):
            problems.append(f"{example}: {result['verdict']}, {result['reason']}; not {window}")
    layouts = OPTIONS["check"]["--layout"]
    formats = OPTIONS["convert"]["--to"]
    named = re.findall(r"`(\w+)`", " ".join(re.findall(r"^\| (`.*?) \|", text, re.MULTILINE)))
    for name in layouts + formats:
        if name not in named:
            problems.append(f"file-formats.md does not tell of {name}")


def check_schemas():
    text = (SOURCES / "docs/scripts.md").read_text(encoding="utf-8")
    for verb in VERBS:
        if f"(schemas/{verb}.json)" not in text:
            problems.append(f"scripts.md does not lead to the schema of {verb}")


for one in PAGES:
    check_page(one)
check_layouts()
check_schemas()
least = {"commands": 60, "options": 120, "values": 10, "layouts": 14}
for kind, count in least.items():
    if seen[kind] < count:
        problems.append(f"only {seen[kind]} {kind} were found")
print("\n".join(problems) or f"The documents name what there is: {seen}")
sys.exit(1 if problems else 0)
