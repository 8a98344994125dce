# SPDX-License-Identifier: GPL-3.0-or-later
"""The installed program runs, and finds the data that was installed with it and not the tree's."""
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

TREE = pathlib.Path(os.environ["CORVID_SOURCE_DIR"])
BUILD = pathlib.Path(os.environ["CORVID_BUILD_DIR"])
MARK = b"; this one was installed\r\n"


class Installed(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.top = pathlib.Path(cls.folder.name)
        cls.prefix = cls.top / "prefix"
        subprocess.run(["cmake", "--install", BUILD, "--prefix", cls.prefix], check=True, stdout=subprocess.DEVNULL)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def run_corvid(self, *arguments, typed=""):
        """The program as a player starts it who has no display: nothing of the tester's session is left."""
        home = self.top / "home"
        home.mkdir(exist_ok=True)
        surroundings = {"PATH": "/usr/bin:/bin", "HOME": str(home), "LANG": "C.UTF-8", "TMPDIR": str(self.top),
                        "XDG_RUNTIME_DIR": os.environ["XDG_RUNTIME_DIR"], "ALSOFT_DRIVERS": "null"}
        for name in ("ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"):
            if name in os.environ:
                surroundings[name] = os.environ[name]
        return subprocess.run([self.prefix / "bin" / "corvid", *arguments], input=typed, capture_output=True,
                              text=True, env=surroundings, cwd=self.top, timeout=60)

    def test_everything_is_where_linux_expects_it(self):
        for name in ("bin/corvid", "libexec/corvid/corvid-practice", "share/corvid/start.set", "share/corvid/corvidhelp.txt",
                     "share/applications/corvid.desktop"):
            self.assertTrue((self.prefix / name).is_file(), name)
        self.assertTrue((self.prefix / "share/doc/corvid/language.md").is_file())
        for folder, pattern in (("Sounds", "*.wav"), ("examples", "*.set")):
            shipped = {path.name for path in (TREE / "share" / folder).glob(pattern)}
            installed = {path.name for path in (self.prefix / "share" / "corvid" / folder).iterdir()}
            self.assertEqual(shipped, installed)

    def test_version_and_help_need_nothing(self):
        project = re.search(r"project\(corvid VERSION ([0-9.]+)", (TREE / "CMakeLists.txt").read_text())
        done = self.run_corvid("--version")
        self.assertEqual(0, done.returncode, done.stderr)
        self.assertIn(project.group(1), done.stdout)
        done = self.run_corvid("--help")
        self.assertEqual(0, done.returncode, done.stderr)
        for option in ("--ui", "--data", "--connect", "--practice", "--version", "--help"):
            self.assertIn(option, done.stdout)

    def test_the_practice_game_is_prepared_from_the_installed_files(self):
        script = self.prefix / "share" / "corvid" / "start.set"
        script.write_bytes(MARK + script.read_bytes())
        done = self.run_corvid("--ui", "json", "--practice", typed='{"wait":0.5}\n')
        self.assertEqual(0, done.returncode, done.stderr)
        state = self.top / "home" / ".local" / "state" / "corvid"
        prepared = [path for path in state.rglob("*") if path.name.lower() == "start.set"]
        self.assertEqual(1, len(prepared), f"in {state}: {sorted(state.rglob('*'))}")
        self.assertTrue(prepared[0].read_bytes().startswith(MARK), "prepared from other files than the installed")
        self.assertTrue((prepared[0].parent / "Sounds" / "bell.wav").is_file())
        self.assertFalse((self.top / "home" / "Documents").exists(), "the practice game touched the player's own folder")


if __name__ == "__main__":
    unittest.main()
