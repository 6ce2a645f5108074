"""What the tests of the built program share: a folder of their own, and running it."""
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

PROGRAM = os.environ["VARILUM_PROGRAM"]


class ProgramCase(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="varilum-programs-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)

    def path(self, name):
        return str(self.folder / name)

    def names(self, folder=None):
        return sorted(os.listdir(folder or self.folder))

    def run_program(self, *arguments, **options):
        """Runs it to its end; two minutes are far more than it may take."""
        return subprocess.run([PROGRAM, *map(str, arguments)], capture_output=True, text=True,
                              timeout=120, check=False, **options)

    def expect_done(self, *arguments, **options):
        result = self.run_program(*arguments, **options)
        self.assertEqual(result.returncode, 0, result.stderr)
        return result

    def expect_refusal(self, word, *arguments, code=1, **options):
        """One line on standard error that holds this word, and the exit code."""
        result = self.run_program(*arguments, **options)
        self.assertEqual(result.returncode, code, (arguments, result.stdout, result.stderr))
        self.assertEqual(result.stderr.count("\n"), 1, result.stderr)
        self.assertIn(word, result.stderr)
        return result

    def frames_of(self, clip):
        """Frames that decode, counted by reading all of them as a new clip would be."""
        project = self.path("count.varilum")
        self.expect_done("analyze", clip, "-o", project, "--force", "--quiet", "--speed", "20")
        text = self.expect_done("info", project).stdout
        os.unlink(project)
        return int(next(line.split()[1] for line in text.splitlines() if line.startswith("frames")))
