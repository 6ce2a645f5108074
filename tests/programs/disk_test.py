"""Targets that cannot be written: a full disk, a size limit, read-only places, nobody listening."""
import os
import resource
import signal
import subprocess
import unittest

from clips import write_clip
from program_case import PROGRAM, ProgramCase

KILOBYTES = 64  # less than each of the outputs below


def limit_file_size():
    resource.setrlimit(resource.RLIMIT_FSIZE, (KILOBYTES * 1024, KILOBYTES * 1024))


class Disk(ProgramCase):
    def setUp(self):
        super().setUp()
        self.clip = self.path("in.y4m")
        write_clip(self.clip, 160, 120, 30)
        self.project = self.path("a.varilum")
        self.expect_done("analyze", self.clip, "-o", self.project)

    def commands(self, folder):
        """Every command that writes, with its output in the folder."""
        script = self.folder / "save.txt"
        script.write_text(f"open {self.project}\nsave {folder}/s.varilum\n")
        return [["deflicker", self.clip, f"{folder}/o.avi"],
                ["analyze", self.clip, "-o", f"{folder}/b.varilum"],
                ["render", self.project, f"{folder}/o.mkv"],
                ["deflicker", self.clip, "null:", "--plot", f"{folder}/plot.png"],
                ["session", str(script)]]

    def refused(self, command, word, **options):
        """The failure says why, in one line or as the session's answer."""
        result = self.run_program(*command, **options)
        self.assertEqual(result.returncode, 1, (command, result.stdout, result.stderr))
        said = result.stdout if command[0] == "session" else result.stderr
        self.assertRegex(said, word, command)

    def mount(self, size):
        """A small disk in memory, unmounted at the end."""
        folder = self.path("disk")
        os.mkdir(folder)
        made = subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={size}", "none", folder],
                              capture_output=True, text=True, check=False)
        if made.returncode != 0:
            self.skipTest("no small disk can be mounted here: " + made.stderr.strip())
        self.addCleanup(subprocess.run, ["umount", "-l", folder], check=False)
        return folder

    def test_full_disk(self):
        folder = self.mount(f"{KILOBYTES}k")
        for command in self.commands(folder):
            self.refused(command, "[Nn]o space left")
            self.assertEqual(self.names(folder), [], command)

    def test_full_disk_of_pictures(self):
        folder = self.mount(f"{KILOBYTES}k")
        self.refused(["deflicker", self.clip, f"{folder}/o.%03d.tif"], "no space left")
        self.assertEqual(self.names(folder), [])

    def test_full_disk_keeps_what_was_there(self):
        folder = self.mount(f"{KILOBYTES}k")
        old = os.path.join(folder, "b.varilum")
        with open(old, "w", encoding="ascii") as file:
            file.write("precious")
        self.refused(["analyze", self.clip, "-o", old, "--force"], "no space left")
        with open(old, encoding="ascii") as file:
            self.assertEqual(file.read(), "precious")

    def test_file_size_limit(self):
        folder = self.path("small")
        os.mkdir(folder)
        for command in self.commands(folder):
            self.refused(command, "[Nn]o space left|File too large",
                         preexec_fn=limit_file_size)
            self.assertEqual(self.names(folder), [], command)

    def test_read_only_disk(self):
        folder = self.mount("1m")
        subprocess.run(["mount", "-o", "remount,ro", folder], check=True)
        for command in self.commands(folder):
            self.refused(command, "may not be written to|could not be written|Read-only")

    def test_read_only_folder(self):
        if os.geteuid() == 0:
            self.skipTest("root may write to every folder")
        folder = self.path("locked")
        os.mkdir(folder, mode=0o500)
        for command in self.commands(folder):
            self.refused(command, "may not be written to")

    def test_answers_that_nobody_reads(self):
        """The reader of the progress goes away: the run stops, and leaves nothing."""
        before = self.names()
        with subprocess.Popen([PROGRAM, "deflicker", self.clip, self.path("o.avi"), "--progress",
                               "json"], stdout=subprocess.PIPE, stderr=subprocess.PIPE) as running:
            running.stdout.close()
            self.assertIn(running.wait(60), (130, -signal.SIGPIPE), running.stderr.read())
        self.assertEqual(self.names(), before)

    def test_terminal_that_is_closed(self):
        clip = self.path("long.y4m")
        write_clip(clip, 320, 240, 300)
        before = self.names()
        with subprocess.Popen([PROGRAM, "deflicker", clip, self.path("o.avi"), "--progress",
                               "json"], stdout=subprocess.PIPE, stderr=subprocess.PIPE) as running:
            running.stdout.readline()
            running.send_signal(signal.SIGHUP)
            running.communicate(timeout=60)
            self.assertEqual(running.returncode, 130)
        self.assertEqual(self.names(), before)


if __name__ == "__main__":
    unittest.main()
