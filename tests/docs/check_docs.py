#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Checks that the documents say what the files and the window hold.
# Usage: check_docs.py SOURCE-FOLDER
import re
import struct
import subprocess
import sys
from email.utils import parsedate_to_datetime
from fractions import Fraction
from pathlib import Path

sources = Path(sys.argv[1])
problems = []


def read(name):
    return (sources / name).read_text(encoding="utf-8")


def check_note(held, note, where):
    """A note beside bytes in hex tells their value."""
    if note.startswith('"'):
        right = held.decode("utf-16-be") == note.strip('"')
    elif len(held) == 8 and ": " in note:
        right = struct.unpack(">d", held)[0] == float(Fraction(note.split(": ")[1]))
    elif len(held) == 4 and re.search(r"\d", note):
        right = struct.unpack(">i", held)[0] == int(re.search(r"\d+", note).group())
    else:
        right = not any(held)
    if not right:
        problems.append(f"{where}: {held.hex(' ')} is not: {note or 'zeros'}")


def check_hex_blocks():
    spline = (sources / "samples/symmetric.spl").read_bytes()
    blocks = re.findall(r"```hex *(\d*)\n(.*?)```", read("docs/file-formats.md"), re.DOTALL)
    if len(blocks) != 2:
        problems.append(f"{len(blocks)} hex blocks, not 2")
    for offset, text in blocks:
        at = int(offset or 0)
        for line in text.splitlines():
            pairs = re.match(r"(?:[0-9a-f]{2} ?)+", line).group()
            shown, note = bytes.fromhex(pairs), line[len(pairs):].strip()
            if spline[at : at + len(shown)] != shown:
                problems.append(f"the hex block at {offset or 0} is not what the sample holds")
            check_note(shown, note, "file-formats.md")
            at += len(shown)


def check_reader():
    reader = [sys.executable, str(sources / "docs/spline_file.py")]
    printed = subprocess.run(
        reader + [str(sources / "samples/symmetric.spl")], capture_output=True, text=True,
        check=True).stdout.splitlines()
    expected = [
        "name    'symmetric.spl'",
        "degree  2 (order 3)",
        "knots   0 0.0833333 0.166667 0.25 0.333333 0.416667 0.5 0.583333 0.666667 0.75 0.833333 "
        "0.916667 1",
        "point    0    921.000    383.000",
        "point    1    675.300    403.475",
        "point    2    347.700    440.330",
        "point    3    142.950    448.520",
        "point    4    102.000    391.190",
        "point    5    102.000    374.810",
        "point    6    142.950    317.480",
        "point    7    347.700    325.670",
        "point    8    675.300    362.525",
        "point    9    921.000    383.000",
        "opening 0 % to 0 %",
    ]
    if printed != expected:
        problems.append("spline_file.py prints\n" + "\n".join(printed))


def links(text):
    """The targets of links and pictures, without what is shown as code."""
    text = re.sub(r"^```.*?^```|`[^`\n]*`", "", text, flags=re.MULTILINE | re.DOTALL)
    return re.findall(r"\]\(([^)\s]+)[^)]*\)", text)


def headings(text):
    """The names by which links lead to the headings of a page."""
    text = re.sub(r"^```.*?^```", "", text, flags=re.MULTILINE | re.DOTALL)
    return {re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-")
            for heading in re.findall(r"^#+ (.*?) *$", text, re.MULTILINE)}


def check_links_and_paths():
    """Links lead to files and headings, and so do paths of the tree in backticks."""
    folders = {entry.name for entry in sources.iterdir() if entry.is_dir()} - {"build"}
    pages = [*sources.glob("*.md"), *sources.glob("*/*.md")]
    for page in pages:
        if page.parent.name == "build":
            continue
        text = page.read_text(encoding="utf-8")
        for link in links(text):
            target, _, heading = link.partition("#")
            other = page.parent / target if target else page
            if "://" in link:
                continue
            if not other.exists():
                problems.append(f"{page.name}: no file {target}")
            elif heading and heading not in headings(other.read_text(encoding="utf-8")):
                problems.append(f"{page.name}: no heading {link}")
        for path in re.findall(r"`([\w.-]+(?:/[\w.-]+)+/?)`", text):
            if path.split("/")[0] in folders and not (sources / path).exists():
                if not (page.parent / path).exists():
                    problems.append(f"{page.name}: no {path}")


def check_installed():
    """What an installed page leads to is installed too, and every page is found from the first."""
    install = read("cmake/AerolithInstall.cmake")
    documents = re.search(r"set\(documents ([^)]*)\)", install).group(1).split()
    installed = set(re.findall(r"docs/[\w./-]+", install)) - {"docs/"}
    installed |= {f"docs/{name}.md" for name in documents}
    for name in sorted(installed):
        if not (sources / name).exists():
            problems.append(f"AerolithInstall.cmake: no file {name}")
        elif name.endswith(".md"):
            for target in links(read(name)):
                if "://" in target:
                    continue
                if f"docs/{target}" not in installed:
                    problems.append(f"{name} is installed without {target}")
                # The pages made of the documents have no names for headings.
                if target.endswith(".md") and not re.fullmatch(r"[a-z-]+\.md", target):
                    problems.append(f"{name}: the page cannot lead to {target}")
    for page in sources.glob("docs/*.md"):
        if f"](docs/{page.name})" not in read("README.md"):
            problems.append(f"README.md does not lead to {page.name}")


def window_texts():
    """Texts of the form and of the drawing area's menu, with and without a remark at the end."""
    form = re.findall(r"<string[^>]*>([^<]*)</string>", read("app/mainwindow.ui"))
    menu = re.findall(r'addAction\(tr\("([^"]*)"\)\)', read("editor/editspline_events.cpp"))
    texts = {text.strip() for text in form + menu}
    return texts | {re.sub(r" \([^()]*\)$", "", text) for text in texts}


def check_bold_texts():
    texts = window_texts()
    for name, least in {"README.md": 10, "docs/user-guide.md": 10, "docs/tables-to-ribs.md": 3}.items():
        found = re.findall(r"\*\*(.+?)\*\*", read(name), re.DOTALL)
        if len(found) < least:
            problems.append(f"{name}: only {len(found)} texts in bold")
        for bold in found:
            for part in " ".join(bold.split()).split(" → "):
                if part not in texts:
                    problems.append(f"{name}: the window has no text {part!r}")


def check_release():
    """Version and day stand in several files."""
    version = re.search(r"project\(aerolith VERSION ([\d.]+)", read("CMakeLists.txt")).group(1)
    news = re.search(r"^## (\S+) - (\S+)$", read("CHANGELOG.md"), re.MULTILINE)
    metainfo = re.search(r'<release version="([^"]*)" date="([^"]*)"',
                         read("share/metainfo/org.kavrund.Aerolith.metainfo.xml"))
    manual = re.search(r'^\.TH \S+ 1 (\S+) "Aerolith ([^"]*)"', read("share/man/aerolith.1"),
                       re.MULTILINE)
    changes = read("share/changelog")
    changed = re.search(r"^ -- .*>  (.*)$", changes, re.MULTILINE).group(1)
    found = {
        "CHANGELOG.md": news.groups(),
        "share/changelog": (re.match(r"aerolith \(([^)]*)\)", changes).group(1),
                            parsedate_to_datetime(changed).date().isoformat()),
        "the AppStream file": metainfo.groups(),
        "the man page of the window": manual.group(2, 1),
        "the man page of the companion":
            (version, re.search(r"AEROLITH-CLI 1 (\S+)", read("cli/documents.cpp")).group(1)),
    }
    for where, release in found.items():
        if release != (version, news.group(2)):
            problems.append(f"{where}: {release}, not {(version, news.group(2))}")


check_hex_blocks()
check_reader()
check_links_and_paths()
check_installed()
check_bold_texts()
check_release()
print("\n".join(problems) or "The documents are right.")
sys.exit(1 if problems else 0)
