"""Memory does not grow with the length of the clip beyond what is kept of each frame."""
import json
import os
import pathlib
import re
import subprocess
import unittest

from clips import write_clip
from program_case import PROGRAM, ProgramCase

SHORT, LONG = 1000, 10_000
WIDTH, HEIGHT = 64, 48
# Kept of each frame: how its light is spread (64 bytes), the analysis (209 bytes, in a few copies while
# it is saved and rendered), its levels and its place in the file. What shots are found by is kept of some
# eighty frames only (3.7 kB each). A picture of this size is 4600 bytes in the clip and 12 kB in the effect.
BYTES_A_FRAME = 2000
# While frames are rendered only their levels are added, and FFmpeg's index of the output.
BYTES_A_RENDERED_FRAME = 200


class SteadyMemory(ProgramCase):
    def peak(self, *arguments):
        """Most memory that the program held at once, in bytes."""
        child = os.fork()
        if child == 0:
            quiet = os.open(os.devnull, os.O_WRONLY)
            os.dup2(quiet, 1)
            os.execv(PROGRAM, [PROGRAM, *arguments])
        _, status, usage = os.wait4(child, 0)
        self.assertEqual(os.waitstatus_to_exitcode(status), 0, arguments)
        return usage.ru_maxrss * 1024

    def test_long_clips_take_no_more_than_short_ones(self):
        clips = {frames: self.path(f"in{frames}.y4m") for frames in (SHORT, LONG)}
        for frames, clip in clips.items():
            write_clip(clip, WIDTH, HEIGHT, frames)
        for name, command in (("deflicker", lambda clip: [clip, clip + ".nut", "--codec",
                                                          "rawvideo"]),
                              ("analyze", lambda clip: [clip, "-o", clip + ".varilum"])):
            short, long = (self.peak(name, *command(clips[frames]), "--threads", "2", "--memory",
                                     "8M", "--quiet") for frames in (SHORT, LONG))
            print(f"{name}: at most {short / 1e6:.1f} MB for {SHORT} frames, "
                  f"{long / 1e6:.1f} MB for {LONG}", flush=True)
            self.assertLess(long - short, (LONG - SHORT) * BYTES_A_FRAME, name)

    def test_rendering_goes_on_in_the_same_memory(self):
        clip = self.path("in.y4m")
        write_clip(clip, WIDTH, HEIGHT, LONG)
        held = {}
        with subprocess.Popen([PROGRAM, "deflicker", clip, clip + ".nut", "--codec", "rawvideo",
                               "--threads", "2", "--memory", "8M", "--progress", "json"],
                              stdout=subprocess.PIPE, text=True) as run:
            for line in run.stdout:
                event = json.loads(line)
                if event.get("phase") != "Rendering" or event["done"] % (LONG // 10):
                    continue
                status = pathlib.Path(f"/proc/{run.pid}/status").read_text()
                held[event["done"]] = 1024 * int(re.search(r"RssAnon:\s+(\d+)", status)[1])
                if event["done"] == LONG * 9 // 10:
                    break
            run.stdout.read()
        self.assertEqual(run.returncode, 0)
        print("rendering: " + ", ".join(f"{bytes_held / 1e6:.1f}" for bytes_held in held.values()) +
              f" MB after each {LONG // 10} frames", flush=True)
        early, late = LONG // 10, LONG * 9 // 10
        self.assertLess(held[late] - held[early], (late - early) * BYTES_A_RENDERED_FRAME)


if __name__ == "__main__":
    unittest.main()
