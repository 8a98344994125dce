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

    def test_what_is_told_of_lines_holds(self):
        self.corvid.line("#ALIAS hi {say hello, %0};#ALIAS two {say %1 and %2};#VARIABLE foe rat")
        self.corvid.line("#ALIAS again {%EXPAND(kill @foe)};#ALIAS later {kill @foe};#VARIABLE lastchat news")
        self.corvid.line("#ALIAS say2 {say @{last%1}};#VARIABLE foe boar")
        for line, sent in (
                ("get lamp;light lamp", ["get lamp", "light lamp"]),
                ("say me~;you", ["say me;you"]),
                ("say a~@b and ~~", ["say a@b and ~"]),
                (">say a;b @foe", ["say a;b @foe"]),
                ("hi raven", ["say hello, raven "]),
                ("two {one thing} other", ["say one thing and other"]),
                ("again", ["kill rat"]),
                ("later", ["kill boar"]),
                ("say2 chat", ["say news"]),
                ("say @{foe}s, @foes", ["say boars, "]),
                ("say %LEFT(abc,1)%RIGHT(xyz,1)", ["say a%RIGHT(xyz,1)"]),
                ("say %CONNECTED(nobody)", ["say 1"]),
                ("say 100% %NOSUCH", ["say 100% %NOSUCH"]),
                ("mail anna@example.org", ["mail anna.org"]),
                ("eve:say hello", ["say hello"]),
                ("e::say hello", ["say hello"]),
                ("*:say hello", ["say hello"]),
                ("say one:two", ["say one:two"]),
                ("#3 {dig %I}", ["dig 1", "dig 2", "dig 3"]),
                ("#FORALL {a|b} {get %I}", ["get a", "get b"]),
                ("#W {@n < 2} {#MATH n {@n + 1};dig}", ["dig", "dig"]),
                ("#10 {#IF {%I = 3} {#A?ORT all};dig}", ["dig", "dig"]),
                ("@name = {some body};say @name", ["say some body"]),
                ("#IF {\"Bob\"=\"BOB\"} {nod} {shake}", ["nod"]),
                (">>all; @this", ["all; @this"]),
                ("and; @that", ["and; @that"]),
                ("<<now;then", ["now", "then"]),
        ):
            with self.subTest(line):
                if line.startswith("#W "):
                    self.corvid.line("#VARIABLE n 0")
                if line.startswith(">>") or line.startswith("and;"):
                    self.corvid.line(line)
                    self.corvid.event("send", text=sent[0])
                    continue
                self.assertEqual(sent, self.corvid.sent_by(line))
        self.assertEqual([], [e for e in self.corvid.seen if e["event"] == "dialog"])

    def test_a_separator_before_the_closing_brace_sends_an_empty_line(self):
        (self.folder / "lamp.set").write_bytes(b"#ALIAS good {\r\n  get lamp;\r\n  light lamp\r\n}\r\n"
                                               b"#ALIAS bad {  // a comment\r\n  get lamp;\r\n  light lamp;\r\n}\r\n"
                                               b"; a comment\r\n#ALIAS url {say http:~//example.org}\r\n")
        self.corvid.line("#LOAD lamp.set")
        self.assertEqual(["get lamp", "light lamp"], self.corvid.sent_by("good"))
        self.assertEqual(["get lamp", "light lamp", ""], self.corvid.sent_by("bad"))
        self.assertEqual(["say http://example.org"], self.corvid.sent_by("url"))

    def after(self, *lines):
        """What is sent because of lines of the game."""
        self.peer.sendall("".join(line + "\r\n" for line in (*lines, "the end")).encode())
        sent = []
        while True:
            text = self.corvid.event("send")["text"]
            if text == END:
                return sent
            sent.append(text)

    def test_what_is_told_of_triggers_holds(self):
        for line in (
                f"#TRIGGER {{the end}} {{{END}}}",
                "#TRIGGER {AT~&T *} {say phone %1}",
                "#TRIGGER {[<]&hp/&{max}hp>*} {say @hp of @max}",
                "#TRIGGER {[#]*} {say number %1}",
                "#TRIGGER {[[]chat] &who: &what} {say @who said @what}",
                "#TRIGGER {You see [A-C]*} {say set %1}",
                "#TRIGGER {loud *} {say heard %1} {} AnyCase",
                "#TRIGGER {*middle*} {say [%1][%2]}",
                "#VARIABLE foe rat", "#TRIGGER {The @foe arrives.} {kill @foe}",
                "#TRIGGER {once} {say once;#UNTRIGGER {once}}",
                "#TRIGGER {* twice} {say older %1}", "#TRIGGER {both *} {say newer %1}",
                "#TRIGGER {classy} {say on} tells",
                "#TRIGGER {Red} {say red} {} Color",
                "#TRIGGER {quiet *} {#GAGLINE}", "#TRIGGER {long *} {#SUBSTITUTE {short %1}}",
                "#ALIAS shorten {#SUBSTITUTE {short}}", "#TRIGGER {lengthy} {shorten}"):
            self.corvid.line(line)
        self.corvid.sent_by("ready")
        for line, sent in (
                ("AT&T rings", ["say phone rings"]),
                ("<20/30hp> ", ["say 20 of 30"]),
                ("#5 of all", ["say number 5 of all"]),
                ("[chat] Anna: ;#QUIT{}@foe%1~", ["say Anna said ;#QUIT{}@foe%1~"]),
                ("You see Bert", ["say set Bert"]),
                ("You see Dora", []),
                ("LOUD bang", ["say heard bang"]),
                ("the middle way", ["say [the ][ way]"]),
                ("middle way", ["say [ way][]"]),
                ("The rat arrives.", ["kill rat"]),
                ("once", ["say once"]),
                ("once", []),
                ("both twice", ["say newer twice", "say older both"]),
                ("classy", []),
                ("\x1b[31mblood\x1b[0m", ["say red"]),
        ):
            with self.subTest(line):
                self.assertEqual(sent, self.after(line))
        self.corvid.sent_by("#CLASS tells enable")
        self.assertEqual(["say on"], self.after("classy"))
        self.after("quiet please", "long road", "lengthy")
        self.corvid.hears("the end")
        output = self.corvid.get("output")["text"]
        self.assertNotIn("quiet", output)
        self.assertIn("\r\nshort road\r\n", output)
        self.assertIn("\r\nlengthy\r\n", output)
        self.assertEqual([], [e for e in self.corvid.seen if e["event"] == "dialog"])

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
