# SPDX-License-Identifier: GPL-3.0-or-later
"""The practice game, played through the desktop window with keys alone and read as a screen reader reads."""
import os
import pathlib
import subprocess
import tempfile
import unittest

import pyatspi

from accessible import LIMIT, find, find_application, has_focus, keys, shown_output, text_of, type_text, until

PROGRAM = pathlib.Path(os.environ["CORVID_BUILD_DIR"]) / "src" / "app" / "corvid"
ENVIRONMENT = {**os.environ, "ALSOFT_DRIVERS": "null"}


class Play(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.errors = pathlib.Path(folder.name) / "errors"
        with open(self.errors, "wb") as errors:
            self.process = subprocess.Popen(
                [str(PROGRAM), "--practice", "--data", folder.name + "/data"], env=ENVIRONMENT, stderr=errors)
        self.addCleanup(self.end)
        self.application = until(lambda: find_application(self.process), "the application")
        self.window = until(self.active_window, "an active window")
        self.entry = until(lambda: find(self.window, pyatspi.ROLE_TEXT, "Entry"), "the entry")
        self.game_says("What is your name?")

    def end(self):
        if self.process.poll() is None:
            self.process.terminate()
        self.process.wait()

    def active_window(self):
        window = next(each for each in self.application if each.getRole() == pyatspi.ROLE_FRAME)
        return window if window.getState().contains(pyatspi.STATE_ACTIVE) else None

    def game_says(self, text):
        until(lambda: text in text_of(shown_output(self.window)), f"{text!r} from the game")

    def send(self, line):
        type_text(line)
        keys("Return")

    def log_in(self):
        self.send("Tester")
        self.game_says("Choose a password:")
        self.send("secret")
        self.game_says("The Village Square")

    def dialog(self):
        dialog = until(lambda: next(each for each in self.application if each.getRole() == pyatspi.ROLE_DIALOG),
                       "the dialog")
        until(lambda: dialog.getState().contains(pyatspi.STATE_ACTIVE), "the keys in the dialog")
        return dialog

    def test_a_room_is_read_and_the_next_one_walked_to(self):
        self.assertIn("practice", self.window.name)
        self.assertTrue(has_focus(self.entry))
        self.log_in()
        self.game_says("Exits: north, south")
        self.send("east")
        self.game_says("Pell")
        until(lambda: text_of(self.entry) == "Tester\nsecret\neast\n", "the lines that were sent, in the entry")

    def test_typing_faster_than_the_program_answers_keeps_its_order(self):
        sentence = "say the quick brown fox jumps over the lazy dog 0123456789"
        type_text(sentence)
        until(lambda: len(text_of(self.entry)) >= len(sentence), "all that was typed")
        self.assertEqual(sentence, text_of(self.entry))

    def test_the_output_is_read_with_the_arrows_and_left_by_typing(self):
        self.log_in()
        keys("Tab")
        output = until(lambda: shown_output(self.window), "the output")
        until(lambda: has_focus(output), "the focus in the output")
        before = output.queryText().caretOffset
        keys("Up", "Up")
        until(lambda: output.queryText().caretOffset < before, "the caret in an earlier line")
        keys("l")
        until(lambda: has_focus(self.entry), "the focus in the entry")
        until(lambda: text_of(self.entry).endswith("\nl"), "the letter in the entry")

    def test_accents_reach_the_entry(self):
        # A French keyboard has the letter on a key; one that is lent to it for a moment may be gone when it is read.
        subprocess.run(["setxkbmap", "fr"], check=True)
        self.addCleanup(subprocess.run, ["setxkbmap", "us"], check=True)
        type_text("q1/\u00e9\u00e0")
        until(lambda: text_of(self.entry) == "q1/\u00e9\u00e0", "letters and signs of a French keyboard")

    def test_an_earlier_line_is_sent_again(self):
        self.log_in()
        self.send("score")
        self.send("look")
        until(lambda: text_of(self.entry).endswith("score\nlook\n"), "both lines")
        keys("Up", "Up", "Return")
        until(lambda: text_of(self.entry).endswith("look\nscore\n"), "the line once more")

    def list_menu(self, name):
        return until(lambda: find(self.window, pyatspi.ROLE_LIST, name), f"the list {name!r}")

    def row_with_focus(self, menu):
        return next((each.name for each in menu if has_focus(each)), None)

    def named_dialog(self, name):
        dialog = until(lambda: find(self.application, pyatspi.ROLE_DIALOG, name), f"the dialog {name!r}")
        until(lambda: dialog.getState().contains(pyatspi.STATE_ACTIVE), f"the keys in the dialog {name!r}")
        return dialog

    def test_the_list_of_characters_and_its_form_are_named_and_in_order(self):
        self.log_in()
        keys("Alt_L")
        self.list_menu("Main menu")
        type_text("cc")
        characters = self.named_dialog("Mud Character List")
        rows = until(lambda: find(characters, pyatspi.ROLE_LIST, "Characters"), "the list")
        self.assertEqual([row.name for row in rows], ["practice - Magpie Cross"])
        self.assertEqual([each.name for each in pyatspi.findAllDescendants(
            characters, lambda each: each.getRole() == pyatspi.ROLE_PUSH_BUTTON)],
            ["Connect", "Work Offline  Control-O", "Add  Control-A", "Edit/View  Control-E", "Delete  Del",
             "Exit  Esc"])
        keys("ctrl+e")
        form = self.named_dialog("Edit Character")
        for name in ("Character Name", "Character Ref.", "Magpie Cross 127.0.0.1 Port", "Mud Name", "Host Name",
                     "Port Number", "Notes and Description", "Password", "Auto Login", "Keep Variable Values",
                     "Simple Script Control", "OK", "Cancel"):
            until(lambda: pyatspi.findDescendant(
                form, lambda each: has_focus(each) and each.name.startswith(name)), f"the focus in {name!r}")
            if name == "Password":
                type_text("opensesame")
                password = find(form, pyatspi.ROLE_PASSWORD_TEXT, "Password")
                until(lambda: password.queryText().characterCount == len("opensesame"), "ten signs in the password")
                self.assertNotIn("sesame", text_of(password))
            if name != "Cancel":
                keys("Tab")
        keys("Escape")
        self.named_dialog("Mud Character List")
        keys("Escape")
        until(lambda: has_focus(self.entry), "the focus in the entry")

    def test_a_menu_is_a_list_that_is_read_and_left_by_keys(self):
        self.log_in()
        keys("Alt_L")
        menu = self.list_menu("Main menu")
        self.assertEqual([each.name for each in menu],
                         ["File", "Edit", "Connect", "Tools and Preferences", "Windows", "Help"])
        until(lambda: self.row_with_focus(menu) == "File", "the focus on the first item")
        keys("Down")
        until(lambda: self.row_with_focus(menu) == "Edit", "the focus on the second item")
        type_text("tr")
        walks = self.list_menu("Speed walk")
        until(lambda: self.row_with_focus(walks) == "Begin Recording", "the menu of walks")
        keys("Left")
        self.list_menu("Tools and Preferences")
        keys("Escape")
        until(lambda: has_focus(self.entry), "the focus back in the entry")
        self.send("look")
        until(lambda: text_of(self.entry).endswith("secret\nlook\n"), "nothing of the menu's keys in the entry")

    def test_closing_asks_while_connected(self):
        self.log_in()
        keys("alt+F4")
        dialog = self.dialog()
        self.assertIsNotNone(find(dialog, pyatspi.ROLE_LABEL, "Do you wish to terminate this connection?"))
        yes = find(dialog, pyatspi.ROLE_PUSH_BUTTON, "Yes")
        no = find(dialog, pyatspi.ROLE_PUSH_BUTTON, "No")
        until(lambda: has_focus(yes), "the focus on Yes")
        keys("Escape")  # answers neither
        keys("Tab")
        until(lambda: has_focus(no), "the focus on No")
        keys("Return")
        until(lambda: has_focus(self.entry), "the focus back in the entry")
        self.assertIsNone(self.process.poll())
        keys("alt+F4")
        until(lambda: has_focus(find(self.dialog(), pyatspi.ROLE_PUSH_BUTTON, "Yes")), "the question once more")
        keys("y")
        self.assertEqual(0, self.process.wait(timeout=LIMIT))
        self.assertEqual(b"", self.errors.read_bytes())


class WithoutDisplay(unittest.TestCase):
    def run_without(self, *arguments):
        environment = {name: value for name, value in ENVIRONMENT.items()
                       if name not in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")}
        with tempfile.TemporaryDirectory() as folder:
            return subprocess.run([str(PROGRAM), *arguments, "--practice", "--data", folder], env=environment,
                                  stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=60)

    def test_the_window_is_refused_in_words(self):
        done = self.run_without("--ui", "desktop")
        self.assertEqual(1, done.returncode)
        self.assertEqual("corvid: There is no display for a window. Try --ui console.\n", done.stderr)

    def test_with_no_face_asked_for_the_console_takes_over_and_says_so(self):
        done = self.run_without()
        self.assertIn("There is no display for a window, so Corvid runs on this console.", done.stderr)
        self.assertEqual(0, done.returncode)


if __name__ == "__main__":
    unittest.main()
