# SPDX-License-Identifier: GPL-3.0-or-later
"""Each rule of scripts/check-files fails on a file that breaks it, and on nothing else."""
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

TREE = pathlib.Path(os.environ.get("CORVID_SOURCE_DIR", pathlib.Path(__file__).resolve().parents[2]))
LICENCE = "SPDX-License-Identifier: GPL-3.0-or-later"
SOUND = {
    "src/core/text.h": f"// {LICENCE}\n#pragma once\n",
    "scripts/run": f"#!/usr/bin/env bash\n# {LICENCE}\nexit 0\n",
    "share/start.set": f"; {LICENCE}\r\n#CONFIGURE OutputLog true\r\n",
    "README.md": "Words\n",
}


def check(changes, git=False):
    """The exit code and the findings for a small tree with these files changed."""
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        for name, text in {**SOUND, **changes}.items():
            path = root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(text.encode())
            if text.startswith("#!") and name != "scripts/idle":
                path.chmod(0o755)
        if git:
            subprocess.run(["git", "init", "-q", root], check=True)
        done = subprocess.run([sys.executable, TREE / "scripts" / "check-files", "--root", root],
                              capture_output=True, text=True)
        return done.returncode, done.stdout.splitlines()[:-1]


class Files(unittest.TestCase):
    def assert_finding(self, name, text, line, words):
        code, findings = check({name: text})
        self.assertEqual(1, len(findings), findings)
        self.assertTrue(findings[0].startswith(f"{name}:{line}: "), findings)
        self.assertIn(words, findings[0])
        self.assertEqual(1, code)

    def test_a_tree_in_order_passes(self):
        self.assertEqual((0, []), check({}))

    def test_a_missing_licence(self):
        for name in ("src/core/a.cpp", "tests/test_a.py", "src/core/CMakeLists.txt"):
            with self.subTest(name):
                self.assert_finding(name, "word\n", 1, "do not hold " + LICENCE)
        self.assert_finding("scripts/tool", "#!/usr/bin/env python3\n", 1, "do not hold " + LICENCE)

    def test_a_source_that_is_too_long(self):
        lines = f"// {LICENCE}\n" + "int a;\n" * 449
        self.assertEqual((0, []), check({"src/core/a.cpp": lines, "tests/core/a.cpp": lines + "\n" * 300}))
        self.assert_finding("src/core/a.cpp", lines + "int b;\n", 451, "451 lines")

    def test_a_tab(self):
        self.assert_finding("README.md", "one\n\ttwo\n", 2, "a tab")

    def test_blanks_at_a_lines_end(self):
        self.assert_finding("README.md", "one\ntwo \n", 2, "blanks at the line's end")

    def test_a_carriage_return_outside_a_script_file(self):
        self.assert_finding("README.md", "one\r\n", 1, "a CR at the line's end")

    def test_a_script_file_without_carriage_returns(self):
        self.assert_finding("share/other.set", f"#BELL\r\n; {LICENCE}\n", 2, "CR LF")

    def test_a_script_file_without_its_licence(self):
        self.assert_finding("share/other.set", "#BELL\r\n#BELL\r\n", 3, f"no line holds {LICENCE}")

    def test_a_last_line_without_its_end(self):
        self.assert_finding("README.md", "one", 1, "no end")

    def test_a_shell_script_that_does_not_parse(self):
        self.assert_finding("scripts/odd", f"#!/usr/bin/env bash\n# {LICENCE}\nif true; then\n", 1, "bash cannot read it")

    def test_a_script_that_cannot_be_started(self):
        self.assert_finding("scripts/idle", f"#!/usr/bin/env bash\n# {LICENCE}\n", 1, "executable bit")

    def test_what_git_ignores_is_not_looked_at(self):
        self.assertEqual((0, []), check({".gitignore": "/build/\n", "build/a.cpp": "\t"}, git=True))


if __name__ == "__main__":
    unittest.main()
