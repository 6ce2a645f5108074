"""Whenever varilum4 is stopped: what stands under a final name is whole, and a rerun succeeds."""
import os
import random
import signal
import subprocess
import time
import unittest

from clips import write_clip
from program_case import PROGRAM, ProgramCase

MOMENTS = int(os.environ.get("VARILUM_KILL_MOMENTS", "50"))
SIGNALS = (signal.SIGINT, signal.SIGTERM, signal.SIGKILL)


class Kill(ProgramCase):
    def setUp(self):
        super().setUp()
        seed = int(os.environ.get("VARILUM_SEED", random.SystemRandom().randrange(2**32)))
        print(f"seed {seed}", flush=True)  # VARILUM_SEED repeats the moments
        self.random = random.Random(seed)
        write_clip(self.path("in.y4m"), 160, 120, 40)
        self.expect_done("analyze", self.path("in.y4m"), "-o", self.path("a.varilum"))

    def read(self, name):
        """What stands under the name: a project as what it says, since the effect's own data hold
        addresses of the process that made them; anything else as its bytes."""
        path = self.folder / name
        if not path.exists():
            return None
        data = path.read_bytes()
        if data.startswith(b"VARILUM\n"):
            return self.expect_done("info", path, "--json").stdout
        return data

    def whole_results(self, command, outputs):
        """The bytes that a run to the end leaves under each name, and how long it takes."""
        start = time.monotonic()
        self.expect_done(*command)
        spent = time.monotonic() - start
        return {name: self.read(name) for name in outputs}, spent

    def stop_somewhere(self, command, number, within):
        """Starts it and sends the signal at a random moment. Gives the return code and the moment;
        a run that was done before counts too."""
        moment = self.random.uniform(0.0, within)
        with subprocess.Popen([PROGRAM, *command], stdout=subprocess.DEVNULL,
                              stderr=subprocess.PIPE) as running:
            try:
                running.wait(moment)
            except subprocess.TimeoutExpired:
                running.send_signal(number)
            _, said = running.communicate(timeout=60)
        what = f"{command[0]} {signal.Signals(number).name} after {moment:.4f} s"
        self.assertIn(running.returncode, (0, 130, -number), (what, said))
        return running.returncode, what

    def stop_often(self, command, outputs, before, times):
        """before: what stands under each name at the start of each run, or None."""
        whole, spent = self.whole_results(command, outputs)
        for name in outputs:
            self.assertIsNotNone(whole[name])
        stopped = 0
        for i in range(times):
            for name in outputs:
                path = self.folder / name
                if before is None:
                    path.unlink(missing_ok=True)
                else:
                    path.write_bytes(before)
            names = self.names()
            code, what = self.stop_somewhere(command, SIGNALS[i % len(SIGNALS)], 1.1 * spent)
            stopped += code != 0
            for name in outputs:
                self.assertIn(self.read(name), (before, whole[name]), (what, name))
            if code == 130:
                self.assertEqual(self.names(), names, what + ": left over")
            if code not in (0, 130):
                again, _ = self.whole_results(command + ["--force"] * ("--force" not in command),
                                              outputs)
                self.assertEqual(again, whole, what + ": run again")
                self.assertEqual(self.names(), sorted({*names, *outputs}), what + ": left over")
        return stopped

    def test_every_moment(self):
        clip, project = self.path("in.y4m"), self.path("a.varilum")
        pictures = [f"p.{i:03}.png" for i in range(1, 41)]
        other = b"what was there before"
        share = MOMENTS // 5
        stopped = 0
        stopped += self.stop_often(["deflicker", clip, self.path("o.avi")], ["o.avi"], None,
                                   MOMENTS - 4 * share)
        stopped += self.stop_often(["deflicker", clip, self.path("f.avi"), "--force"], ["f.avi"],
                                   other, share)
        stopped += self.stop_often(["analyze", clip, "-o", self.path("b.varilum"), "--force"],
                                   ["b.varilum"], other, share)
        stopped += self.stop_often(["render", project, self.path("p.%03d.png")], pictures, None,
                                   share)
        stopped += self.stop_saving(share)
        print(f"{MOMENTS} moments, {stopped} of them before the end", flush=True)
        self.assertGreater(stopped, MOMENTS // 4, "hardly a run was stopped before its end")

    def stop_saving(self, times):
        """A session that saves one project over and over, with other settings each time."""
        lines = [f"open {self.path('a.varilum')}"]
        for frames in (10, 20) * 20:
            lines += [f'set "Number of smoothing frames" {frames}',
                      f"save {self.path('s.varilum')} force"]
        script = self.folder / "visit.txt"
        script.write_text("\n".join(lines) + "\n")
        command = ["session", str(script)]
        _, spent = self.whole_results(command, ["s.varilum"])
        names = self.names()
        stopped = 0
        for i in range(times):
            code, what = self.stop_somewhere(command, SIGNALS[i % len(SIGNALS)], spent)
            stopped += code != 0
            info = self.run_program("info", self.path("s.varilum"))
            self.assertEqual(info.returncode, 0, (what, info.stderr))
            self.assertRegex(info.stdout, r"Number of smoothing frames +[12]0\n", what)
            if code not in (0, 130):
                self.expect_done(*command)
            self.assertEqual(self.names(), names, what + ": left over")
        return stopped


if __name__ == "__main__":
    unittest.main()
