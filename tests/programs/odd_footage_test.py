"""Footage that is not what programs expect: sizes, lengths and streams at the edges."""
import json
import os
import shutil
import subprocess
import unittest

from clips import frame_bytes, write_clip
from program_case import ProgramCase


class OddFootage(ProgramCase):
    def ffmpeg(self, *arguments):
        subprocess.run(["ffmpeg", "-v", "error", "-y", *map(str, arguments)], check=True)

    def deflicker(self, clip, output, *arguments):
        result = self.expect_done("deflicker", self.path(clip), self.path(output), "--force",
                                  "--progress", "json", *arguments)
        return json.loads(result.stdout.splitlines()[-1]), result.stderr

    def session(self, *lines):
        """The answers to a script's lines."""
        script = self.path("visit.txt")
        with open(script, "w", encoding="utf-8") as file:
            file.write("\n".join(lines) + "\n")
        result = self.run_program("session", script)
        answers = [json.loads(line) for line in result.stdout.splitlines()]
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        return answers

    def test_tiny_and_narrow_pictures(self):
        for width, height in ((3, 3), (1, 1), (1, 7), (17, 1), (5, 4), (641, 3), (2, 2)):
            with self.subTest(width=width, height=height):
                write_clip(self.path("in.y4m"), width, height, 7)
                for method in ("linear", "shift", "gamma"):
                    done, _ = self.deflicker("in.y4m", "out.nut", "--codec", "rawvideo",
                                             "--correction-method", method)
                    self.assertEqual(done["frames"], 7)
                out = (self.folder / "out.nut").stat().st_size
                self.assertGreater(out, 7 * len(frame_bytes(width, height, 90)))

    def test_a_very_large_picture(self):
        write_clip(self.path("in.y4m"), 8192, 4320, 2)
        done, _ = self.deflicker("in.y4m", "out.nut", "--codec", "rawvideo")
        self.assertEqual(done["frames"], 2)
        self.assertEqual(self.frames_of(self.path("out.nut")), 2)

    def parts(self, *shapes):
        """A stream of one part after the other; each 10 frames of a size and pixel format."""
        with open(self.path("in.ts"), "wb") as stream:
            for size, pixels in shapes:
                self.ffmpeg("-f", "lavfi", "-i", f"testsrc2=s={size}:r=25:d=0.4", "-pix_fmt",
                            pixels, "-c:v", "libx264", "-preset", "ultrafast", "-f", "mpegts",
                            self.path("part.ts"))
                stream.write((self.folder / "part.ts").read_bytes())

    def test_size_and_depth_that_change_on_the_way(self):
        for second in (("32x48", "yuv420p"), ("64x48", "yuv420p10le"), ("128x96", "yuv444p")):
            with self.subTest(second=second):
                self.parts(("64x48", "yuv420p"), second)
                done, said = self.deflicker("in.ts", "out.mkv", "--codec", "ffv1")
                self.assertEqual(done["frames"], 20)
                self.assertIn("changes size or format on the way", said)
                self.assertEqual(self.frames_of(self.path("out.mkv")), 20)

    def test_numbered_pictures_of_several_sizes_and_depths(self):
        for number, (size, pixels) in enumerate([("40x30", "rgb24"), ("80x20", "rgb24"),
                                                 ("40x30", "rgb48be"), ("40x30", "gray")]):
            self.ffmpeg("-f", "lavfi", "-i", f"testsrc2=s={size}", "-frames:v", 1, "-pix_fmt",
                        pixels, self.path(f"in.{number:03}.png"))
        done, said = self.deflicker("in.%03d.png", "out.%03d.png")
        self.assertEqual(done["frames"], 4)
        self.assertIn("changes size or format on the way", said)

    def test_a_clip_that_is_cut_after_its_analysis(self):
        clip, project = self.path("in.y4m"), self.path("a.varilum")
        write_clip(clip, 64, 48, 20)
        self.expect_done("analyze", clip, "-o", project)
        os.truncate(clip, os.path.getsize(clip) // 2)
        self.expect_refusal("not the clip", "render", project, self.path("out.mkv"))
        self.assertEqual(self.names(), ["a.varilum", "in.y4m"])

    def test_a_clip_that_is_replaced_after_its_analysis(self):
        clip, project = self.path("in.y4m"), self.path("a.varilum")
        write_clip(clip, 64, 48, 20)
        self.expect_done("analyze", clip, "-o", project)
        write_clip(clip, 48, 64, 20)
        self.expect_refusal("not the clip", "render", project, self.path("out.mkv"))

    def test_a_header_without_frames(self):
        write_clip(self.path("in.y4m"), 64, 48, 0)
        for command in (["deflicker", self.path("in.y4m"), self.path("out.mkv")],
                        ["analyze", self.path("in.y4m"), "-o", self.path("a.varilum")]):
            self.expect_refusal("in.y4m", *command)
        self.assertEqual(self.names(), ["in.y4m"])

    def test_a_frame_that_is_cut_short(self):
        write_clip(self.path("in.y4m"), 64, 48, 10)
        os.truncate(self.path("in.y4m"), os.path.getsize(self.path("in.y4m")) - 1000)
        done, _ = self.deflicker("in.y4m", "out.mkv")
        self.assertGreaterEqual(done["frames"], 9)
        self.assertEqual(self.frames_of(self.path("out.mkv")), done["frames"])

    def by_index(self, frames, fps):
        """Opened, not decoded: its end is found and rendered, and the panel is drawn there."""
        free = shutil.disk_usage(self.folder).free
        if free < frames * 20:
            self.skipTest("not enough room for the clip")
        write_clip(self.path("in.y4m"), 2, 2, frames, fps)
        opened, gone, rendered = self.session(f"open {self.path('in.y4m')}", f"goto {frames - 1}",
                                              f"render {frames - 1}")
        self.assertEqual(opened["frames"], frames)
        self.assertEqual(gone["frame"], frames - 1)
        self.assertEqual(rendered["frame"], frames - 1)

    def test_a_million_timestamps(self):
        self.by_index(1_000_000, "25:1")

    def test_twenty_four_hours(self):
        self.by_index(24 * 60 * 60 * 25, "25:1")

    def test_twenty_four_hours_of_a_rate_beyond_whole_seconds(self):
        # Frame times in units of 1/60000 s outgrow 32 bits.
        self.by_index(24 * 60 * 60 * 60, "60000:1001")


if __name__ == "__main__":
    unittest.main()
