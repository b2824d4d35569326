#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Reads the pages of --report with html5lib and Chromium. The tests of a missing reader are skipped,
# unless AEROLITH_READERS is set.
import math
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

import browser

try:
    import html5lib
except ImportError:
    html5lib = None

PROGRAM = None
NEEDED = "AEROLITH_READERS" in os.environ
HOSTILE = [b"<img src=x onerror=alert(1)>.dat", b"\"onload='alert(2)' a=\".dat", b"&lt;b&gt;.dat",
           b"</bdi></th><script>alert(3)<.dat", b"\xff\n\x1b[1m\xe2\x80\xae.dat",
           b"\xef\xbf\xbe\xf0\x9f\xbf\xbf.dat", b"--><!--.dat"]


def section(camber=0.04, thickness=0.12, rows=61):
    lines = ["A section"]
    for i in range(rows):
        angle = 2 * math.pi * i / (rows - 1)
        x = 0.5 * (1 + math.cos(angle))
        half = 5 * thickness * (0.2969 * math.sqrt(x) - 0.126 * x - 0.3516 * x ** 2 +
                                0.2843 * x ** 3 - 0.1036 * x ** 4)
        y = 4 * camber * x * (1 - x) + (half if angle < math.pi else -half)
        lines.append(f"{x:.6f} {y:.6f}")
    return "\n".join(lines).encode() + b"\n"


class Pages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.mkdtemp(prefix="aerolith-pages-")
        cls.addClassCleanup(shutil.rmtree, cls.folder, ignore_errors=True)
        cls.before = os.getcwd()
        cls.addClassCleanup(os.chdir, cls.before)
        os.chdir(cls.folder)
        for i in range(30):
            cls.put(b"wing/rib %d.dat" % i, section(0.04, 0.12 + 0.002 * (i * 7 % 30), 41 + 2 * i))
        cls.put(b"wing/rib 30.dat", b"no numbers here\n")
        for name in HOSTILE:
            cls.put(b"hostile/" + name, section())
        cls.report("check.html", "check", "wing")
        cls.report("hostile.html", "check", "hostile")
        cls.report("compare.html", "compare", "wing/rib 0.dat", "wing")
        cls.report("within.html", "compare", "wing/rib 0.dat", "wing", "--tolerance", "0.01")
        cls.report("fit.html", "fit", "wing/rib 1.dat", "wing/rib 2.dat", "wing/rib 30.dat",
                   "--dir", "splines", "--points", "6")

    @staticmethod
    def put(name, data):
        os.makedirs(os.path.dirname(name), exist_ok=True)
        pathlib.Path(os.fsdecode(name)).write_bytes(data)

    @staticmethod
    def report(page, *arguments):
        run = subprocess.run([PROGRAM, *arguments, "--report", page], capture_output=True,
                             timeout=120, check=False)
        if run.returncode not in (0, 1) or not os.path.exists(page):
            raise RuntimeError(run.stderr)


@unittest.skipUnless(html5lib or NEEDED, "python3-html5lib is missing")
class Valid(Pages):
    def parsed(self, page):
        return html5lib.HTMLParser(strict=True).parse(pathlib.Path(page).read_bytes())

    def test_valid(self):
        for page in ("check", "hostile", "compare", "within", "fit"):
            with self.subTest(page):
                tree = self.parsed(page + ".html")
                name = "{http://www.w3.org/1999/xhtml}"
                ids = [e.get("id") for e in tree.iter() if e.get("id")]
                self.assertEqual(len(ids), len(set(ids)))
                widths = {len(row) for row in tree.iter(name + "tr")}
                self.assertEqual(len(widths), 1)
                outside = {"src", "href", "style", "onclick", "onload", "onerror", "srcset", "action"}
                for element in tree.iter():
                    self.assertFalse(outside & set(element.keys()), element.tag)
                self.assertEqual([e.tag for e in tree.iter() if e.tag == name + "img"], [])

    def test_names(self):
        tree = self.parsed("hostile.html")
        names = ["".join(e.itertext()) for e in tree.iter("{http://www.w3.org/1999/xhtml}th")
                 if e.get("scope") == "row"]
        expected = ["hostile/" + name.decode() for name in sorted(HOSTILE) if b"\xff" not in name]
        expected = [re.sub("[\ufffe\U0001ffff]", "\ufffd", name) for name in expected]
        expected.append("hostile/\\xFF\\x0A\\x1B[1m\\xE2\\x80\\xAE.dat")
        self.assertEqual(names, expected)


@unittest.skipUnless(browser.is_there() or NEEDED, "chromium is missing")
class Shown(Pages):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.browser = browser.Browser()
        cls.addClassCleanup(cls.browser.close)

    def column(self, index, shown_only=True):
        rows = "[...document.querySelectorAll('tbody tr')]" + (
            ".filter((row) => row.getClientRects().length > 0)" if shown_only else "")
        return self.browser.value(f"{rows}.map((row) => row.cells[{index}].textContent)")

    def orders(self):
        return self.browser.value("[...document.querySelectorAll('thead [aria-sort]')]"
                                  ".map((head) => head.getAttribute('aria-sort'))")

    def head(self, text):
        heads = self.browser.value("[...document.querySelectorAll('thead th')]"
                                   ".map((head) => head.textContent)")
        return heads.index(text) + 1

    def test_asks_for_nothing(self):
        for page in ("check", "hostile", "compare", "within", "fit"):
            with self.subTest(page):
                self.browser.open(page + ".html")
                self.browser.click("tbody .pic button")
                self.browser.value("0")
                for event in ("Log.entryAdded", "Runtime.exceptionThrown",
                              "Page.javascriptDialogOpening"):
                    self.assertEqual(self.browser.seen(event), [])
                asked = [event["request"]["url"]
                         for event in self.browser.seen("Network.requestWillBeSent")]
                self.assertEqual([pathlib.Path(url).name for url in asked], [page + ".html"])

    def test_policy(self):
        self.browser.open("check.html")
        self.browser.value("document.body.append(Object.assign(document.createElement('script'),"
                           "{ textContent: 'window.harm = 1' }))")
        self.assertIsNone(self.browser.value("window.harm"))

    def test_sorts_by_click(self):
        self.browser.open("check.html")
        before = self.column(1)
        self.assertEqual(len(before), 31)
        points = self.head("Points")
        button = f"thead th:nth-child({points}) button"
        self.browser.click(button)
        numbers = self.column(points - 1)
        self.assertEqual(numbers, [str(41 + 2 * i) for i in range(30)] + [""])
        self.assertEqual(sorted(self.orders()), ["ascending"] + ["none"] * 5)
        self.browser.click(button)
        self.assertEqual(self.column(points - 1), [str(99 - 2 * i) for i in range(30)] + [""])
        self.assertIn("descending", self.orders())
        self.browser.click(button)
        self.assertEqual(self.column(1), before)
        self.assertEqual(set(self.orders()), {"none"})
        self.browser.click("thead th:nth-child(2) button")
        self.assertEqual(self.column(1), [f"wing/rib {i}.dat" for i in range(31)])
        self.browser.click(f"thead th:nth-child({self.head('Verdict')}) button")
        self.assertEqual(self.column(2)[-1], "bad")

    def test_sorts_small_numbers(self):
        self.browser.open("compare.html")
        self.browser.click(f"thead th:nth-child({self.head('Farthest (chord)')}) button")
        numbers = [float(text) for text in self.column(self.head("Farthest (chord)") - 1) if text]
        self.assertEqual(len(numbers), 30)
        self.assertEqual(numbers, sorted(numbers))
        self.assertLess(numbers[0], 1e-9)

    def test_sorts_by_key(self):
        self.browser.open("check.html")
        for _ in range(20):
            self.browser.press("Tab")
            if self.browser.value("document.activeElement.textContent") == "Points":
                break
        self.browser.press("Enter")
        self.assertEqual(self.column(self.head("Points") - 1)[0], "41")
        self.assertEqual(self.browser.value("document.activeElement.textContent"), "Points")

    def test_filters(self):
        self.browser.open("check.html")
        count = "document.getElementById('count').textContent"
        self.assertEqual(self.browser.value(count), "31 files")
        self.browser.click("label[for=find]")
        self.browser.write("DAT  rib 2")
        self.assertEqual(sorted(self.column(1)), sorted(
            f"wing/rib {i}.dat" for i in [2, 12, *range(20, 30)]))
        self.assertEqual(self.browser.value(count), "12 of 31 files: DAT  rib 2")
        self.browser.write(" <nothing>")
        self.assertEqual(self.column(1), [])
        self.assertEqual(self.browser.value(count), "None of 31 files: DAT  rib 2 <nothing>")
        self.assertEqual(self.browser.value(
            "document.getElementById('count').getAttribute('aria-live')"), "polite")

    def test_filters_by_a_figure(self):
        self.browser.open("check.html")
        self.browser.click(".facts button[data-state=bad]")
        self.assertEqual(self.column(1), ["wing/rib 30.dat"])
        self.browser.click(".facts button[data-state=bad]")
        self.assertEqual(len(self.column(1)), 31)

    def test_opens_large(self):
        opened = "document.getElementById('large').open"
        heading = "document.getElementById('large-name').textContent"
        self.browser.open("fit.html")
        self.browser.click("tbody tr:nth-child(2) .pic button")
        self.assertTrue(self.browser.value(opened))
        self.assertEqual(self.browser.value(heading), "wing/rib 2.dat")
        widths = self.browser.value("[...document.querySelectorAll('dialog svg')]"
                                    ".map((svg) => svg.getBoundingClientRect().width)")
        self.assertGreater(min(widths[0], max(widths[1:])), 900)
        self.assertEqual(self.browser.value("document.querySelectorAll('dialog .paper .s').length"), 1)
        self.browser.press("ArrowLeft")
        self.assertEqual(self.browser.value(heading), "wing/rib 1.dat")
        self.browser.press("ArrowLeft")
        self.assertEqual(self.browser.value(heading), "wing/rib 1.dat")
        self.browser.click("#after")
        self.assertEqual(self.browser.value(heading), "wing/rib 2.dat")
        self.assertTrue(self.browser.value("document.getElementById('after').disabled"))
        self.browser.press("Escape")
        self.assertFalse(self.browser.value(opened))
        self.assertEqual(self.browser.value("document.activeElement.getAttribute('aria-label')"),
                         "Enlarge Section: wing/rib 2.dat")
        self.browser.press("Enter")
        self.assertTrue(self.browser.value(opened))

    def test_narrow(self):
        for page in ("check", "hostile", "compare", "fit"):
            with self.subTest(page):
                self.browser.open(page + ".html", width=400, height=800)
                self.assertLessEqual(
                    self.browser.value("document.documentElement.scrollWidth"), 400)

    def test_without_script(self):
        self.browser.open("check.html", script=False)
        self.assertEqual(len(self.column(1)), 31)
        self.assertEqual(self.browser.value(
            "document.querySelector('.find').getClientRects().length"), 0)
        self.assertEqual(self.browser.value("document.querySelectorAll('button:enabled').length"),
                         self.browser.value("document.querySelectorAll('dialog button').length"))

    def test_prints(self):
        for i in range(40):
            self.put(b"tall/" + b"".join(b"part-%d-%02d/" % (i, k) for k in range(14)) + b"rib.dat",
                     section())
        self.report("tall.html", "check", "tall")
        self.browser.open("tall.html")
        pathlib.Path("tall.pdf").write_bytes(self.browser.pdf())
        text = subprocess.run(["pdftotext", "-layout", "tall.pdf", "-"], capture_output=True,
                              check=True, timeout=60).stdout.decode()
        pages = text.rstrip("\f").split("\f")
        self.assertGreater(len(pages), 2)
        self.assertNotIn("Show files with", text)
        for page in pages:
            self.assertRegex(page, "File +Verdict +Layout")
        for i in range(40):
            # Page breaks split no row.
            at = [number for number, page in enumerate(pages) if f"part-{i}-" in page]
            self.assertEqual(len(at), 1, i)
            self.assertEqual(pages[at[0]].count(f"part-{i}-"), 14)


if __name__ == "__main__":
    PROGRAM = os.path.abspath(sys.argv[1])
    unittest.main(argv=sys.argv[:1] + sys.argv[2:], verbosity=1)
