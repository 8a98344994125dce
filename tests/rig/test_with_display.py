# SPDX-License-Identifier: GPL-3.0-or-later
"""The rig hands on the command's exit code and takes everything away with it."""
import os
import pathlib
import subprocess
import tempfile
import unittest

RIG = pathlib.Path(__file__).resolve().parent / "with-display"


class WithDisplay(unittest.TestCase):
    def run_rig(self, *command):
        with tempfile.TemporaryDirectory() as folder:
            done = subprocess.run([RIG, *command], capture_output=True, text=True, env={**os.environ, "TMPDIR": folder})
            return done, os.listdir(folder)

    def test_the_exit_code_is_the_commands(self):
        for code in (0, 7):
            done, _ = self.run_rig("sh", "-c", f"exit {code}")
            self.assertEqual(code, done.returncode, done.stderr)

    def test_nothing_is_left_behind(self):
        done, left = self.run_rig("sh", "-c", "echo $DISPLAY $CORVID_RIG_SERVER")
        self.assertEqual([], left)
        display, server = done.stdout.split()
        self.assertRegex(display, r"^:\d+$")
        self.assertGreater(int(server), 1)
        self.assertFalse(pathlib.Path(f"/proc/{server}").exists(), "the X server lives on")

    def test_no_command_is_an_error(self):
        done, left = self.run_rig()
        self.assertEqual(98, done.returncode)
        self.assertIn("no command given", done.stderr)
        self.assertEqual([], left)


if __name__ == "__main__":
    unittest.main()
