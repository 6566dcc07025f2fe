"""Differences, colours, sizes, and pages that are large or hostile."""

import json
import os
import pathlib
import sys
import time

import models
import page_case
from page_case import PageCase


def contrast(one, other):
    """The ratio of the luminances of two colours as the browser tells them."""
    def luminance(colour):
        parts = [int(part) / 255 for part in colour[4:-1].split(",")]
        linear = [x / 12.92 if x <= 0.03928 else ((x + 0.055) / 1.055) ** 2.4 for x in parts]
        return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]
    low, high = sorted((luminance(one), luminance(other)))
    return (high + 0.05) / (low + 0.05)


class LooksTest(PageCase):
    def test_shows_differences_with_signs_and_colours(self):
        self.open_comparison()
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
        self.open_comparison()
        struck = ("[...document.querySelectorAll('.row .name, #details th, #details td.value')]"
                  ".filter(each => getComputedStyle(each).textDecorationLine === 'line-through')"
                  ".map(each => each.textContent)")
        self.run_js("showRow(findRow('/Scans/First'))")
        self.assertEqual(self.run_js(struck), ["Corner"])

    def test_shows_differences_in_the_dark(self):
        self.open_comparison()
        self.browser.use_scheme("dark")
        self.browser.press("/")
        self.keep_picture("dark-changes")

    # How it looks. -------------------------------------------------------------------------------

    def test_is_readable_in_light_and_dark(self):
        self.open_comparison()
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
        if page_case.pictures:
            self.browser.screenshot(os.path.join(page_case.pictures, "phone-below.png"))

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

    def test_shows_values_that_are_no_text_and_values_of_any_length(self):
        turned = "\u202egpj.exe"  # what follows it runs from right to left
        more = (models.text("Bytes", "a\udcff\udc80b") + models.text("Nul", "a\0b") +
                models.text("Turned", turned) + models.text("Long", "x" * 3000000))
        page = self.make(models.document("Odd", more + models.attribute(
            "int", "Watched", 1, models.tells("/" + turned))))
        self.assertLess(os.path.getsize(page), 100000)
        self.browser.open(page)
        values = [self.run_js("valueOf(findRow('/%s'))" % name) for name in ("Bytes", "Turned")]
        self.assertEqual(values, ["a\ufffd\ufffdb", turned])
        self.assertTrue(self.run_js("valueOf(findRow('/Nul'))").startswith("a"))
        self.assertLess(self.run_js("valueOf(findRow('/Long')).length"), 520)
        turns = self.run_js("[...document.querySelectorAll('#details td.value div, #details "
                            ".dead')].map(each => getComputedStyle(each).unicodeBidi)")
        self.assertEqual(set(turns), {"isolate"})

    def test_bounds_the_size_of_a_page_of_many_points(self):
        numbers = " ".join("%d %d %d" % (i % 1000, i // 1000, i % 7) for i in range(300000))
        sets = [models.child("Transform", name, models.attribute("Vec3ddVector", "Points", value))
                for name, value in (("Many", "{ " + numbers + " } "), ("None", "{ } "))]
        page = self.make(models.document("Points", "", "".join(sets)))
        self.assertLess(os.path.getsize(page), 100000)
        self.browser.open(page)
        self.assertEqual(self.run_js("data.pointSets.map(each => [each.c, each.w, each.h])"),
                         [[300000, 128, 39]])

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
