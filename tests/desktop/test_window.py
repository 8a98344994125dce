# SPDX-License-Identifier: GPL-3.0-or-later
"""The desktop window as a screen reader and a keyboard meet it."""
import os
import pathlib
import queue
import re
import subprocess
import threading
import time
import unittest

import pyatspi

from accessible import LIMIT, find, find_application, has_focus, keys, text_of, until

HOST = pathlib.Path(os.environ["CORVID_BUILD_DIR"]) / "tests" / "desktop_host"
class Host:
    def __init__(self):
        self.process = subprocess.Popen([str(HOST)], stdout=subprocess.PIPE, text=True)
        self.lines = []
        self.told = queue.Queue()
        self.reader = threading.Thread(target=self.read, daemon=True)
        self.reader.start()
        self.application = until(lambda: find_application(self.process), "the application")
        self.window = until(lambda: find(self.application, pyatspi.ROLE_FRAME, "Corvid host"), "the window")
        until(lambda: self.window.getState().contains(pyatspi.STATE_ACTIVE), "an active window")

    def read(self):
        for line in self.process.stdout:
            self.told.put(line.rstrip("\n"))

    def take(self, last):
        """Everything told up to the line `last`, that included."""
        got = []
        end = time.monotonic() + LIMIT
        while not got or got[-1] != last:
            try:
                got.append(self.told.get(timeout=max(0.01, end - time.monotonic())))
            except queue.Empty:
                raise AssertionError(f"never told {last!r}, only {got}") from None
        return got

    def end(self):
        if self.process.poll() is None:
            self.process.terminate()
        self.process.wait()
        self.reader.join()
        self.process.stdout.close()


class Window(unittest.TestCase):
    def setUp(self):
        self.host = Host()
        self.addCleanup(self.host.end)
        self.entry = until(lambda: find(self.host.window, pyatspi.ROLE_TEXT, "Entry"), "the entry")

    def output(self):
        return find(self.host.window, pyatspi.ROLE_TEXT, "Output")

    def shown(self):
        for node in pyatspi.findAllDescendants(
                self.host.window, lambda each: each.getRole() == pyatspi.ROLE_TEXT and each.name == "Output"):
            if node.getState().contains(pyatspi.STATE_SHOWING):
                return node
        return None

    def dialog(self, title):
        dialog = until(lambda: find(self.host.application, pyatspi.ROLE_DIALOG, title), "the dialog " + title)
        until(lambda: dialog.getState().contains(pyatspi.STATE_ACTIVE), "the keys in the dialog " + title)
        return dialog

    def test_the_entry_begins_with_the_focus_and_shows_what_the_program_types(self):
        until(lambda: has_focus(self.entry), "the focus in the entry")
        keys("h", "i", "exclam")
        got = self.host.take("typed !")
        self.assertEqual(["down 72 0", "typed h", "up 72 0", "down 73 0", "typed i", "up 73 0"], got[:6])
        self.assertIn("down 49 1", got)
        until(lambda: text_of(self.entry) == "hi!", "the text in the entry")
        keys("Left")
        until(lambda: self.entry.queryText().caretOffset == 2, "the caret before the last character")
        keys("BackSpace")
        until(lambda: text_of(self.entry) == "h!", "the deletion")
        keys("Return")
        self.host.take("typed enter")
        until(lambda: text_of(self.shown()) == "h!\n", "the line in the output")
        self.assertEqual("", text_of(self.entry))

    def test_lone_modifiers_and_combinations_keep_their_halves(self):
        keys("Alt_L")
        self.assertEqual(["down 18 4", "up 18 0"], self.host.take("up 18 0"))
        keys("Control_L")
        self.assertEqual(["down 17 2", "up 17 0"], self.host.take("up 17 0"))
        keys("ctrl+shift+a")
        got = self.host.take("up 17 0")
        self.assertIn("down 65 3", got)
        self.assertNotIn("typed a", got)
        keys("alt+x")
        got = self.host.take("up 18 0")
        self.assertIn("down 88 4", got)
        self.assertFalse([line for line in got if line.startswith("typed")])
        keys("shift+Tab")
        self.assertIn("down 9 1", self.host.take("focus output"))

    def test_the_output_is_read_only_with_a_caret_and_takes_the_keys(self):
        keys("Tab")
        self.host.take("focus output")
        output = until(self.shown, "the output")
        until(lambda: has_focus(output), "the focus in the output")
        self.assertFalse(output.getState().contains(pyatspi.STATE_EDITABLE))
        keys("x")
        self.assertIn("typed x", self.host.take("typed x"))
        self.assertEqual("", text_of(output))

    def test_colours_and_every_byte_reach_the_output(self):
        keys("F8")
        output = until(self.shown, "the output")
        until(lambda: text_of(output) == "red bold\ncafé café\n", "the text")
        attributes = output.queryText().getAttributes(1)[0]
        red, green, blue = re.search(r"fg-color:(\d+),(\d+),(\d+)", attributes).groups()
        self.assertGreater(int(red), 150)
        self.assertEqual(("0", "0"), (green, blue))

    def test_the_second_output_takes_the_place_of_the_first(self):
        keys("F8", "F7", "F8", "F8")
        until(lambda: text_of(self.shown()).count("red") == 2, "the second output")
        keys("F7")
        until(lambda: text_of(self.shown()).count("red") == 1, "the first output")

    def test_the_mouse_selects_for_the_program(self):
        keys("a", "b", "c")
        self.host.take("typed c")
        until(lambda: text_of(self.entry) == "abc", "the text")
        # An accessibility client moves the caret as the mouse does.
        self.entry.queryText().setCaretOffset(1)
        until(lambda: self.entry.queryText().caretOffset == 1, "the caret")
        keys("x")
        until(lambda: text_of(self.entry) == "axbc", "the character at the caret")

    def test_keys_keep_their_order_while_one_is_in_work(self):
        keys("F9", "a", "b")
        got = [line for line in self.host.take("typed b") if line.startswith(("typed", "down"))]
        self.assertEqual(["down 120 0", "down 65 0", "typed a", "down 66 0", "typed b"], got)

    def place(self, node):
        return node.queryComponent().getExtents(pyatspi.WINDOW_COORDS)

    def test_a_menu_stands_at_the_left_as_wide_as_its_longest_item_and_the_window_at_most(self):
        until(lambda: has_focus(self.entry), "the focus in the entry")
        entry = self.place(self.entry)
        keys("F2")
        menu = until(lambda: find(self.host.window, pyatspi.ROLE_LIST, "Short list"), "the short list")
        until(lambda: self.place(menu).width < entry.width / 2, "a list no wider than its items")
        self.assertEqual(self.place(menu).x, entry.x)
        # A fixed font of 13 points or more, 10 characters, and something for the frame.
        self.assertGreater(self.place(menu).width, 10 * 8)
        self.assertLess(self.place(menu[1]).width, self.place(menu).width)
        keys("F4", "F3")
        menu = until(lambda: find(self.host.window, pyatspi.ROLE_LIST, "Long list"), "the long list")
        until(lambda: self.place(menu).width == entry.width, "a list as wide as the window")
        self.assertEqual(self.place(menu).x, entry.x)
        self.assertEqual(self.place(self.host.window).width - 2 * entry.x, entry.width, "the window is as wide as before")

    def test_a_dialog_is_a_window_of_named_controls(self):
        keys("F5")
        dialog = self.dialog("All kinds")
        for role, name in ((pyatspi.ROLE_LABEL, "Name?"), (pyatspi.ROLE_TEXT, "Name?"), (pyatspi.ROLE_LIST, "Fruit"),
                           (pyatspi.ROLE_LIST, "Marks"), (pyatspi.ROLE_CHECK_BOX, "Echo"),
                           (pyatspi.ROLE_RADIO_BUTTON, "Reader"), (pyatspi.ROLE_RADIO_BUTTON, "Voices"),
                           (pyatspi.ROLE_SLIDER, "Rate"), (pyatspi.ROLE_TEXT, "Notes"),
                           (pyatspi.ROLE_PUSH_BUTTON, "OK"), (pyatspi.ROLE_PUSH_BUTTON, "Cancel")):
            self.assertIsNotNone(find(dialog, role, name), (role, name))
        self.host.take("dialog got Name? text=old row=-1 value=0")
        keys("Tab")
        self.host.take("dialog got Fruit text= row=1 value=0")
        keys("Down")
        self.host.take("dialog click Fruit text= row=2 value=0")
        keys("a")
        self.host.take("dialog click Fruit text= row=0 value=0")
        keys("Tab")
        self.host.take("dialog got Marks text= row=-1-+ value=0")
        keys("space", "Tab")
        got = self.host.take("dialog got Echo text= row=-1 value=0")
        self.assertTrue([line for line in got if "click Marks text= row=0++" in line], got)
        keys("space", "Tab")
        got = self.host.take("dialog got Reader text= row=-1 value=1")
        self.assertIn("dialog click Echo text= row=-1 value=1", got)
        keys("Down")
        self.host.take("dialog click Voices text= row=-1 value=1")
        keys("Tab")
        self.host.take("dialog got Rate text= row=-1 value=0")
        keys("Right")
        self.host.take("dialog change Rate text= row=-1 value=1")
        keys("Tab")
        until(lambda: has_focus(find(dialog, pyatspi.ROLE_TEXT, "Notes")), "the focus in the notes")
        keys("Escape")
        self.host.take("dialog end Cancel")
        until(lambda: has_focus(self.entry), "the focus back in the entry")

    def test_typing_and_enter_in_a_dialog(self):
        keys("F5")
        self.dialog("All kinds")
        self.host.take("dialog got Name? text=old row=-1 value=0")
        keys("ctrl+a", "n", "e", "w", "Return")
        got = self.host.take("dialog end OK")
        self.assertIn("dialog change Name? text=new row=-1 value=0", got)
        self.assertFalse([line for line in got if line.startswith("typed")])

    def test_a_message_is_answered_by_a_letter(self):
        keys("F6")
        dialog = self.dialog("Question")
        self.host.take("dialog got Yes text=Yes row=-1 value=0")
        yes = find(dialog, pyatspi.ROLE_PUSH_BUTTON, "Yes")
        until(lambda: has_focus(yes), "the focus on Yes")
        keys("n")
        self.host.take("dialog end No")
        until(lambda: has_focus(self.entry), "the focus back in the entry")
        keys("q")
        got = self.host.take("typed q")
        self.assertNotIn("typed n", got)

    def test_the_program_hears_when_the_player_goes_elsewhere_and_comes_back(self):
        other = Host()
        self.addCleanup(other.end)
        self.host.take("away")
        other.end()
        self.assertEqual(["back"], self.host.take("back"))

    def test_a_dialog_of_its_own_is_not_elsewhere(self):
        keys("F6")
        self.dialog("Question")
        time.sleep(0.5)  # nothing is to come
        keys("n")
        self.assertNotIn("away", self.host.take("dialog end No"))

    def test_closing_asks_the_program(self):
        keys("F6")
        self.dialog("Question")
        self.host.take("dialog got Yes text=Yes row=-1 value=0")
        keys("alt+F4")
        self.host.take("dialog end closed")
        until(lambda: has_focus(self.entry), "the focus back in the entry")
        keys("alt+F4")
        self.host.take("close")
        self.assertEqual(0, self.host.process.wait(timeout=LIMIT))


if __name__ == "__main__":
    unittest.main()
