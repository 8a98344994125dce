# SPDX-License-Identifier: GPL-3.0-or-later
"""The language reference tells all that the program knows: each command, function, option, system variable, key and
error text, and none that is not there."""
import os
import pathlib
import re
import unittest

TREE = pathlib.Path(os.environ.get("CORVID_SOURCE_DIR", pathlib.Path(__file__).resolve().parents[2]))
LITERAL = r'"(?:[^"\\\n]|\\.)*"'
NOT_BUILT = "Not built yet"
SHORTEST_PIECE = 4  # of an error text that is looked for


def source(name):
    return (TREE / "src" / name).read_text()


def joined(literals):
    """The text of string literals that stand side by side."""
    text = "".join(part[1:-1] for part in re.findall(LITERAL, literals))
    return re.sub(r"\\(.)", lambda escape: {"r": "\r", "n": "\n", "0": "\0"}.get(escape[1], escape[1]), text)


def texts_of(code):
    return [joined(run) for run in re.findall(rf"{LITERAL}(?:\s*{LITERAL})*", code)]


def stands_in(piece, literals):
    """Whether a literal holds the piece, or the end of one and the beginning of another make it."""
    if any(piece in literal for literal in literals):
        return True
    ends = [place for place in range(1, len(piece)) if any(literal.endswith(piece[:place]) for literal in literals)]
    return any(literal.startswith(piece[place:]) for place in ends for literal in literals)


def anchor(heading):
    return re.sub(r"[^a-z0-9_ -]", "", heading.lower()).replace(" ", "-")


class Reference:
    """docs/language.md as chapters ("## ") and entries ("### ")."""

    def __init__(self):
        self.text = (TREE / "docs/language.md").read_text()
        self.chapters = {}
        for chapter in re.split(r"^## ", self.text, flags=re.M)[1:]:
            title, _, body = chapter.partition("\n")
            parts = re.split(r"^### ", body, flags=re.M)
            self.chapters[title] = {name: entry for name, _, entry in (part.partition("\n") for part in parts[1:])}
            self.chapters[title][""] = parts[0]

    def entries(self, chapter):
        return {name: text for name, text in self.chapters[chapter].items() if name}

    def whole(self, chapter):
        return "\n".join(self.chapters[chapter].values())

    def error_texts(self):
        """The fixed pieces of each text in the list of error texts."""
        for line in self.whole("Error texts").splitlines():
            if not line.startswith("- "):
                continue
            head = re.match(r"- ((?:`[^`]+`(?:, )?)+):", line)
            assert head, f"an error text without its cause: {line}"
            for text in re.findall(r"`([^`]+)`", head[1]):
                yield text, [piece for piece in text.split("...") if len(piece.strip(' "')) >= SHORTEST_PIECE]


class CommandRow:
    def __init__(self, group, keyword, least, most, handler, more):
        self.group, self.keyword, self.handler = group, keyword, handler
        self.whole_word = "WholeWord" in more
        between = "or" if "OnlyMinOrMax" in more else "to"
        self.count = "any" if most == "AnyCount" else least if least == most else f"{least} {between} {most}"

    def shortest(self, rows):
        if self.whole_word:
            return self.keyword
        for length in range(1, len(self.keyword) + 1):
            word = self.keyword[:length]
            if word.startswith("G") and not word.startswith("GAG"):
                continue  # the "G" would make a command global
            first = next(row for row in rows if row.group == self.group and row.keyword.startswith(word)
                         and not row.whole_word)
            if first is self:
                return word
        return None


class Language(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.reference = Reference()
        table = source("commands/command_table.cpp")
        rows = re.findall(r'CommandRow\{(\w+), "(\w*)", (\w+), (\w+), handler::(\w+)(.*)\}', table)
        cls.rows = [CommandRow(*row) for row in rows]
        cls.commands = [row for row in cls.rows if row.keyword]
        assert len(cls.commands) == table.count("CommandRow{") - 1 > 70

    def test_every_command_has_its_entry_in_the_order_of_the_alphabet(self):
        entries = list(self.reference.entries("Commands"))
        self.assertEqual("A number", entries[-1])
        self.assertEqual(sorted(row.keyword for row in self.commands), entries[:-1])

    def test_abbreviations_and_counts_are_those_of_the_table(self):
        entries = self.reference.entries("Commands")
        for row in self.commands:
            with self.subTest(row.keyword):
                count = "0" if row.keyword == "ERASE" else row.count  # it refuses parameters by itself
                self.assertIn(f"Shortest form: `#{row.shortest(self.rows)}`. Parameters: {count}.",
                              entries[row.keyword])

    def test_every_command_is_shown_at_work(self):
        entries = self.reference.entries("Commands")
        for row in self.commands:
            with self.subTest(row.keyword):
                examples = "\n".join(re.findall(r"^```\n(.*?)^```", entries[row.keyword], re.M | re.S)).upper()
                shown = "#PLAY" if row.keyword == "PLAYLOOP" else "#" + row.keyword
                self.assertRegex(examples, rf"{shown}\b")

    def test_every_function_has_its_entry(self):
        names = []
        for path in sorted((TREE / "src/script").glob("*_functions.cpp")):
            names += re.findall(r'\{"([A-Z]+)", \w+, [\w:]+, [^}]*, \w+\}', path.read_text())
        self.assertGreater(len(names), 35)
        entries = self.reference.entries("Functions")
        self.assertEqual(sorted(names), list(entries))
        for name, text in entries.items():
            with self.subTest(name):
                self.assertTrue(text.lstrip().startswith(f"`%{name}("), "the form of the call comes first")

    def test_every_option_has_its_entry_and_its_usual_value(self):
        table = source("files/option_rows.cpp")
        table = table[table.index("OptionRows{{"):table.index("// clang-format on")]
        rows = re.findall(r'(TruthRow\(|CharacterRow\(|TextRow\(|ColourRow\(|FolderRow\(|ArtRow\(|\{)"([A-Z]+)"([^\n]*)',
                          table)
        entries = {name.upper(): text for name, text in self.reference.entries("Options").items()}
        self.assertEqual(sorted(keyword for _, keyword, _ in rows), sorted(entries))
        usual = {"ColourRow(": "Standard", "ArtRow(": "1"}
        for kind, keyword, rest in rows:
            with self.subTest(keyword):
                if kind == "FolderRow(":
                    continue  # the start settles it
                value = usual.get(kind) or texts_of(rest)[0]
                value = "%CRLF" if value == "\r\n" else value
                self.assertTrue(f"usually `{value}`" in entries[keyword], f"it is usually {value!r}")

    def test_every_system_variable_is_told(self):
        code = source("script/system_variables.cpp")
        names = [name for name in texts_of(code[code.index("Names{"):code.index("EightColours")]) if name]
        self.assertEqual(23, len(names))
        told = set(re.findall(r"`%([A-Z0-9]+)`", "\n".join(line.split(":")[0] for line in
                                                       self.reference.whole("System variables").splitlines()
                                                       if line.startswith("- "))))
        self.assertEqual(sorted(name.upper() for name in names), sorted(told))

    def test_every_name_of_a_key_is_told(self):
        code = source("core/keys.cpp")
        names = texts_of(code[code.index("KeyNames{{"):code.index("NumPad0 =")])
        self.assertGreater(len(names), 30)
        chapter = self.reference.whole("Names of keys").upper()
        for name in names:
            with self.subTest(name):
                self.assertIn("BACKQUOTE" if name == "`" else f"`{name.upper()}`", chapter)

    def test_every_error_text_of_the_reference_is_one_of_the_program(self):
        known = [text for path in sorted((TREE / "src").rglob("*.cpp")) for text in texts_of(path.read_text())]
        found = 0
        for text, pieces in self.reference.error_texts():
            with self.subTest(text):
                self.assertTrue(pieces, "nothing in it can be looked for")
                for piece in pieces:
                    self.assertTrue(stands_in(piece, known), f"no source holds {piece!r}")
            found += 1
        self.assertGreater(found, 90)

    def test_every_error_of_a_command_is_in_the_reference(self):
        told = self.reference.whole("Error texts")
        for path in sorted((TREE / "src").glob("commands/*.cpp")) + sorted((TREE / "src").glob("script/*.cpp")):
            code = path.read_text()
            for error in re.findall(r"(?:\bfail\(|ErrorDescription = |^ *(?:std::string )?[eE]rror_? = )([^;]*);", code, re.M):
                for text in texts_of(error):
                    if len(text.strip(' "[]')) < SHORTEST_PIECE or NOT_BUILT.lower() in text.lower():
                        continue
                    with self.subTest(f"{path.name}: {text}"):
                        self.assertTrue(text.strip() in told, "no cause is told for it")

    def test_every_link_leads_somewhere(self):
        seen = {}
        anchors = set()
        for heading in re.findall(r"^#+ (.*)$", self.reference.text, re.M):
            name = anchor(heading)
            anchors.add(f"{name}-{seen[name]}" if name in seen else name)
            seen[name] = seen.get(name, 0) + 1
        links = re.findall(r"\]\(#([^)]*)\)", self.reference.text)
        self.assertGreater(len(links), 50)
        self.assertEqual([], sorted(set(links) - anchors))

    def test_newcomers_are_led_to_it(self):
        self.assertIn("docs/language.md", (TREE / "README.md").read_text())
        self.assertIn("docs/language.md", (TREE / "share/CMakeLists.txt").read_text())


if __name__ == "__main__":
    unittest.main()
