# SPDX-License-Identifier: GPL-3.0-or-later
"""A newcomer's first minutes: the practice game, by ear."""
import pathlib
import shutil
import unittest

from corvid_json import Corvid


class Practice(unittest.TestCase):
    def setUp(self):
        self.corvid = Corvid("--practice")
        self.addCleanup(lambda: shutil.rmtree(self.corvid.home, ignore_errors=True))

    def log_in(self):
        self.corvid.hears("What is your name?", channel=1)
        self.corvid.line("anna")
        self.corvid.event("send", session=1, text="anna")
        self.corvid.hears("Choose a password:")
        self.corvid.line("secret")
        self.corvid.hears("You are in the game, Anna.")
        self.corvid.hears("The Village Square")
        self.corvid.hears("hp 15gold>")

    def test_a_newcomer_is_asked_nothing_and_plays(self):
        self.log_in()
        self.assertEqual([e for e in self.corvid.seen if e["event"] == "dialog"], [])
        self.corvid.line("n")
        self.corvid.hears("The Foot of the Clock Tower")
        self.corvid.line("s;w")
        self.corvid.event("send", session=1, text="s")
        self.corvid.event("send", session=1, text="w")
        self.corvid.hears("The Sleeping Crow")
        output = self.corvid.get("output")["text"]
        self.assertIn("The Foot of the Clock Tower\r\n", output)
        self.assertNotIn("\x1b", output)
        self.assertNotIn("!!SOUND", output)
        self.assertEqual(self.corvid.get("title")["text"], "Corvid [practice")
        self.corvid.line("quit")
        self.corvid.hears("Connection closed", channel=5)
        self.assertEqual(self.corvid.get("title")["text"], "Corvid practice [Not connected]")
        self.assertEqual(self.corvid.end(), 0)

    def test_the_log_holds_what_was_shown_and_sent_and_nobody_else_reads_it(self):
        self.log_in()
        self.corvid.line("look")
        self.corvid.hears("The Village Square")
        self.corvid.hears("hp 15gold>")
        self.assertEqual(self.corvid.end(), 0)
        logs = list((self.corvid.home / "state/corvid/practice/logs").iterdir())
        self.assertEqual(len(logs), 1)
        self.assertEqual(logs[0].stat().st_mode & 0o777, 0o600)
        text = logs[0].read_bytes()
        self.assertIn(b"\r\nlook\r\nThe Village Square\r\n", text)

    def test_mistakes_are_told_and_the_game_goes_on(self):
        self.log_in()
        self.corvid.line("#nosuch")
        self.corvid.hears("Bad command #nosuch in command: #nosuch")
        self.assertEqual(self.corvid.event("ready", modal="MSGBOX")["modal"], "MSGBOX")
        self.corvid.send(key="Enter")
        self.corvid.event("dialog-closed", code="MSGBOX")
        self.corvid.line("#CONFIGURE MarginBell x")
        self.corvid.hears("MarginBell must be numeric")
        self.corvid.send(key="Escape")
        self.corvid.event("dialog-closed", code="MSGBOX")
        self.corvid.line("look")
        self.corvid.hears("The Village Square")
        log = self.corvid.get("buffer", number=2)["text"]
        self.assertIn("\r\nBad command #nosuch in command: #nosuch", log)
        self.assertEqual(self.corvid.end(), 0)

    def test_control_silences_every_channel(self):
        self.log_in()
        self.corvid.send(key="Control")
        for channel in range(1, 7):
            self.corvid.event("silence", channel=channel)
        self.assertEqual(self.corvid.end(), 0)

    def test_the_shipped_keys_and_aliases_work(self):
        self.log_in()
        self.corvid.send(key="NumPad8")
        self.corvid.event("send", session=1, text="north")
        self.corvid.send(key="F6")
        self.corvid.event("send", session=1, text="score")
        self.corvid.line("ga old chest")
        self.corvid.event("send", session=1, text="get all from old chest ")
        self.assertEqual(self.corvid.end(), 0)

    def test_an_old_line_is_sent_again(self):
        self.log_in()
        self.corvid.line("score")
        self.corvid.event("send", session=1, text="score")
        for key in ("Up", "Enter"):
            self.corvid.send(key=key)
        self.corvid.event("send", session=1, text="score")
        self.assertEqual(self.corvid.end(), 0)

    def test_the_game_ends_with_the_program(self):
        self.corvid.hears("What is your name?")
        children = pathlib.Path(f"/proc/{self.corvid.process.pid}/task/{self.corvid.process.pid}/children")
        game = int(children.read_text().split()[0])
        self.assertEqual(pathlib.Path(f"/proc/{game}/comm").read_text().strip(), "corvid-practice")
        self.assertEqual(self.corvid.end(), 0)
        self.assertFalse(pathlib.Path(f"/proc/{game}").exists())


if __name__ == "__main__":
    unittest.main()
