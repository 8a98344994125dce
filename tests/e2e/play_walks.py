# SPDX-License-Identifier: GPL-3.0-or-later
"""Walks in the practice game, with the script that players get."""
import os
import pathlib
import shutil
import unittest

from corvid_json import Corvid

SCRIPT = pathlib.Path(os.environ.get("CORVID_SOURCE_DIR", ".")).resolve() / "share/examples/walks.set"


class Walks(unittest.TestCase):
    def setUp(self):
        self.corvid = Corvid("--practice")
        self.addCleanup(lambda: shutil.rmtree(self.corvid.home, ignore_errors=True))
        for said, typed in [("What is your name?", "anna"), ("Choose a password:", "secret")]:
            self.corvid.hears(said)
            self.corvid.line(typed)
        self.in_room("The Village Square")
        self.corvid.line("chatter off")
        self.marks = 0

    def load(self):
        self.corvid.line(f"#LOAD {{{SCRIPT}}}")
        self.settle()
        log = self.corvid.get("buffer", number=2)["text"]
        self.assertEqual(log, "", "the script loads without a word")

    def in_room(self, name):
        """Waits for the room and for its exits, which the game tells last."""
        self.corvid.hears(name, channel=1)
        self.corvid.hears("Exits: ", channel=1)

    def settle(self):
        """Waits until all that was typed is done: a word that only comes back from the game."""
        self.marks += 1
        self.corvid.line(f"say mark {self.marks}")
        self.corvid.hears(f"mark {self.marks}", channel=1)

    def walk(self, *ways):
        for way, room in ways:
            self.corvid.line(way)
            self.in_room(room)

    def sent_since(self, mark):
        return [e["text"] for e in self.corvid.seen[mark:] if e["event"] == "send" and not e["text"].startswith("say ")]

    def sends(self, line, steps):
        """Types the line and settles; what it sent must be the steps."""
        self.settle()
        mark = len(self.corvid.seen)
        self.corvid.line(line)
        self.settle()
        self.assertEqual(self.sent_since(mark), steps)

    def menu(self, name):
        return self.corvid.until(lambda e: e["event"] == "menu" and e["name"] == name, f"the menu {name}")

    def record_to_the_garden(self):
        self.corvid.line("rec")
        self.corvid.hears("Recording", channel=1)
        self.walk(("n", "The Foot of the Clock Tower"))
        self.corvid.line("look")
        self.in_room("The Foot of the Clock Tower")
        self.corvid.line("n")
        self.corvid.hears("There is no way north")
        self.walk(("u", "The Top of the Clock Tower"), ("d", "The Foot of the Clock Tower"), ("e", "The Herb Garden"))

    def test_a_newcomer_walks_back_without_any_script(self):
        self.corvid.line("#RECORD")
        self.walk(("n", "The Foot of the Clock Tower"), ("up", "The Top of the Clock Tower"))
        self.corvid.line("#ENDRECORD bell")
        self.sends("..bell", ["DOWN", "S"])

    def test_a_way_is_recorded_and_walked_there_and_back(self):
        self.load()
        self.record_to_the_garden()
        self.corvid.line("keepway garden")
        self.corvid.hears("Recorded commands saved in New Lines window.", channel=5)
        self.assertIn("#alias {.garden} {N;E}\r\n", self.corvid.get("buffer", number=3)["text"])
        self.sends("..garden", ["W", "S"])
        self.sends(".garden", ["N", "E"])
        self.corvid.line("look")
        self.in_room("The Herb Garden")
        self.assertEqual(self.corvid.end(), 0)

    def test_keep_keeps_all_that_was_sent_but_what_was_taken_back(self):
        self.load()
        self.record_to_the_garden()
        self.corvid.line("oops")
        self.corvid.hears("erasing e", channel=1)
        self.corvid.line("keep tower")
        self.corvid.hears("Recorded commands saved in New Lines window.", channel=5)
        self.assertIn("#alias {.tower} {N;look;U;D}\r\n", self.corvid.get("buffer", number=3)["text"])
        # A command typed in full is kept as well as what it leads to.
        self.corvid.line("#RECORD")
        self.walk(("w", "The Foot of the Clock Tower"))
        self.corvid.line("#ENDRECORD home")
        self.corvid.hears("Recorded commands saved in New Lines window.", channel=5)
        self.settle()
        kept = self.corvid.get("buffer", number=3)["text"]
        self.assertTrue(kept.endswith("#alias {.home} {W}\r\n#ENDRECORD home\r\n"), kept)
        self.assertEqual(self.corvid.end(), 0)

    def test_a_slow_walk_takes_a_step_when_the_room_was_told(self):
        self.load()
        self.corvid.line("slow on")
        self.settle()
        mark = len(self.corvid.seen)
        self.corvid.line(".bell")
        self.in_room("The Foot of the Clock Tower")
        self.corvid.hears("The Top of the Clock Tower", channel=1)
        # Said where the bell is, by the step behind "u": the trigger on the exits runs before they are spoken.
        self.corvid.hears("Here is the bell.", channel=6)
        self.corvid.hears("Exits: ", channel=1)
        for room in ["The Foot of the Clock Tower", "The Village Square"]:
            self.in_room(room)
        self.settle()
        self.assertEqual(self.sent_since(mark), ["n", "u", "d", "s"])
        self.corvid.line(".tour")
        for room in ["The Foot of the Clock Tower", "The Top of the Clock Tower", "The Foot of the Clock Tower",
                     "The Herb Garden", "The Village Square"]:
            self.in_room(room)
        self.assertEqual(self.corvid.end(), 0)

    def test_a_slow_walk_rests_and_goes_on(self):
        self.load()
        self.corvid.line("slow on")
        self.corvid.line("#ALIAS {.there} {n;hold;e;sw}")
        mark = len(self.corvid.seen)
        self.corvid.line(".there")
        self.in_room("The Foot of the Clock Tower")
        self.settle()
        self.assertEqual(self.sent_since(mark), ["n"])
        self.corvid.line("goon")
        self.in_room("The Herb Garden")
        self.in_room("The Village Square")
        self.assertEqual(self.corvid.end(), 0)

    def test_a_slow_walk_that_meets_a_wall_ends_and_says_so(self):
        self.load()
        self.corvid.line("slow on")
        mark = len(self.corvid.seen)
        self.corvid.line("#ALIAS {.wrong} {n;n;e;e}")
        self.corvid.line(".wrong")
        self.corvid.hears("The walk has met a wall.", channel=6)
        self.settle()
        self.assertEqual(self.sent_since(mark), ["n", "n"])
        self.assertEqual(self.corvid.end(), 0)

    def test_the_menu_records_and_finishes(self):
        self.load()
        self.corvid.send(key="Alt")
        self.assertEqual(self.corvid.event("menu")["items"][3], "Tools and Preferences")
        self.corvid.send(type="tr")
        self.menu("TOOLS")
        self.menu("AUTOWALK")
        self.corvid.send(type="b")
        self.corvid.event("menu-closed")
        self.corvid.hears("Recording.", channel=1)
        self.walk(("n", "The Foot of the Clock Tower"), ("e", "The Herb Garden"))
        self.corvid.line("#AUTOMENU {main|tools|record|finish}")
        dialog = self.corvid.event("dialog", code="AUTOWALK")
        self.assertEqual(dialog["title"], "Finish Recording")
        files = next(c for c in dialog["controls"] if c["kind"] == "list")["items"]
        self.assertEqual(files[0], "New Lines Window")
        self.assertIn(str(SCRIPT), files)
        self.corvid.send(type="garden")
        self.corvid.send(key="Enter")
        self.corvid.hears("Recorded commands saved in New Lines window.", channel=5)
        self.sends("..garden", ["W", "S"])
        self.assertEqual(self.corvid.end(), 0)

    def test_tab_words_are_listed_and_chosen(self):
        self.load()
        self.corvid.line("#TAB {wren|quill}")
        self.corvid.line("#TAB")
        self.assertEqual(self.corvid.event("menu")["items"], ["wren", "quill"])
        self.corvid.send(key="Down")
        self.assertEqual(self.corvid.get("menu")["index"], 1)
        self.corvid.send(key="Enter")
        self.corvid.event("menu-closed")
        entry = self.corvid.get("entry")
        self.assertTrue(entry["text"].endswith("quill"), entry)
        self.assertEqual(entry["length"], len("quill"))
        self.assertEqual(self.corvid.end(), 0)


if __name__ == "__main__":
    unittest.main()
