#!/usr/bin/env python3
"""Tests of the pages that `qormodel html` makes, in a headless Chromium:
    page_test.py QORMODEL [--pictures FOLDER] [arguments of unittest...]
Without a Chromium all of them fail. --pictures keeps what the pages look like."""

import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time
import unittest

import models
from browser import Browser

PROGRAM = None
PICTURES = None


def contrast(one, other):
    """The ratio of the luminances of two colours as the browser tells them."""
    def luminance(colour):
        parts = [int(part) / 255 for part in colour[4:-1].split(",")]
        linear = [x / 12.92 if x <= 0.03928 else ((x + 0.055) / 1.055) ** 2.4 for x in parts]
        return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]
    low, high = sorted((luminance(one), luminance(other)))
    return (high + 0.05) / (low + 0.05)


class PageTest(unittest.TestCase):
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
            name.write_text(text, encoding="utf-8")
            names.append(str(name))
        page = str(pathlib.Path(self.folder.name, "page.html"))
        result = subprocess.run([PROGRAM, "html", *names, "-o", page, "--no-backup"],
                                capture_output=True, text=True)
        self.assertEqual(result.returncode, 1 if len(documents) > 1 else 0, result.stderr)
        self.assertEqual(result.stdout, "")
        return page

    def open(self, *documents):
        self.browser.open(self.make(*documents))
        self.browser.settle()

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
        if PICTURES:
            self.run_js("scrollTo(0, 0)")
            self.browser.screenshot(os.path.join(PICTURES, name + ".png"))

    # What is there. ------------------------------------------------------------------------------

    def test_shows_objects_with_values_and_types(self):
        self.open(models.site())
        self.assertEqual(self.rows(), ["Site", "Event", "Scans", "Photo", "Corner", "Radar"])
        row = self.run_js("[...document.querySelectorAll('.row')].find(each => each.textContent"
                          ".includes('Event')).textContent")
        self.assertEqual(row, "EventsurveyString")
        self.keep_picture("light")

    def test_marks_what_is_unknown(self):
        self.open(models.site())
        self.assertTrue(self.run_js("[...document.querySelectorAll('.row')].find(each => each"
                                    ".textContent.includes('Radar')).matches('.query')"))
        self.run_js("document.getElementById('show').value = 'unknown';"
                    "document.getElementById('show').dispatchEvent(new Event('change'))")
        rows = self.rows()
        self.assertIn("Radar", rows)
        self.assertIn("Lost", rows)  # its relation leads nowhere
        self.assertNotIn("First", rows)
        self.assertTrue(any(row.startswith("not understood: Beam") for row in rows), rows)

    # Search and fold. ----------------------------------------------------------------------------

    def test_finds_names_types_and_values(self):
        self.open(models.site())
        for words, found in (("oPERator", "Operator"), ("kim", "Operator"),
                             ("Vec3ddVec", "Points")):
            self.search(words)
            self.assertEqual(self.rows()[:3], ["Site", "Scans", "First"], words)
            self.assertIn(found, self.rows())
            self.assertNotIn("Photo", self.rows())
            self.browser.press("Escape")
            self.assertIn("Photo", self.rows())

    def test_goes_from_hit_to_hit_and_back_into_the_tree(self):
        self.open(models.site())
        self.search("points")
        self.assertEqual(self.run_js("document.getElementById('status').textContent"), "2 hits")
        self.browser.press("Enter", "Enter")
        self.assertEqual(self.selected(), "/Scans/Second/Points")
        self.browser.press("Enter", shift=True)
        self.assertEqual(self.selected(), "/Scans/First/Points")
        self.browser.press("ArrowDown")
        self.assertEqual(self.focused(), "tree")

    def test_tells_that_nothing_was_found(self):
        self.open(models.site())
        self.search("no such thing")
        self.assertEqual(self.rows(), ["Site"])
        self.assertEqual(self.run_js("document.getElementById('status').textContent"),
                         "Nothing found")

    def test_folds_and_unfolds_with_the_mouse(self):
        self.open(models.site())
        self.browser.click(".row:nth-child(3) .fold")
        self.assertIn("First", self.rows())
        self.browser.click(".row:nth-child(3) .fold")
        self.assertNotIn("First", self.rows())
        self.browser.click("#unfold")
        self.assertIn("Size", self.rows())
        self.browser.click("#fold")
        self.assertNotIn("Size", self.rows())

    # Keyboard only. ------------------------------------------------------------------------------

    def test_moves_in_the_tree_as_trees_do(self):
        self.open(models.site())
        self.run_js("document.getElementById('tree').focus()")
        for keys, path in ((["ArrowDown"], "/Event"), (["End"], "/Radar"), (["Home"], "/"),
                           (["s"], "/Scans"), (["ArrowRight"], "/Scans"),
                           (["ArrowRight"], "/Scans/Transformation"), (["End"], "/Radar"),
                           (["ArrowUp", "ArrowUp", "ArrowUp"], "/Scans/Second"),
                           (["ArrowLeft"], "/Scans"), (["ArrowLeft"], "/Scans"),
                           (["ArrowLeft"], "/"), (["PageDown"], "/Radar")):
            self.browser.press(*keys)
            self.assertEqual(self.selected(), path, keys)

    def test_tells_screen_readers_what_is_unfolded(self):
        self.open(models.site())
        self.run_js("document.getElementById('tree').focus()")
        self.browser.press("s", "ArrowRight")
        states = self.run_js("""['aria-expanded', 'aria-level', 'aria-posinset', 'aria-setsize']
            .map(each => document.querySelector('[aria-selected=true]').getAttribute(each))""")
        self.assertEqual(states, ["true", "2", "2", "5"])
        self.browser.press("ArrowLeft")
        self.assertEqual(self.run_js("document.querySelector('[aria-selected=true]')"
                                     ".getAttribute('aria-expanded')"), "false")

    def test_reaches_everything_with_the_tab_key_and_shows_where_it_is(self):
        self.open(models.site())
        reached = []
        for _ in range(40):
            self.browser.press("Tab")
            reached.append(self.run_js("document.activeElement.id || document.activeElement"
                                       ".className || document.activeElement.tagName"))
            if reached[-1] == "BODY":
                break
            outline = self.run_js("getComputedStyle(document.activeElement).outlineStyle")
            self.assertEqual(outline, "solid", reached[-1])
        for part in ("search", "show", "values", "empty", "tree", "map", "frame"):
            self.assertIn(part, reached)
        self.assertIn("BODY", reached)  # no trap

    # Relations. ----------------------------------------------------------------------------------

    def test_jumps_along_a_relation_and_back(self):
        self.open(models.site())
        self.run_js("document.getElementById('tree').focus()")
        self.search("count")
        self.browser.press("Escape", "Escape")
        self.assertEqual(self.selected(), "/Scans/Count")
        self.browser.press("Enter")
        self.assertEqual(self.selected(), "/")
        self.assertEqual(self.run_js("decodeURI(location.hash)"), "#/")
        self.run_js("history.back()")
        self.browser.settle()
        self.assertEqual(self.selected(), "/Scans/Count")

    def test_links_both_ways_in_the_details(self):
        self.open(models.site())
        self.assertIn("Is told by", self.run_js("document.getElementById('details').textContent"))
        self.browser.click("#details a.jump")
        self.assertEqual(self.selected(), "/Scans/Count")
        self.assertIn("Count tells → /(Notify, after, priority 3)",
                      self.run_js("document.getElementById('details').textContent"))
        self.browser.click("#details a.jump")
        self.assertEqual(self.selected(), "/")

    def test_comes_back_to_the_one_of_two_that_share_a_path(self):
        self.open(models.twins())
        self.run_js("rowsOfTwins = rows.filter(each => nameOf(each) === 'Count')")
        for number in (0, 1):
            self.run_js("select(rowsOfTwins[%d]); jumpTo(rows[0]); history.back()" % number)
            self.browser.settle()
            self.assertTrue(self.run_js("view.selected === rowsOfTwins[%d]" % number))

    def test_shows_long_lists_in_part_until_all_is_asked_for(self):
        self.open(models.crowd(2000))
        self.run_js("show.value = 'all'; applyFilter(); select(rows[0])")
        count = "document.querySelectorAll('#details .relations li').length"
        self.assertEqual(self.run_js(count), 500)
        self.browser.click("#details > button")
        self.assertEqual(self.run_js(count), 2000)
        self.assertEqual(self.run_js("document.querySelectorAll('#details > button').length"), 0)
        lines = "document.querySelectorAll('#details tbody tr').length"
        self.run_js("showRow(findRow('/Many'))")
        self.assertEqual(self.run_js(lines), 500)
        self.run_js("showRow(findRow('/Many/Number1999'))")
        self.assertGreater(self.run_js(lines), 2000)
        self.assertEqual(self.run_js("document.querySelector('#details tr.selected th')"
                                     ".textContent"), "Number1999")

    def test_moves_fluently_among_ten_thousand_attributes(self):
        self.open(models.crowd(10000))
        spent = self.run_js("""(() => {
            showRow(findRow('/Many'));
            toggle(view.selected, true);
            const begin = performance.now();
            for (let i = 0; i < 20; ++i) {
                moveTo(currentLine() + 1);
                document.body.offsetWidth;
            }
            return (performance.now() - begin) / 20; })()""")
        print("\n10,000 attributes: a step down %.1f ms" % spent, file=sys.stderr)
        self.assertLess(spent, 100)

    def test_begins_where_the_address_says(self):
        page = self.make(models.site())
        self.browser.open(page)
        self.run_js("location.hash = '/scans/First/operator'")
        self.browser.settle()
        self.assertEqual(self.selected(), "/Scans/First/Operator")

    # Plan and point sets. ------------------------------------------------------------------------

    def symbol_places(self):
        """Where the symbols stand in the drawing, by their names."""
        return self.run_js("""Object.fromEntries([...document.querySelectorAll('.symbol')].map(
            each => [nameOf(rowOfNode[plan.symbols[each.id.slice(6)].n]),
                     each.getAttribute('transform').match(/[-+.e\d]+(?=[ )])/g).map(Number)]))""")

    def test_draws_stations_pictures_and_markers_where_they_are(self):
        self.open(models.site())
        kinds = self.run_js("['station', 'picture', 'marker'].map(kind => document"
                            ".querySelectorAll('#map .symbol.' + kind).length)")
        self.assertEqual(kinds, [2, 1, 1])
        places = self.run_js("""Object.fromEntries([...document.querySelectorAll('.symbol')].map(
            each => [each.querySelector('text').textContent,
                     each.getAttribute('transform').match(/[-.\\d]+/g).map(Number)]))""")
        scale = (places["First"][0] - places["Second"][0]) / 5
        self.assertGreater(scale, 0)  # x to the right
        self.assertAlmostEqual(places["First"][1] - places["Second"][1], 3 * scale)  # and y up
        self.assertAlmostEqual(places["Corner"][0] - places["Photo"][0], 5 * scale)
        self.assertEqual(self.run_js("document.querySelectorAll('#map polygon').length"), 2)

    def test_draws_places_of_any_size(self):
        for x in (1.7e308, 1e15, 1e-300):
            ends = models.child("Transform", "A", models.matrix(-x, 0, 0)) + models.child(
                "Transform", "B", models.matrix(x, x, 0))
            self.open(models.document("Far", "", ends))
            places = self.symbol_places()
            # As far apart as the drawing allows, and both of them in it.
            self.assertAlmostEqual(places["B"][0] - places["A"][0], self.run_js(
                "plan.width - Math.min(70, plan.width / 7)"), 3, x)
            for place, side in zip(places["A"] + places["B"], ("width", "height") * 2):
                self.assertGreater(place, 0)
                self.assertLess(place, self.run_js("plan." + side))
            for zoom in ("in", "out", "fit"):
                for _ in range(3):
                    self.browser.click("[data-zoom=%s]" % zoom)
            self.run_js("for (let i = 0; i < 3000; ++i) zoom(0.5); pan(1000, 1000)")
            self.run_js("for (let i = 0; i < 6000; ++i) zoom(1.5)")
            self.assertEqual(self.run_js("/NaN|Infinity/.test(map.outerHTML)"), False)
            self.assertEqual(self.browser.complaints(), [])

    def test_shows_one_station_in_the_middle(self):
        self.open(models.document("One", "", models.child("Transform", "A", models.matrix(7, 8, 9))))
        self.assertEqual(self.symbol_places()["A"],
                         self.run_js("[plan.width / 2, plan.height / 2]"))

    def test_has_no_plan_without_a_place(self):
        self.open(models.document("None", models.text("Event", "x")))
        self.assertTrue(self.run_js("document.getElementById('plan').hidden"))
        self.assertTrue(self.run_js("document.getElementById('points').hidden"))

    def test_tells_coordinates_with_all_digits_that_matter(self):
        ends = models.child("Transform", "A", models.matrix(500000.125, 4500000, 10)) + models.child(
            "Transform", "B", models.matrix(500020.125, 4500010, 12.5))
        self.open(models.document("Far", "", ends))
        self.run_js("choose(1)")
        self.assertEqual(self.run_js("document.getElementById('plan-note').textContent"),
                         "station /B\n500020.125, 4500010, 12.5")
        scale = self.run_js("plan.scale")
        self.assertTrue(80 / 5 <= scale < 80 / 2, scale)  # so lines are 5 apart
        texts = self.run_js("[...document.querySelectorAll('#map .coordinates text')]"
                            ".map(each => each.textContent)")
        for text in ("500005", "500010", "500015", "4500005"):
            self.assertIn(text, texts)
        x = self.run_js("[...document.querySelectorAll('#map .coordinates text')].find(each => each"
                        ".textContent === '500010').x.baseVal[0].value")
        self.assertAlmostEqual(x, self.symbol_places()["A"][0] + 9.875 * scale + 3, 3)

    def test_keeps_coordinates_apart_for_steps_of_any_size(self):
        self.open(models.site())
        for value, step, text in ((0.3, 0.1, "0.3"), (12, 2, "12"), (-0.05, 0.05, "-0.05"),
                                  (2e-7, 1e-7, "2e-7"), (1234567890.5, 0.5, "1234567891"),
                                  (3e20, 1e20, "300000000000000000000")):
            self.assertEqual(self.run_js("gridText(%r, %r)" % (value, step)), text)

    def test_moves_the_plan_with_a_finger_once_it_is_enlarged(self):
        self.browser.resize(360, 740, is_phone=True)
        self.browser.call("Emulation.setTouchEmulationEnabled", enabled=True)
        try:
            self.open(models.site())
            self.assertEqual(self.run_js("map.style.touchAction"), "auto")  # scrolls the page
            self.browser.click("[data-zoom=in]")
            self.assertEqual(self.run_js("map.style.touchAction"), "none")
            self.run_js("map.scrollIntoView({block: 'center'})")
            x, y, ratio, before = self.run_js(
                "(() => { const r = map.getBoundingClientRect(); return [r.x + r.width / 2, "
                "r.y + r.height / 2, plan.width / r.width, plan.center[0]]; })()")
            for kind, shift in (("touchStart", 0), ("touchMove", 20), ("touchMove", 40)):
                self.browser.call("Input.dispatchTouchEvent", type=kind,
                                  touchPoints=[{"x": x + shift, "y": y}])
            self.browser.call("Input.dispatchTouchEvent", type="touchEnd", touchPoints=[])
            self.browser.settle()
            self.assertAlmostEqual(self.run_js("(%r - plan.center[0]) * plan.scale" % before),
                                   40 * ratio, 3)
        finally:
            self.browser.call("Emulation.setTouchEmulationEnabled", enabled=False)

    def test_brings_what_is_chosen_into_an_enlarged_plan(self):
        self.open(models.site())
        self.run_js("for (let i = 0; i < 9; ++i) zoom(1.5)")
        for number in range(self.run_js("plan.symbols.length")):
            self.run_js("choose(%d)" % number)
            name = self.run_js("nameOf(view.selected)")
            self.assertEqual(self.symbol_places()[name],
                             self.run_js("[plan.width / 2, plan.height / 2]"))

    def test_chooses_in_the_plan_with_keys(self):
        self.open(models.site())
        self.run_js("document.getElementById('map').focus()")
        self.browser.press("ArrowRight")
        self.browser.press("ArrowRight")
        self.assertEqual(self.selected(), "/Scans/Second")
        before = self.run_js("plan.scale")
        self.browser.press("+")
        self.assertAlmostEqual(self.run_js("plan.scale"), 1.5 * before)
        self.assertEqual(self.focused(), "map")
        self.browser.press("0", "Enter")
        self.assertEqual(self.run_js("plan.scale"), before)
        self.assertEqual(self.focused(), "tree")

    def test_shows_point_sets_from_above(self):
        self.open(models.site())
        self.run_js("document.getElementById('points').scrollIntoView()")
        self.browser.settle()
        self.assertEqual(self.run_js("document.querySelectorAll('#thumbnails canvas').length"), 2)
        # The corner has points along its lower and its right edge, and none in the middle.
        alphas = self.run_js("""(() => {
            const canvas = document.querySelector('#thumbnails canvas');
            const {width, height} = canvas;
            const image = canvas.getContext('2d').getImageData(0, 0, width, height);
            const at = (x, y) => image.data[4 * (y * width + x) + 3];
            return [width, at(0, height - 1), at(width - 1, 0), at(width >> 1, height >> 1)];
            })()""")
        self.assertEqual(alphas, [29, 255, 255, 0])
        self.browser.click("#thumbnails button")
        self.assertEqual(self.selected(), "/Scans/First/Points")

    # Differences. --------------------------------------------------------------------------------

    def compare(self):
        added = models.child("Object", "New", models.text("Event", "just made"))
        self.open(models.site(), models.site("Lee", 1, added, False))

    def test_shows_differences_with_signs_and_colours(self):
        self.compare()
        self.assertEqual(self.rows(), ["Site", "Scans", "First", "Transformation", "Operator",
                                       "Corner", "New"])
        signs = self.run_js("[...document.querySelectorAll('.row')].map(each => ['.name', '.sign']"
                            ".map(part => (each.querySelector(part) || {}).textContent))")
        for name, sign in (("Operator", "~"), ("Corner", "−"), ("New", "+")):
            self.assertIn([name, sign], signs)
        colours = self.run_js("['minus', 'plus', 'tilde', 'query'].map(each => getComputedStyle("
                              "document.querySelector('#changes .' + each)).backgroundColor)")
        self.assertEqual(len(set(colours)), 4)
        value = self.run_js("[...document.querySelectorAll('.row')].find(each => each.textContent"
                            ".includes('Operator')).querySelector('.value').textContent")
        self.assertEqual(value, "Kim → Lee")
        self.assertEqual(self.run_js("document.getElementById('changes').textContent"),
                         "− 1 removed+ 1 added~ 2 changed? 0 unknown")

    def test_strikes_out_what_is_removed_and_nothing_else(self):
        self.compare()
        struck = ("[...document.querySelectorAll('.row .name, #details th, #details td.value')]"
                  ".filter(each => getComputedStyle(each).textDecorationLine === 'line-through')"
                  ".map(each => each.textContent)")
        self.run_js("showRow(findRow('/Scans/First'))")
        self.assertEqual(self.run_js(struck), ["Corner"])

    def test_shows_in_the_plan_what_has_moved(self):
        self.compare()
        self.assertEqual(self.run_js("document.querySelectorAll('#map .way').length"), 1)
        removed = self.run_js("document.querySelectorAll('#map .marker.minus').length")
        self.assertEqual(removed, 1)

    def test_shows_differences_in_the_dark(self):
        self.compare()
        self.browser.use_scheme("dark")
        self.browser.press("/")
        self.keep_picture("dark-changes")

    # How it looks. -------------------------------------------------------------------------------

    def test_is_readable_in_light_and_dark(self):
        self.compare()
        grounds = []
        for scheme in ("light", "dark"):
            self.browser.use_scheme(scheme)
            style = self.run_js("(({backgroundColor, color}) => [backgroundColor, color])"
                                "(getComputedStyle(document.body))")
            grounds.append(style[0])
            pairs = self.run_js("""[...document.querySelectorAll('body *')].filter(each => [...each
                .childNodes].some(node => node.nodeType === 3 && node.data.trim()) && each
                .getClientRects().length > 0 && !each.closest('svg')).map(each => {
                let ground = each;
                while (ground && getComputedStyle(ground).backgroundColor === 'rgba(0, 0, 0, 0)')
                    ground = ground.parentElement;
                return [each.textContent.trim().slice(0, 20), getComputedStyle(each).color,
                    getComputedStyle(ground).backgroundColor]; })""")
            self.assertGreater(len(pairs), 50)
            for text, colour, ground in pairs:
                self.assertGreaterEqual(contrast(colour, ground), 4.5,
                                        (scheme, text, colour, ground))
        self.assertGreater(contrast(grounds[0], grounds[1]), 7)

    def test_fits_the_width_of_a_phone(self):
        long = "word" * 100
        self.browser.resize(360, 740, is_phone=True)
        deep = ""
        for number in range(40):
            event = models.text("Event", long)
            deep = models.child("Container", "Deep%d" % number, event, "", deep)
        self.open(models.site(long, more=deep))
        for scheme in ("light", "dark"):
            self.browser.use_scheme(scheme)
            self.browser.click("#unfold")
            for path in ("/", "/Scans/First/Operator", "/Deep39/Deep38/Deep37", "/Radar"):
                self.run_js("showRow(findRow(%s))" % json.dumps(path))
                self.browser.settle()
                widths = self.run_js("[innerWidth, document.scrollingElement.scrollWidth]")
                self.assertEqual(widths, [360, 360], path)
        size = self.run_js("parseFloat(getComputedStyle(document.body).fontSize)")
        self.assertGreaterEqual(size, 14)
        self.run_js("showRow(findRow('/Scans/First'))")
        self.keep_picture("phone")
        self.run_js("document.getElementById('side').scrollIntoView()")
        if PICTURES:
            self.browser.screenshot(os.path.join(PICTURES, "phone-below.png"))

    # Large and hostile. --------------------------------------------------------------------------

    def test_opens_and_searches_ten_thousand_objects(self):
        page = self.make(models.large(10000))
        begin = time.monotonic()
        self.browser.open(page)
        opened = time.monotonic() - begin
        self.assertEqual(self.run_js("data.nodes.length"), 10001)
        searched, scrolled = self.run_js("""(() => {
            const time = (work) => {
                const begin = performance.now();
                work();
                document.body.offsetWidth;  // lays out what has changed
                return performance.now() - begin;
            };
            search.value = 'object77';
            const searched = time(applyFilter);
            endFilter();
            setAllOpen(true);
            const steps = 100;
            const scrolled = time(() => { for (let i = 1; i <= steps; ++i) {
                tree.scrollTop = i * tree.scrollHeight / steps / 2; draw(); } }) / steps;
            return [searched, scrolled]; })()""")
        print("\n10,000 objects: page of %.1f MB, open in %.2f s, first search %.0f ms, a step of "
              "scrolling %.1f ms" % (os.path.getsize(page) / 1e6, opened, searched, scrolled),
              file=sys.stderr)
        self.assertLess(self.run_js("document.querySelectorAll('.row').length"), 100)
        self.assertLess(opened, 30)
        self.assertLess(searched, 5000)
        self.run_js("setAllOpen(false)")
        self.search("object9876")
        self.assertEqual(self.run_js("view.numHits"), 2)  # its name, and what its event tells
        self.assertEqual(self.selected(), "/Group98/Object9876")

    def test_never_takes_values_for_markup(self):
        self.open(models.hostile())
        count = "document.querySelectorAll('script, style, meta, img, svg img, b, i, u').length"
        before = self.run_js(count)
        self.browser.click("#unfold")
        for number in range(self.run_js("rows.length")):
            self.run_js("showRow(rows[%d])" % number)
        self.search("<img")
        self.assertGreater(self.run_js("view.numHits"), 0)
        self.run_js("document.getElementById('points').scrollIntoView()")
        self.browser.settle()
        self.assertEqual(self.run_js("typeof hacked"), "undefined")
        self.assertEqual(self.run_js("document.querySelectorAll('img, b, i, u').length"), 0)
        self.assertEqual(self.run_js(count), before)
        self.assertEqual(self.run_js("document.querySelectorAll('script').length"), 2)
        event = self.run_js("valueOf(findRow('/Event'))")
        self.assertTrue(event.startswith("</script><script>hacked=1</script><img"), event)

    def test_lets_nothing_run_that_is_not_its_own(self):
        self.open(models.site())
        self.run_js("""document.body.insertAdjacentHTML('beforeend',
            '<img src="x.png" onerror="hacked=1"><button onclick="hacked=2">x</button>');
            document.body.lastChild.click();
            document.body.append(Object.assign(document.createElement('script'),
                                               {textContent: 'hacked=3'}))""")
        self.browser.settle()
        self.assertEqual(self.run_js("typeof hacked"), "undefined")
        self.assertIn("Content Security Policy", str(self.browser.complaints()))
        self.browser.events.clear()
        self.browser.open(pathlib.Path(self.folder.name, "page.html"))


if __name__ == "__main__":
    PROGRAM = os.path.abspath(sys.argv.pop(1))
    if len(sys.argv) > 2 and sys.argv[1] == "--pictures":
        PICTURES = sys.argv[2]
        del sys.argv[1:3]
    unittest.main(verbosity=2)
