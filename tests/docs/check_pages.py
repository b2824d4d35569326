#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# The pages made of the documents: what they lead to and show is installed beside them.
# Usage: check_pages.py FOLDER-OF-PAGES
import re
import sys
from html.parser import HTMLParser
from pathlib import Path

SOURCES = Path(__file__).resolve().parents[2]
INSTALL = (SOURCES / "cmake/AerolithInstall.cmake").read_text(encoding="utf-8")
problems = []


class Page(HTMLParser):
    def __init__(self):
        super().__init__()
        self.targets = []
        self.texts = {"title": [], "h1": []}
        self.tag = ""

    def handle_starttag(self, tag, attrs):
        self.targets += [value for name, value in attrs if name in ("href", "src")]
        self.tag = tag

    def handle_endtag(self, tag):
        self.tag = ""

    def handle_data(self, data):
        if self.tag in self.texts:
            self.texts[self.tag].append(data)


names = re.search(r"set\(documents ([^)]*)\)", INSTALL).group(1).split()
installed = {f"{name}.html" for name in names}
installed |= {name[5:] for name in re.findall(r"docs/[\w./-]+", INSTALL)}
links = 0
for name in names:
    page = Page()
    page.feed((Path(sys.argv[1]) / f"{name}.html").read_text(encoding="utf-8"))
    links += len(page.targets)
    problems += [f"{name}.html leads to {target}, which is not installed"
                 for target in page.targets if target not in installed]
    titles, headings = page.texts.values()
    if len(headings) != 1 or titles != [f"Aerolith: {headings[0]}"]:
        problems.append(f"{name}.html has the titles {titles} and the headings {headings}")
if links < 20:
    problems.append(f"only {links} links were found")
print("\n".join(problems) or f"{len(names)} pages, {links} links")
sys.exit(1 if problems else 0)
