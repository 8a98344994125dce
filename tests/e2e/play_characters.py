# SPDX-License-Identifier: GPL-3.0-or-later
"""A newcomer's way to a game: the list of characters, by keys alone, with the practice game as the game."""
import os
import pathlib
import shutil
import subprocess
import unittest

from corvid_json import BUILD, Corvid, prepared_folder

PRACTICE = BUILD / "practice/corvid-practice"


class Characters(unittest.TestCase):
    def setUp(self):
        self.game = subprocess.Popen([str(PRACTICE), "--seed", "5", "--parent-exits"], stdin=subprocess.PIPE,
                                     stdout=subprocess.PIPE, text=True)
        self.addCleanup(self.end_game)
        self.port = self.game.stdout.readline().split()[1]
        self.folder = prepared_folder()
        self.addCleanup(lambda: shutil.rmtree(self.folder, ignore_errors=True))
        self.corvid = Corvid(data=self.folder)
        self.addCleanup(lambda: shutil.rmtree(self.corvid.home, ignore_errors=True))

    def end_game(self):
        self.game.stdin.close()
        self.game.wait()
        self.game.stdout.close()

    def keys(self, *names):
        for name in names:
            self.corvid.send(key=name)

    def dialog(self, code):
        return self.corvid.event("dialog", code=code)

    def list_of_characters(self):
        shown = self.dialog("CHARACTER1")
        return next(c["items"] for c in shown["controls"] if c["kind"] == "list")

    def box(self, title, answer):
        self.corvid.event("dialog", code="MSGBOX", title=title)
        self.keys(answer)

    def write_down(self, *fields):
        """Fills the form from the top: None leaves a control as it is, " " toggles a check."""
        for field in fields:
            if field:
                self.corvid.send(type=field)
            self.keys("Tab")

    def spoken(self):
        return [e["text"] for e in self.corvid.seen if e["event"] == "speech"]

    def never_told(self, secret):
        for event in self.corvid.seen:
            self.assertNotIn(secret, str(event))

    def test_from_an_empty_list_to_a_game_and_back(self):
        corvid = self.corvid
        self.assertEqual(self.list_of_characters(), [])
        self.assertIn("There is no character yet. Control-A adds one.", self.spoken())
        self.keys("Control-A")
        form = self.dialog("CHARACTER2")
        self.assertEqual(form["title"], "Add Character")
        self.write_down("Anna", "my cross", None, "Magpie Cross", "127.0.0.1", self.port, "the first one", "opensesame",
                        " ")
        fields = corvid.get("dialog")["dialog"]["controls"]
        password = next(c for c in fields if c["caption"] == "Password")
        self.assertEqual(password["value"], "*" * len("opensesame"))
        self.keys("Enter")
        corvid.hears("Character reference may not contain spaces.")
        self.keys("Enter")
        self.dialog("CHARACTER2")
        self.keys("End", *["Backspace"] * 6, "Enter")
        self.assertEqual(self.list_of_characters(), ["my - Magpie Cross"])
        kept = self.folder / "Character.mud"
        self.assertEqual(kept.stat().st_mode & 0o777, 0o600)
        self.assertNotIn(b"opensesame", kept.read_bytes())
        self.keys("Enter")
        corvid.hears("What is your name?", channel=1)
        corvid.line("anna")
        corvid.hears("Choose a password:", channel=1)
        self.never_told("opensesame")
        self.assertTrue((self.folder / "Magpie Cross/my.set").is_file())
        self.leave_by_the_menu()
        self.edit_and_delete()
        self.assertEqual(corvid.end(), 0)

    def leave_by_the_menu(self):
        self.keys("Alt", "C", "D")
        self.box("Disconnect Verification ", "Y")
        self.box("Close Character", "Y")
        self.corvid.event("session", session=1, state="unused")
        sessions = self.corvid.get("sessions")["sessions"]
        self.assertEqual([each["reference"] for each in sessions if each["reference"]], [])

    def edit_and_delete(self):
        self.keys("Alt", "C", "C")
        self.assertEqual(self.list_of_characters(), ["my - Magpie Cross"])
        self.keys("Control-E")
        form = self.dialog("CHARACTER2")
        self.assertEqual(form["title"], "Edit Character")
        self.assertEqual([c["value"] for c in form["controls"] if c["kind"] == "check"], [1, 0, 0])
        self.assertEqual([c["items"] for c in form["controls"] if c["kind"] == "list"],
                         [[f"Magpie Cross 127.0.0.1 Port {self.port}"]])
        self.keys("Tab", "End")
        self.corvid.send(type="2")
        self.keys("Enter")
        self.assertEqual(self.list_of_characters(), ["my2 - Magpie Cross"])
        self.keys("Control-O")
        self.corvid.event("session", state="offline")
        self.keys("Alt", "C", "C")
        self.dialog("CHARACTER1")
        self.keys("Delete")
        self.corvid.event("dialog", code="MSGBOX", title="Delete Character")
        self.assertIn("Are you sure you want to delete Anna", self.spoken())
        self.keys("Y")
        self.assertEqual(self.list_of_characters(), [])
        self.keys("Escape")
        self.corvid.event("dialog-closed", code="CHARACTER1")


class Console(unittest.TestCase):
    def test_a_character_is_written_down_on_a_text_console(self):
        folder = prepared_folder()
        self.addCleanup(lambda: shutil.rmtree(folder, ignore_errors=True))
        program = subprocess.Popen([str(BUILD / "src/app/corvid"), "--ui", "console", "--data", str(folder)],
                                   stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
                                   env={**os.environ, "ALSOFT_DRIVERS": "null"})
        self.addCleanup(program.stdout.close)
        heard = []

        def until(piece):
            while not heard or piece not in heard[-1]:
                line = program.stdout.readline()
                self.assertTrue(line, (piece, heard))
                heard.append(line)

        def say(*lines):
            program.stdin.write("".join(line + "\n" for line in lines))
            program.stdin.flush()

        until("There is no character yet. Control-A adds one.")
        until("Characters: no rows.")
        until("1 Connect (Enter), 2 Work Offline  Control-O, 3 Add  Control-A")
        say("/key Control-A")
        until("1. Character Name?")
        say("Hero", "mine", "My Game", "mud.example", "4000", "a note", ".", "secret", "y", "", "", "")
        until("1 mine - My Game (chosen)")
        say("/key Escape", "#QUIT")
        program.stdin.close()
        self.assertEqual(program.wait(20), 0)
        self.assertTrue((folder / "Character.mud").is_file())


if __name__ == "__main__":
    unittest.main()
