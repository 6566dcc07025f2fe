"""What the tests of pages share: one browser a class, and a page made of model texts."""

import os
import pathlib
import subprocess
import tempfile
import unittest

import models
from browser import Browser

program = None   # the program under test
pictures = None  # the folder that keeps what the pages look like


class PageCase(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        cls.browser = Browser()
        cls.addClassCleanup(cls.browser.close)

    def setUp(self):
        self.browser.use_scheme("light")
        self.browser.resize(1200, 800)

    def tearDown(self):
        self.assertEqual(self.browser.complaints(), [])
        requests = self.browser.requests()
        self.assertEqual(len(requests), 1, requests)  # the page itself
        self.assertTrue(requests[0].startswith("file:"), requests)

    def make(self, *documents):
        names = []
        for number, text in enumerate(documents):
            name = pathlib.Path(self.folder.name, ("first.model", "second.model")[number])
            name.write_text(text, encoding="utf-8", errors="surrogateescape")
            names.append(str(name))
        page = str(pathlib.Path(self.folder.name, "page.html"))
        result = subprocess.run([program, "html", *names, "-o", page, "--no-backup"],
                                capture_output=True, text=True)
        self.assertEqual(result.returncode, 1 if len(documents) > 1 else 0, result.stderr)
        self.assertEqual(result.stdout, "")
        return page

    def open(self, *documents):
        self.browser.open(self.make(*documents))
        self.browser.settle()

    def open_comparison(self):
        added = models.child("Object", "New", models.text("Event", "just made"))
        self.open(models.site(), models.site("Lee", 1, added, False))

    def run_js(self, script):
        return self.browser.run(script)

    def rows(self):
        """The names of the rows of the tree that are in sight."""
        return self.run_js("[...document.querySelectorAll('[role=treeitem] .name')]"
                           ".map(each => each.textContent)")

    def selected(self):
        """The path of the row that a screen reader speaks of."""
        return self.run_js("(() => { const id = document.getElementById('tree')"
                           ".getAttribute('aria-activedescendant'); const row = id && document"
                           ".getElementById(id); return row && row.getAttribute('aria-selected') "
                           "=== 'true' ? pathOf(rows[Number(id.slice(3))]) : null; })()")

    def focused(self):
        return self.run_js("document.activeElement.id || document.activeElement.textContent")

    def search(self, words):
        if self.focused() != "search":
            self.browser.press("/")
        self.assertEqual(self.focused(), "search")
        self.browser.call("Input.insertText", text=words)
        self.browser.settle()

    def keep_picture(self, name):
        if pictures:
            self.run_js("scrollTo(0, 0)")
            self.browser.screenshot(os.path.join(pictures, name + ".png"))

    def symbol_places(self):
        """Where the symbols stand in the drawing, by their names."""
        return self.run_js("""Object.fromEntries([...document.querySelectorAll('.symbol')].map(
            each => [nameOf(rowOfNode[plan.symbols[each.id.slice(6)].n]),
                     each.getAttribute('transform').match(/[-+.e\d]+(?=[ )])/g).map(Number)]))""")
