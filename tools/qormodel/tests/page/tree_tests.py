"""What a page shows in its tree and its details, and how one moves there."""

import sys

import models
from page_case import PageCase


class TreeTest(PageCase):
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
