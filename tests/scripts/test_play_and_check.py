# SPDX-License-Identifier: GPL-3.0-or-later
"""play and check do what they say, with the tools they call replaced by ones that write down how they were called."""
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

TREE = pathlib.Path(os.environ.get("CORVID_SOURCE_DIR", pathlib.Path(__file__).resolve().parents[2]))

TOOL = """#!/bin/bash
echo "$(basename "$0") $*" >> "$CALLS"
"""
# dpkg knows what the file says; apt-get adds to it, as the real one would.
DPKG = TOOL + """shift 2
for package in "$@"; do grep -qx "$package" "$INSTALLED" && echo "$package installed"; done
"""
APT = TOOL + """[ "$1" = install ] || exit 0
[ -z "$APT_FAILS" ] || { echo "E: Unable to locate package"; exit 100; }
for word in "$@"; do echo "$word" >> "$INSTALLED"; done
"""
ID = "#!/bin/bash\necho ${USER_ID:-0}\n"
SUDO = TOOL + '"$@"\n'
CMAKE = TOOL + """mkdir -p build/release; touch build/release/build.ninja
echo "CMAKE_HOME_DIRECTORY:INTERNAL=$PWD" > build/release/CMakeCache.txt
"""
NINJA = TOOL + """[ -z "$NINJA_STOPPED" ] || { echo "[ 4%] Building"; kill -INT 0; exit 1; }
[ -z "$NINJA_DIES" ] || { echo "[ 4%] Building"; echo "Killed"; exit 137; }
[ -z "$NINJA_FAILS" ] || { echo "[ 4%] Building"; echo "a.cpp:1: error: no such thing"; exit 1; }
for percent in 4 20 50 99 100; do printf '[%3d%%] Building\\n' $percent; done
mkdir -p "$2/src/app"
printf '#!/bin/bash\\necho "started $*"\\nexit 3\\n' > "$2/src/app/corvid"; chmod +x "$2/src/app/corvid"
"""


class Play(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.top = pathlib.Path(self.folder.name)
        self.tree = self.top / "a tree"
        (self.tree / "scripts").mkdir(parents=True)
        shutil.copy(TREE / "play", self.tree)
        for name in ("common", "packages"):
            shutil.copy(TREE / "scripts" / name, self.tree / "scripts")
        self.tools = self.top / "tools"
        self.tools.mkdir()
        for name, text in (("dpkg-query", DPKG), ("apt-get", APT), ("id", ID), ("sudo", SUDO), ("cmake", CMAKE),
                           ("ninja", NINJA)):
            (self.tools / name).write_text(text)
            (self.tools / name).chmod(0o755)
        self.calls = self.top / "calls"
        self.calls.touch()
        self.installed = self.top / "installed"
        needed = subprocess.run(["bash", "-c", '. "$0"; printf "%s\\n" "${build_packages[@]}"',
                                 TREE / "scripts" / "packages"], capture_output=True, text=True, check=True)
        self.needed = needed.stdout.split()
        self.installed.write_text(needed.stdout)

    def play(self, *arguments, **surroundings):
        self.calls.write_text("")
        for name in [name for name, value in surroundings.items() if value is None]:
            surroundings.pop(name)
        return subprocess.run([self.tree / "play", *arguments], capture_output=True, text=True, cwd=self.top,
                              stdin=subprocess.DEVNULL, start_new_session=True,
                              env={"PATH": f"{self.tools}:/usr/bin:/bin", "CALLS": str(self.calls),
                                   "INSTALLED": str(self.installed), **surroundings})

    def called(self, tool):
        return [line for line in self.calls.read_text().splitlines() if line.split()[0] == tool]

    def test_with_all_packages_there_is_no_call_of_apt(self):
        done = self.play()
        self.assertEqual(3, done.returncode, "the program's exit code is play's: " + done.stderr)
        self.assertEqual([], self.called("apt-get"))
        self.assertEqual(1, len(self.called("dpkg-query")))

    def test_only_what_is_missing_is_installed(self):
        self.installed.write_text("".join(name + "\n" for name in self.needed if name not in ("cmake", "libopenal-dev")))
        done = self.play()
        self.assertEqual(3, done.returncode, done.stderr)
        self.assertIn("Installing 2 missing packages with apt-get: cmake libopenal-dev", done.stdout)
        self.assertEqual(["apt-get update -q", "apt-get install -y -q --no-install-recommends cmake libopenal-dev"],
                         self.called("apt-get"))
        self.assertEqual([], self.called("sudo"))

    def test_sudo_is_used_by_those_who_are_not_root(self):
        self.installed.write_text("".join(name + "\n" for name in self.needed if name != "cmake"))
        done = self.play(USER_ID="1000")
        self.assertEqual(3, done.returncode, done.stderr)
        self.assertEqual(2, len(self.called("sudo")))
        self.assertIn("sudo may ask for your password", done.stdout)

    def test_a_failed_installation_is_told_plainly(self):
        self.installed.write_text("")
        done = self.play(APT_FAILS="1")
        self.assertEqual(1, done.returncode)
        self.assertIn("E: Unable to locate package", done.stderr)
        self.assertIn("The packages could not be installed.", done.stderr)
        self.assertEqual([], self.called("ninja"))

    def test_only_the_two_programs_are_built(self):
        self.play()
        self.assertEqual(["cmake --preset release"], [line.split(" -D")[0] for line in self.called("cmake")])
        self.assertEqual([f"ninja -C {self.tree}/build/release corvid corvid-practice"], self.called("ninja"))

    def test_the_second_start_does_not_configure_again(self):
        self.play()
        self.play()
        self.assertEqual([], self.called("cmake"))
        self.assertEqual(1, len(self.called("ninja")))

    def test_a_moved_tree_is_configured_again(self):
        self.play()
        self.tree = self.tree.rename(self.top / "moved")
        self.assertEqual(3, self.play().returncode)
        self.assertEqual(1, len(self.called("cmake")))

    def test_a_failed_build_is_told_plainly(self):
        done = self.play(NINJA_FAILS="1")
        self.assertEqual(1, done.returncode)
        self.assertIn("a.cpp:1: error: no such thing", done.stderr)
        self.assertIn("Corvid could not be built.", done.stderr)
        self.assertNotIn("started", done.stdout)

    def test_a_build_that_names_no_error_is_told_by_its_last_words(self):
        done = self.play(NINJA_DIES="1")
        self.assertEqual(1, done.returncode)
        self.assertIn("Killed\nCorvid could not be built. Above is what stopped it", done.stderr)

    def test_a_build_that_the_player_stops_points_to_nothing_above(self):
        done = self.play(NINJA_STOPPED="1")
        self.assertEqual(1, done.returncode)
        self.assertEqual("The build was stopped before it was ready. Run ./play again to go on with it.\n", done.stderr)
        self.assertNotIn("started", done.stdout)
        self.assertEqual(3, self.play().returncode)

    def test_progress_is_a_few_short_lines(self):
        self.assertEqual(["Building Corvid. The first time this takes a few minutes.", "20 percent", "50 percent",
                          "90 percent", "started --practice --ui console"], self.play().stdout.splitlines())

    def test_the_face_follows_the_display(self):
        for surroundings, arguments, expected in (
                ({}, (), "--practice --ui console"),
                ({"DISPLAY": ":0"}, (), "--practice"),
                ({"WAYLAND_DISPLAY": "wayland-0"}, (), "--practice"),
                ({"DISPLAY": ":0"}, ("--ui", "console"), "--practice --ui console"),
                ({}, ("--ui", "json"), "--practice --ui json"),
                ({}, ("--ui=desktop",), "--practice --ui=desktop"),
                ({}, ("--data", "a folder"), "--practice --ui console --data a folder")):
            with self.subTest(expected, **surroundings):
                self.assertEqual("started " + expected, self.play(*arguments, **surroundings).stdout.splitlines()[-1])


RESULTS = """<testsuite>
<testcase name="a" status="run"><system-out>fine</system-out></testcase>
<testcase name="b" status="fail"><failure message=""/><system-out>expected 1</system-out></testcase>
<testcase name="c" status="notrun"><skipped message="SKIP_REGULAR_EXPRESSION_MATCHED"/></testcase>
<testcase name="d" status="disabled"/>
<testcase name="e" status="run"><system-out/></testcase>
</testsuite>
"""


class Count(unittest.TestCase):
    def test_what_did_not_run_counts_as_failed(self):
        with tempfile.NamedTemporaryFile("w", suffix=".xml") as results:
            results.write(RESULTS)
            results.flush()
            done = subprocess.run([TREE / "scripts" / "count-tests", results.name], capture_output=True, text=True)
        self.assertEqual(0, done.returncode)
        self.assertEqual(["FAILED: b", "    expected 1", "NOT RUN: c (notrun)", "NOT RUN: d (disabled)", "2 3"],
                         done.stdout.splitlines())


class Check(unittest.TestCase):
    def test_an_unknown_option_is_refused(self):
        done = subprocess.run([TREE / "check", "--fast"], capture_output=True, text=True)
        self.assertEqual(2, done.returncode)
        self.assertIn("./check --quick", done.stderr)

    def test_the_verdict_is_told_even_when_nothing_can_be_installed(self):
        with tempfile.TemporaryDirectory() as folder:
            top = pathlib.Path(folder)
            (top / "scripts").mkdir()
            shutil.copy(TREE / "check", top)
            for name in ("common", "packages"):
                shutil.copy(TREE / "scripts" / name, top / "scripts")
            for name, text in (("dpkg-query", "#!/bin/bash\n"), ("apt-get", "#!/bin/bash\nexit 1\n"), ("id", ID)):
                (top / name).write_text(text)
                (top / name).chmod(0o755)
            done = subprocess.run([top / "check"], capture_output=True, text=True, stdin=subprocess.DEVNULL,
                                  env={"PATH": f"{top}:/usr/bin:/bin"})
        self.assertEqual(1, done.returncode)
        self.assertEqual(["0 passed, 1 failed", "check: FAILED (packages)"], done.stdout.splitlines()[-2:])


if __name__ == "__main__":
    unittest.main()
