# SPDX-License-Identifier: GPL-3.0-or-later
"""Each rule of scripts/check-layers fails on a tree that breaks it, and on nothing else."""
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

TREE = pathlib.Path(os.environ.get("CORVID_SOURCE_DIR", pathlib.Path(__file__).resolve().parents[2]))

# A small house in order. A test changes or adds some files.
SOUND = {
    "core/types.h": "#pragma once\n",
    "core/text.h": '#pragma once\n#include "core/types.h"\n',
    "core/text.cpp": '#include "core/text.h"\n#include <string>\n',
    "platform/sockets.h": '#include "core/types.h"\n',
    "platform/qt/sockets.h": '#include "platform/sockets.h"\n#include <QTcpSocket>\n',
    "platform/qt/sockets.cpp": '#include "platform/qt/sockets.h"\n#include "core/text.h"\n',
    "platform/openal/mixer.cpp": "#include <AL/al.h>\n#include <sndfile.h>\n",
    "sessions/session_state.h": '#include "core/types.h"\n',
    "script/scanner.h": '#include "core/text.h"\n#include "sessions/session_state.h"\n',
    "script/scanner.cpp": '#include "script/scanner.h"\n#include "platform/sockets.h"\n',
    "commands/dispatcher.cpp": '#include "script/scanner.h"\n',
    "app/main.cpp": '#include "platform/qt/sockets.h"\n#include "script/scanner.h"\n',
}


def check(changes):
    """The exit code and the findings for the small house with these files changed."""
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        for name, text in {**SOUND, **changes}.items():
            path = root / "src" / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)
        done = subprocess.run([sys.executable, TREE / "scripts" / "check-layers", "--root", root],
                              capture_output=True, text=True)
        return done.returncode, done.stdout.splitlines()[:-1]


class Layers(unittest.TestCase):
    def assert_finding(self, changes, place, words):
        code, findings = check(changes)
        self.assertEqual(1, len(findings), findings)
        self.assertTrue(findings[0].startswith(f"src/{place}: "), findings)
        self.assertIn(words, findings[0])
        self.assertEqual(1, code)

    def test_a_house_in_order_passes(self):
        self.assertEqual((0, []), check({}))

    def test_an_include_that_goes_up(self):
        self.assert_finding({"script/functions.cpp": '// why\n#include "commands/table.h"\n', "commands/table.h": "\n"},
                            "script/functions.cpp:2", "commands/table.h is above script")

    def test_an_include_that_goes_up_beside_the_own_folder(self):
        self.assert_finding({"core/number.cpp": '#include "../platform/sockets.h"\n'},
                            "core/number.cpp:1", "platform/sockets.h is above core")

    def test_a_state_header_may_be_included_from_below(self):
        self.assertEqual((0, []), check({"core/upcalls.h": '#include "sessions/session_state.h"\n'}))

    def test_a_state_header_that_includes_more_than_core(self):
        self.assert_finding({"sessions/session_state.h": '#include "platform/sockets.h"\n'},
                            "sessions/session_state.h:1", "a state header includes only core")

    def test_an_implementation_of_the_platform_outside_app(self):
        self.assert_finding({"commands/sound.cpp": '#include "platform/qt/sockets.h"\n'},
                            "commands/sound.cpp:1", "only app includes it")

    def test_an_implementation_that_uses_another(self):
        self.assert_finding({"platform/openal/mixer.cpp": '#include "platform/qt/sockets.h"\n'},
                            "platform/openal/mixer.cpp:1", "only app includes it")

    def test_an_implementation_that_goes_up(self):
        self.assert_finding({"platform/qt/sockets.cpp": '#include "script/scanner.h"\n'},
                            "platform/qt/sockets.cpp:1", "script/scanner.h is above platform/qt")

    def test_a_part_of_a_librarys_folder_is_the_same_house(self):
        self.assertEqual((0, []), check({"platform/qt/desktop/window.cpp":
                                         '#include <QLabel>\n#include "platform/qt/sockets.h"\n'}))
        self.assert_finding({"platform/qt/desktop/window.cpp": '#include "script/scanner.h"\n'},
                            "platform/qt/desktop/window.cpp:1", "script/scanner.h is above platform/qt")

    def test_a_folder_without_a_place(self):
        self.assert_finding({"extra/thing.cpp": '#include "core/text.h"\n'},
                            "extra/thing.cpp:1", "no place in the house")

    def test_a_toolkit_outside_its_folder(self):
        for header in ("QString", "QtWidgets/QLabel", "QtDBus/QDBusMessage", "espeak-ng/speak_lib.h", "libspeechd.h",
                       "AL/al.h", "sndfile.hh", "nlohmann/json.hpp"):
            with self.subTest(header):
                self.assert_finding({"app/face.cpp": f"#include <{header}>\n"}, "app/face.cpp:1", f"{header} belongs in")

    def test_a_header_that_includes_itself(self):
        self.assert_finding({"core/a.h": '#include "core/a.h"\n'}, "core/a.h:1", "headers in a circle: core/a.h")

    def test_a_circle_of_headers_is_a_circle_of_modules_too(self):
        code, findings = check({"core/a.h": '#include "core/b.h"\n', "core/b.h": '#include "core/c.h"\n',
                                "core/c.h": '#include "core/a.h"\n', "core/d.h": '#include "core/a.h"\n'})
        self.assertEqual(1, code)
        self.assertEqual(["src/core/a.h:1: headers in a circle: core/a.h -> core/b.h -> core/c.h -> core/a.h",
                          "src/core/a:1: modules in a circle: core/a -> core/b -> core/c -> core/a"], findings)

    def test_a_circle_of_modules_through_a_source(self):
        self.assert_finding({"script/values.h": "", "script/values.cpp": '#include "script/values.h"\n'
                             '#include "script/scanner.h"\n',
                             "script/scanner.cpp": '#include "script/scanner.h"\n#include "script/values.h"\n'},
                            "script/scanner:1", "modules in a circle: script/scanner -> script/values -> script/scanner")


if __name__ == "__main__":
    unittest.main()
