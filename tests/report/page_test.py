#!/usr/bin/env python3
"""Deflickers a small clip of two shots and uses the page about it as a reader would.

page_test.py PROGRAM FFMPEG FOLDER: the varilum4 program, the ffmpeg program, and where the clip, the
reports and the screenshots go.
"""
import json
import pathlib
import subprocess
import sys
import unittest

from webdriver import Browser

PROGRAM, FFMPEG, FOLDER = sys.argv[1], sys.argv[2], pathlib.Path(sys.argv[3])
FRAMES = 60
CUT = 36
JUMP = 50  # a frame of the second shot at 1.4 times its brightness


def make_clip(path):
    """Two moving pictures, joined, flickering, with one exposure jump."""
    gain = f"if(eq(N\\,{JUMP})\\,1.4\\,1+0.08*sin(N*N*1.7))"
    shots = (f"testsrc2=s=320x180:r=24,trim=end_frame={CUT},hue=s=0.4[a];"
             f"mandelbrot=s=320x180:r=24,trim=end_frame={FRAMES - CUT},hue=h=200[b];"
             f"[a][b]concat,lutyuv=y=val*0.6,geq=lum='clip(lum(X\\,Y)*{gain}\\,0\\,255)'"
             ":cb='cb(X\\,Y)':cr='cr(X\\,Y)'")
    subprocess.run([FFMPEG, "-v", "error", "-y", "-filter_complex", shots, "-c:v", "ffv1",
                    str(path)], check=True)


class Page(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        FOLDER.mkdir(parents=True, exist_ok=True)
        clip = FOLDER / "two shots.mkv"
        make_clip(clip)
        cls.page, cls.json = FOLDER / "report.html", FOLDER / "report.json"
        subprocess.run([PROGRAM, "deflicker", str(clip), "null:", "--report", str(cls.page),
                        "--report", str(cls.json), "--force", "--quiet"], check=True)
        cls.data = json.loads(cls.json.read_text())
        cls.browser = Browser()
        cls.addClassCleanup(cls.browser.__exit__)

    def setUp(self):
        self.browser.open(self.page.resolve().as_uri())
        self.browser.wait_for("return document.querySelector('#plot').dataset.to !== undefined")

    def view(self):
        return [float(self.browser.attribute("#plot", f"data-{end}")) for end in ("from", "to")]

    def test_tells_what_the_data_tell(self):
        self.assertEqual(self.browser.text("h1"), "two shots.mkv")
        self.assertEqual([(shot["first"], shot["last"]) for shot in self.data["shots"]],
                         [(0, CUT - 1), (CUT, FRAMES - 1)])
        self.assertEqual(self.browser.count("#shots tbody tr"), 2)
        self.assertEqual(self.browser.count("#outliers tbody tr"), 1)
        self.assertIn(str(JUMP), self.browser.text("#outliers tbody tr"))
        after = self.data["flickerPercent"]["after"]
        self.assertLess(after, self.data["flickerPercent"]["before"] / 4)
        self.assertIn(f"{after:.2f} %", self.browser.text("#figures"))

    def test_zooms_by_wheel_and_buttons(self):
        self.assertEqual(self.view(), [-0.5, FRAMES - 0.5])
        self.browser.wheel("#plot", 0.25, -3)
        near = self.view()
        self.assertAlmostEqual(near[1] - near[0], FRAMES * 0.8 ** 3, delta=0.1)
        self.assertGreater(FRAMES / 2, sum(near) / 2)
        self.browser.click("#zoom-in")
        nearer = self.view()
        self.assertAlmostEqual((nearer[1] - nearer[0]) * 2, near[1] - near[0], delta=0.1)
        self.browser.double_click("#plot")
        self.assertEqual(self.view(), [-0.5, FRAMES - 0.5])

    def test_moves_by_dragging(self):
        self.browser.click("#zoom-in")
        before = self.view()
        self.browser.drag("#plot", 0.7, 0.4)
        after = self.view()
        self.assertGreater(after[0], before[0] + 5)
        self.assertAlmostEqual(after[1] - after[0], before[1] - before[0], delta=0.1)

    def test_reads_the_frame_that_is_pointed_at(self):
        self.browser.point("#plot", 0.5)
        frame = int(self.browser.attribute("#plot", "data-pointed"))
        text = self.browser.text("#readout")
        self.assertIn(f"frame {frame} ", text)
        for curve in ("input", "target", "output"):
            self.assertIn(f"{curve} {self.data['frames'][curve][frame]:.2f}", text)

    def test_shows_an_outlier_that_is_clicked(self):
        self.browser.click("#outliers tbody tr")
        self.assertEqual(self.browser.attribute("#plot", "data-pointed"), str(JUMP))
        self.assertIn("exposure jump", self.browser.text("#readout"))
        first, last = self.view()
        self.assertLess(last - first, FRAMES / 2)
        self.assertTrue(first < JUMP < last)

    def test_hides_a_curve(self):
        picture = "return document.querySelector('#plot').toDataURL()"
        before = self.browser.run(picture)
        self.browser.click("#show-input")
        self.assertEqual(self.browser.attribute("#show-input", "aria-pressed"), "false")
        self.assertNotEqual(self.browser.run(picture), before)

    def test_wipes_between_before_and_after(self):
        self.assertEqual(self.browser.count("#chips button"), 6)
        loaded = ("return ['before', 'after'].every(n => document.querySelector(`#wipe-${n}`)"
                  ".naturalWidth === 320)")
        self.browser.wait_for(loaded)
        self.assertNotEqual(self.browser.attribute("#wipe-before", "src"),
                            self.browser.attribute("#wipe-after", "src"))
        self.browser.drag("#wipe", 0.5, 0.8)
        self.assertAlmostEqual(int(self.browser.attribute("#wipe-line", "aria-valuenow")), 80,
                               delta=1)
        jumps = [i for i in range(6)
                 if f"frame {JUMP}" == self.browser.text(f"#chips button:nth-child({i + 1})")]
        self.browser.click(f"#chips button:nth-child({jumps[0] + 1})")
        self.assertIn(f"Frame {JUMP}", self.browser.text("#wipe-text"))

    def test_shows_thumbnails_under_the_curves(self):
        self.browser.wait_for("return [...document.querySelectorAll('#strip img')]"
                              ".filter(i => i.style.visibility === 'visible').length > 4")

    def test_looks_as_it_should(self):
        self.browser.point("#plot", 0.6)
        self.browser.screenshot(FOLDER / "page.png")
        self.browser.box("#shots")
        self.browser.screenshot(FOLDER / "page-below.png")

    def tearDown(self):
        self.assertEqual(self.browser.complaints(), [])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
