"""What the address, the counts and the screen of a phone tell of a page."""

import models
from page_case import PageCase

HASH = "decodeURI(location.hash)"
STATUS = "document.getElementById('status').textContent"
ABOUT = "[...document.querySelectorAll('#about span')].map(each => each.textContent)"


class SightTest(PageCase):
    # The address. --------------------------------------------------------------------------------

    def test_has_an_address_that_follows_the_selection(self):
        self.open(models.site())
        self.assertEqual(self.run_js(HASH), "")
        self.browser.click(".row:nth-child(3)")
        self.assertEqual(self.run_js(HASH), "#" + self.selected())
        self.run_js("document.getElementById('tree').focus()")
        self.browser.press("Home", "s")
        self.assertEqual(self.run_js(HASH), "#/Scans")
        self.search("operator")
        self.browser.press("Enter")
        self.assertEqual(self.run_js(HASH), "#/Scans/First/Operator")
        self.run_js("choose(1)")
        self.browser.settle()
        self.assertEqual(self.run_js(HASH), "#/Scans/Second")
        self.assertEqual(self.run_js("history.state.row === view.selected.at"), True)

    def test_changes_its_address_seldom_while_the_selection_moves(self):
        self.open(models.site())
        self.run_js("(() => { calls = 0; const own = history.replaceState.bind(history); history"
                    ".replaceState = (...all) => { ++calls; own(...all); }; setAllOpen(true); "
                    "for (let i = 0; i < 300; ++i) moveTo(i % 9); })()")
        self.browser.settle()
        self.assertEqual(self.run_js("calls"), 1)

    def test_tells_that_an_address_leads_nowhere(self):
        self.open(models.site())
        for address, told in (("/Scans/nope", "/Scans/nope"), ("/%zz", "/%zz")):
            self.run_js("location.hash = '%s'" % address)
            self.browser.settle()
            self.assertEqual(self.run_js(STATUS), "There is no " + told)
            self.assertEqual(self.run_js("view.selected === rows[0]"), True)
        self.run_js("location.hash = '/Scans'")
        self.browser.settle()
        self.assertEqual(self.run_js(STATUS), "")
        self.assertEqual(self.selected(), "/Scans")

    # Two files. ----------------------------------------------------------------------------------

    def open_without_a_scan(self):
        gone = models.child("Transform", "Gone", models.points([0, 0, 0, 1, 1, 1, 2, 2, 2]),
                            models.field("AttrContainer", "Box", models.text("Event", "x")))
        self.open(models.site(more=gone), models.site("Lee"))

    def test_counts_the_second_file_and_tells_what_is_gone(self):
        self.open(models.site())
        alone = self.run_js(ABOUT)
        self.open_without_a_scan()
        both = self.run_js(ABOUT)
        self.assertEqual(both[3:-1], alone[3:])
        self.assertEqual(both[-1], "gone: 1 object, 1 field, 3 points")

    def test_counts_differences_alike_everywhere(self):
        self.open_without_a_scan()
        self.assertEqual(self.run_js("document.getElementById('changes').textContent"),
                         "− 1 removed+ 0 added~ 1 changed? 0 unknown")
        self.assertEqual(self.run_js(STATUS), "2 differences")
        self.assertEqual(self.run_js("rows[0].changes"), 2)
        self.open_comparison()
        self.assertEqual(self.run_js(STATUS), "4 differences")

    def test_signs_the_card_of_what_is_gone(self):
        self.open_without_a_scan()
        self.run_js("document.getElementById('points').scrollIntoView()")
        self.browser.settle()
        names = self.run_js("[...document.querySelectorAll('#thumbnails .name')]"
                            ".map(each => each.textContent)")
        self.assertEqual(names, ["~ First", "Second", "− Gone"])
        self.assertIn("1 point", self.run_js("say(1, 'point')"))

    def test_colours_the_values_of_what_is_gone(self):
        self.open_without_a_scan()
        self.run_js("showRow(findRow('/Gone/Points'))")
        ground = ("getComputedStyle(document.querySelector('%s')).backgroundColor")
        removed = self.run_js(ground % "#changes .minus")
        self.assertEqual(self.run_js(ground % "#details tr.selected"), removed)
        self.run_js("showRow(findRow('/Gone'))")
        row = self.run_js("'#row' + findRow('/Gone/Points').at")
        self.assertEqual(self.run_js(ground % row), removed)
        self.assertEqual(self.run_js("document.querySelectorAll('%s .sign').length" % row), 0)

    def test_colours_no_height_as_what_is_removed(self):
        self.open(models.site())
        red = self.run_js("ramps.light.concat(ramps.dark).filter(each => { const [r, g, b] = [1, 3,"
                          " 5].map(at => parseInt(each.slice(at, at + 2), 16));"
                          " return r > 1.8 * Math.max(g, b); })")
        self.assertEqual(red, [])

    # A phone. ------------------------------------------------------------------------------------

    def test_brings_details_into_sight_on_a_phone(self):
        self.browser.resize(360, 740, is_phone=True)
        self.open(models.site())
        top = "document.querySelector('#details').getBoundingClientRect().top"
        self.assertGreater(self.run_js(top), 700)
        self.browser.click("#unfold")
        self.run_js("scrollTo(0, 0)")
        line = "[...document.querySelectorAll('.row')].find(each => each.textContent.includes('%s'))"
        for name in ("First", "Radar"):
            self.run_js("tree.scrollTop = 0; draw(); showRow(findRow('/')); scrollTo(0, 0);"
                        "tree.scrollTop = findRow('/%s').line * view.height; draw(); %s.click()"
                        % ("Scans/First" if name == "First" else name, line % name))
            self.browser.settle()
            self.assertLess(self.run_js(top), 740 * 0.7, name)
            self.assertGreaterEqual(
                self.run_js("document.getElementById('row' + view.selected.at)"
                            ".getBoundingClientRect().top"), 0, name)

    def test_breaks_no_name_that_has_room_on_a_phone(self):
        self.browser.resize(360, 740, is_phone=True)
        self.open(models.site())
        self.run_js("showRow(findRow('/Scans/First'))")
        count = self.run_js("""(() => {
            const title = [...document.querySelectorAll('#details tbody th')].find(
                each => each.textContent === 'Transformation');
            const range = document.createRange();
            range.selectNodeContents(title);
            return range.getClientRects().length; })()""")
        self.assertEqual(count, 1)
