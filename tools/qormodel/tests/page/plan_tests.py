"""The plan and the point sets of a page."""

import models
from page_case import PageCase


class PlanTest(PageCase):
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
        station = models.child("Transform", "A", models.matrix(7, 8, 9))
        self.open(models.document("One", "", station))
        self.assertEqual(self.symbol_places()["A"],
                         self.run_js("[plan.width / 2, plan.height / 2]"))

    def test_has_no_plan_without_a_place(self):
        self.open(models.document("None", models.text("Event", "x")))
        self.assertTrue(self.run_js("document.getElementById('plan').hidden"))
        self.assertTrue(self.run_js("document.getElementById('points').hidden"))

    def test_tells_coordinates_with_all_digits_that_matter(self):
        ends = "".join(
            models.child("Transform", name, models.matrix(*place)) for name, place in
            (("A", (500000.125, 4500000, 10)), ("B", (500020.125, 4500010, 12.5))))
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

    def test_names_in_the_plan_what_differs_even_where_symbols_lie_close(self):
        both = []
        for operator in ("Kim", "Lee"):
            scans = [models.child("Transform", "Station%d" % i, models.matrix(i / 1e3, 0, 0) +
                                  models.text("Operator", operator if i > 11 else ""))
                     for i in range(24)]
            scans.append(models.child("Transform", "Far", models.matrix(9, 9, 0)))
            both.append(models.document("Close", "", "".join(scans)))
        self.open(*both)
        names = self.run_js("[...document.querySelectorAll('.symbol')].map(each => (each"
                            ".querySelector('text') || {}).textContent || '')")
        self.assertEqual(names[12:], ["~ Station%d" % i for i in range(12, 24)] + ["Far"])
        self.assertIn("", names[:12])  # there is no room for them
        self.assert_names_are_apart()
        self.run_js("select(rowOfNode[plan.symbols[%d].n])" % names.index(""))
        self.assertEqual(self.run_js("document.querySelector('.chosen text').textContent"),
                         "Station%d" % names.index(""))
        self.assert_names_are_apart()

    def assert_names_are_apart(self):
        """No name lies upon a name, a symbol or a coordinate, and none is cut."""
        wrong = self.run_js("""(() => {
            const place = (each) => each.getBoundingClientRect();
            const names = [...document.querySelectorAll('.symbol text')];
            const others = [...document.querySelectorAll('#map .coordinates text')].concat(
                [...document.querySelectorAll('.symbol > circle:not(.reach)')]);
            const edge = place(map);
            const isOut = (box) => box.left < edge.left || box.right > edge.right ||
                box.top < edge.top || box.bottom > edge.bottom;
            const texts = (one, list) => list.filter(each => each !== one &&
                isOver(place(one), place(each))).map(each => one.textContent + ' on ' +
                (each.textContent || each.parentNode.textContent));
            return names.flatMap((one) => texts(one, names).concat(texts(one, others), isOut(
                place(one)) ? [one.textContent + ' is cut'] : [])); })()""")
        self.assertEqual(wrong, [])

    def test_keeps_names_apart_from_symbols_and_edges(self):
        scans = "".join(
            models.child("Transform", "Station_%02d_Hall_A" % i,
                         models.matrix(4 * (i % 6), 3 * (i // 6), 0)) for i in range(24))
        text = models.document("Hall", "", scans)
        for width in (1280, 360):
            self.browser.resize(width, 740, is_phone=width < 500)
            self.open(text)
            self.assertGreater(self.run_js("document.querySelectorAll('.symbol text').length"), 3)
            self.assert_names_are_apart()
            for number in range(24):
                self.run_js("choose(%d)" % number)
                self.assertEqual(self.run_js(
                    "document.querySelector('.chosen text').textContent"),
                    "Station_%02d_Hall_A" % number)
                self.assert_names_are_apart()

    def test_shows_in_the_plan_what_has_moved(self):
        self.open_comparison()
        self.assertEqual(self.run_js("document.querySelectorAll('#map .way').length"), 1)
        removed = self.run_js("document.querySelectorAll('#map .marker.minus').length")
        self.assertEqual(removed, 1)
