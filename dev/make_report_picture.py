#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Makes docs/images/report.png: the report on the folder docs/old in a browser of fixed size.
# Usage: make_report_picture.py PROGRAM
import os
import subprocess
import sys
import tempfile
from pathlib import Path

SOURCES = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(SOURCES / "tests/cli"))
import browser  # noqa: E402

program = Path(sys.argv[1]).resolve()
with tempfile.TemporaryDirectory() as folder:
    os.symlink(SOURCES / "docs/old", f"{folder}/old")
    page = f"{folder}/report.html"
    run = subprocess.run([program, "check", "old", "--report", page], cwd=folder,
                         stdout=subprocess.DEVNULL, check=False)
    if run.returncode not in (0, 1):  # 1: some of the files are no sections
        sys.exit(run.returncode)
    chromium = browser.Browser()
    try:
        chromium.call("Emulation.setScrollbarsHidden", hidden=True)
        chromium.open(page, 1120, 640)
        (SOURCES / "docs/images/report.png").write_bytes(chromium.picture())
    finally:
        chromium.close()
