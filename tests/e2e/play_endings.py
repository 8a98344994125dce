# SPDX-License-Identifier: GPL-3.0-or-later
"""The system asks the program to end: what a character remembers is kept, behind each face."""
import os
import shutil
import signal
import subprocess
import tempfile
import unittest

from corvid_json import LIMIT, PROGRAM, Server, prepared_folder, receive

KEEP_VARIABLES = 2
SCRIPT = """#GTRIGGER {count the gold} {#VAR gold 12;counted}
#GTRIGGER {ask the player} {asking;#PROMPT x {Well?}}
"""


class PoliteEnd(unittest.TestCase):
    def setUp(self):
        self.server = Server()
        self.addCleanup(self.server.listener.close)
        self.folder = prepared_folder(("Gold", self.server.port, "Eve", "eve", "x", KEEP_VARIABLES), options=SCRIPT)
        self.addCleanup(lambda: shutil.rmtree(self.folder, ignore_errors=True))

    def start(self, ui):
        home = tempfile.mkdtemp(prefix="corvid-home-")
        self.addCleanup(lambda: shutil.rmtree(home, ignore_errors=True))
        surroundings = {"PATH": "/usr/bin:/bin", "HOME": home, "LANG": "C.UTF-8", "ALSOFT_DRIVERS": "null",
                        "QT_QPA_PLATFORM": "offscreen", "XDG_RUNTIME_DIR": home}
        surroundings.update({name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")})
        program = subprocess.Popen([str(PROGRAM), "--ui", ui, "--data", str(self.folder), "--connect", "eve"],
                                   env=surroundings, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                   stderr=subprocess.PIPE)
        self.addCleanup(program.kill)
        return program

    def played(self, ui):
        """The program after a moment of play, in which its character came to a variable."""
        program = self.start(ui)
        peer = self.server.accept()
        self.addCleanup(peer.close)
        peer.sendall(b"count the gold\r\n")
        receive(peer, b"counted\r\n")
        return program, peer

    def end_by(self, program, number):
        program.send_signal(number)
        _, errors = program.communicate(timeout=LIMIT)
        self.assertEqual(0, program.returncode, errors.decode(errors="replace"))
        kept = self.folder / "Gold" / "eve-var.set"
        self.assertEqual(b"#Var gold {12} {12}\r\n", kept.read_bytes())
        kept.unlink()

    def test_each_face_keeps_the_variables(self):
        for ui in ("json", "console", "desktop"):
            for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
                with self.subTest(ui=ui, signal=number.name):
                    self.end_by(self.played(ui)[0], number)

    def test_an_open_question_does_not_keep_the_program(self):
        for ui in ("json", "console", "desktop"):
            with self.subTest(ui):
                program, peer = self.played(ui)
                peer.sendall(b"ask the player\r\n")
                receive(peer, b"asking\r\n")
                self.end_by(program, signal.SIGTERM)


class WrongWords(unittest.TestCase):
    def test_they_are_told_and_nothing_is_started(self):
        for words, code, told in ((("--ui", "json", "--events", "speech,noise"), 1, "There is no event noise."),
                                  (("--ui", "window"), 2, "--ui takes desktop, console or json, not \"window\"."),
                                  (("--loud",), 2, "There is no option \"--loud\".")):
            with self.subTest(words), tempfile.TemporaryDirectory() as home:
                done = subprocess.run([str(PROGRAM), *words], stdin=subprocess.DEVNULL, capture_output=True, text=True,
                                      env={"PATH": "/usr/bin:/bin", "HOME": home}, timeout=LIMIT)
                self.assertEqual((code, f"corvid: {told}"), (done.returncode, done.stderr.split("\n")[0]))
                self.assertEqual("", done.stdout)
                self.assertEqual([], os.listdir(home))


if __name__ == "__main__":
    unittest.main()
