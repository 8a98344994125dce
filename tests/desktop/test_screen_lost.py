# SPDX-License-Identifier: GPL-3.0-or-later
"""The X server dies under the desktop window: what the player's characters remember and the log are whole on disk all
the same."""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "e2e"))
from corvid_json import LIMIT, PROGRAM, Server, prepared_folder, receive  # noqa: E402

KEEP_VARIABLES = 2
SCRIPT = """#GTRIGGER {count the gold} {#VAR gold 12;counted}
#GTRIGGER {ask the player} {asking;#PROMPT x {Well?}}
#GTRIGGER {wait a while} {waiting;#WAIT 3600}
"""


def start_screen():
    """An X server that picks a free number, and that number."""
    reading, writing = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "800x600x24", "-nolisten", "tcp",
                               "-noreset"], pass_fds=[writing], stderr=subprocess.DEVNULL)
    os.close(writing)
    with os.fdopen(reading) as told:
        return server, told.readline().strip()


class ScreenLost(unittest.TestCase):
    def setUp(self):
        self.game = Server()
        self.addCleanup(self.game.listener.close)
        self.folder = prepared_folder(("Gold", self.game.port, "Eve", "eve", "x", KEEP_VARIABLES), options=SCRIPT)
        self.addCleanup(lambda: shutil.rmtree(self.folder, ignore_errors=True))
        self.screen, number = start_screen()
        self.addCleanup(self.screen.wait)
        self.addCleanup(self.screen.kill)
        self.assertTrue(number, "Xvfb has told no number")
        home = tempfile.mkdtemp(prefix="corvid-home-")
        self.addCleanup(lambda: shutil.rmtree(home, ignore_errors=True))
        surroundings = {"PATH": "/usr/bin:/bin", "HOME": home, "XDG_RUNTIME_DIR": home, "DISPLAY": f":{number}",
                        "LANG": "C.UTF-8", "ALSOFT_DRIVERS": "null"}
        surroundings.update({name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")})
        self.program = subprocess.Popen([str(PROGRAM), "--ui", "desktop", "--data", str(self.folder), "--connect",
                                         "eve"], env=surroundings, stdin=subprocess.DEVNULL, stderr=subprocess.PIPE)
        self.addCleanup(self.program.stderr.close)
        self.addCleanup(self.program.kill)
        self.player = self.game.accept()
        self.addCleanup(self.player.close)
        self.player.sendall(b"count the gold\r\n")
        receive(self.player, b"counted\r\n")

    def lose_the_screen(self):
        self.screen.kill()
        _, errors = self.program.communicate(timeout=LIMIT)
        told = errors.decode(errors="replace")
        self.assertEqual(1, self.program.returncode, told)
        self.assertIn("The X11 connection broke", told)
        self.assertNotIn("ssert", told)
        self.assertNotIn("ERROR: ", told)

    def log(self):
        return b"".join(path.read_bytes() for path in (self.folder / "logs").glob("eve *.txt"))

    def expect_all_kept(self):
        mud = self.folder / "Gold"
        self.assertEqual(b"#Var gold {12} {12}\r\n", (mud / "eve-var.set").read_bytes())
        self.assertIn(b"count the gold\r\ncounted\r\n", self.log())

    def test_variables_and_log_are_whole(self):
        self.lose_the_screen()
        self.expect_all_kept()

    def test_also_while_a_question_stands_on_the_screen(self):
        self.player.sendall(b"ask the player\r\n")
        receive(self.player, b"asking\r\n")
        self.lose_the_screen()
        self.expect_all_kept()

    def test_also_while_a_script_waits(self):
        self.player.sendall(b"wait a while\r\n")
        receive(self.player, b"waiting\r\n")
        self.lose_the_screen()
        self.expect_all_kept()

    def test_a_disk_that_takes_nothing_does_not_keep_the_program(self):
        shutil.rmtree(self.folder / "Gold")
        (self.folder / "Gold").write_bytes(b"in the way of the folder")
        self.lose_the_screen()
        self.assertIn(b"counted\r\n", self.log())


if __name__ == "__main__":
    unittest.main()
