# SPDX-License-Identifier: GPL-3.0-or-later
"""What the language reference shows is what the program does: results of functions and expressions, and examples."""
import pathlib
import re
import shutil
import unittest

from corvid_json import Corvid, Server, prepared_folder, receive

TREE = pathlib.Path(__file__).resolve().parents[2]
TEXT = (TREE / "docs/language.md").read_text()
CODE = r"`([^`]+)`"
END = "that is all"


def examples():
    """The lines of all blocks that show commands, one statement a line or several."""
    return [block for block in re.findall(r"^```\n(.*?)^```", TEXT, re.M | re.S)]


class Language(unittest.TestCase):
    def setUp(self):
        server = Server()
        self.folder = prepared_folder(("Echo", server.port, "Eve", "eve", "x", 0))
        self.addCleanup(lambda: shutil.rmtree(self.folder, ignore_errors=True))
        self.corvid = Corvid("--connect", "eve", data=self.folder)
        self.addCleanup(lambda: shutil.rmtree(self.corvid.home, ignore_errors=True))
        self.peer = server.accept()
        self.addCleanup(self.peer.close)
        self.addCleanup(server.listener.close)
        self.corvid.event("session", session=1, state="connected")
        self.corvid.event("ready")

    def value_of(self, text):
        """What the text becomes, as a script would have it. A box means an error, whose text is given instead."""
        self.corvid.line(f"#VARIABLE result {{}};#VARIABLE result {{{text}}};{END}")
        seen = self.corvid.until(lambda e: e["event"] == "dialog" or (e["event"] == "send" and e["text"] == END),
                                 f"the value of {text}")
        if seen["event"] == "dialog":
            words = next(control["value"] for control in seen["controls"] if control["kind"] == "label")
            self.corvid.send(key="Enter")
            self.corvid.event("dialog-closed")
            return words
        self.corvid.line(f"#VARIABLE before [;say @{{before}}@{{result}}];{END}")
        said = self.corvid.until(lambda e: e["event"] == "send", "what is sent")["text"]
        self.corvid.event("send", text=END)
        return said[len("say ["):-1]

    def test_functions_give_what_the_reference_tells(self):
        pairs = re.findall(rf"`(%[A-Z]+\([^`]*)` gives (?:{CODE}|nothing)", TEXT)
        self.assertGreater(len(pairs), 45)
        for call, result in pairs:
            with self.subTest(call):
                self.assertEqual(result, self.value_of(call))

    def test_functions_fail_as_the_reference_tells(self):
        failures = re.findall(rf"`(%[A-Z]+\([^`]*)` fails with {CODE}", TEXT)
        self.assertGreater(len(failures), 2)
        for call, words in failures:
            with self.subTest(call):
                self.assertIn(words, self.value_of(call))

    def test_expressions_give_what_the_reference_tells(self):
        chapter = TEXT[TEXT.index("\n## Expressions"):TEXT.index("\n## Patterns")]
        pairs = re.findall(rf"{CODE}(?: is|, which is) `(-?\d+)`", chapter)
        self.assertGreater(len(pairs), 12)
        for expression, result in pairs:
            with self.subTest(expression):
                self.assertEqual(result, self.value_of(f"%EVAL(({expression}))"))
        failures = re.findall(rf"{CODE} fails", chapter)
        self.assertGreater(len(failures), 2)
        for expression in failures:
            with self.subTest(expression):
                self.assertRegex(self.value_of(f"%EVAL(({expression}))"), "xpression")

    def test_every_example_is_a_command_that_the_program_takes(self):
        blocks = examples()
        self.assertGreater(len(blocks), 70)
        # in a file every statement is a command
        text = "".join(re.sub(r"^([a-z][^\n]*)$", r"#EXECUTE {\1}", block, flags=re.M)
                       if "\n  " not in block else block for block in blocks)
        (self.folder / "examples.set").write_bytes(text.replace("\n", "\r\n").encode())
        self.corvid.line("#LOAD examples.set NoExecute")
        self.corvid.line(END)
        seen = self.corvid.until(lambda e: e["event"] == "dialog" or (e["event"] == "send" and e["text"] == END), "the end")
        self.assertEqual("send", seen["event"], seen)
        log = self.corvid.get("buffer", number=2)["text"]
        self.assertEqual("", log.strip())


if __name__ == "__main__":
    unittest.main()
