# SPDX-License-Identifier: GPL-3.0-or-later
"""A player stops a script, looks around and goes on, by the keys alone; no game is connected."""
import os
import shutil
import subprocess
import unittest

from corvid_json import LIMIT, PROGRAM, Corvid, prepared_folder


class Debugger(unittest.TestCase):
    def setUp(self):
        data = prepared_folder()
        self.corvid = Corvid(data=data)
        self.addCleanup(lambda: shutil.rmtree(self.corvid.home, ignore_errors=True))
        self.addCleanup(lambda: shutil.rmtree(data, ignore_errors=True))
        self.corvid.event("ready")

    def key(self, *names):
        for name in names:
            self.corvid.send(key=name)

    def dialog(self, code, title):
        event = self.corvid.event("dialog", code=code)
        self.assertEqual(event["title"], title)
        return {control["caption"]: control for control in event["controls"] if control["kind"] != "label"}

    def menu(self, name):
        self.corvid.until(lambda e: e["event"] == "menu" and e["name"] == name, f"the menu {name}")

    def by_the_menu(self):
        self.key("Alt")
        self.menu("MAIN")
        self.key("T")
        self.menu("TOOLS")
        self.key("D")
        return self.dialog("DEBUGMAIN", "Debug Module ")

    def test_a_script_is_stopped_changed_and_stepped_through(self):
        corvid = self.corvid
        corvid.line("#ALIAS go {#VAR way %1;#SAY {going @way}}")
        self.by_the_menu()
        corvid.hears("Debug Mode")
        corvid.event("speech", text="Unchecked")
        self.key("Space")
        corvid.event("speech", text="checked")
        self.key("Alt-A")
        listed = self.dialog("DEBUGALIAS", "Debug Module- Select Alias Breakpoints")["Alias"]
        self.assertEqual(listed["items"], ["go [Global] #VAR way %1;#SAY {going @way}"])
        self.assertEqual(listed["selected"], [])
        corvid.event("speech", text="unselected")
        self.key("Space")
        corvid.event("speech", text="selected")
        self.key("Enter")
        main = self.dialog("DEBUGMAIN", "Debug Module ")
        self.assertEqual(main["Debug Mode"]["value"], 1)
        self.key("F5")
        corvid.event("dialog-closed", code="DEBUGMAIN")

        corvid.line("go north")
        main = self.dialog("DEBUGMAIN", "Debug Module - [Alias Breakpoint]")
        self.assertEqual(main["Expanded Current Script Line"]["value"], "#VAR {way} {north}")
        self.assertEqual(main["Command History"]["items"][-1], "2> #VAR way %1;#SAY {going @way}")
        self.key("Alt-P")
        parameters = self.dialog("DEBUGPARAMS", "View & Modify Parameters")["Parameters"]
        self.assertEqual(parameters["items"][:3], ["%0 north ", "%1 north", "%2 "])
        self.key("Down")
        corvid.hears("%1 north")
        self.key("Tab")
        corvid.hears("Value")
        self.key("Control-A")
        corvid.send(type="south")
        self.key("Enter")
        self.dialog("DEBUGMAIN", "Debug Module - [Alias Breakpoint]")
        self.key("F8")
        main = self.dialog("DEBUGMAIN", "Debug Module - [Step Mode]")
        self.assertEqual(main["Expanded Current Script Line"]["value"], "#SAY {going south}")
        self.key("F5")
        corvid.hears("going south")
        self.assertEqual(corvid.end(), 0)

    def test_a_trigger_is_tried_out_without_a_game(self):
        corvid = self.corvid
        corvid.line("#TRIGGER {* hits you} {#SAY {beware of %1}}")
        self.by_the_menu()
        self.key("Control-T")
        self.dialog("TEXTPROMPT", "Trigger Tester")
        corvid.send(type="orc hits you")
        self.key("Enter")
        corvid.hears("beware of orc")
        main = self.dialog("DEBUGMAIN", "Debug Module ")
        self.assertEqual(main["Last Line Sent From MUD"]["value"], "orc hits you")
        self.key("Alt-T")
        listed = self.dialog("DEBUGTRIG", "Debug Module- Select Trigger Breakpoints")["Triggers"]
        self.assertEqual(listed["items"], ["* hits you [Global] #SAY {beware of %1}"])
        self.key("Escape")
        self.dialog("DEBUGMAIN", "Debug Module ")
        self.key("Escape")
        corvid.event("dialog-closed", code="DEBUGMAIN")
        self.assertEqual(corvid.end(), 0)

    def test_the_end_of_the_input_ends_a_stopped_script(self):
        corvid = self.corvid
        self.by_the_menu()
        self.key("F8")
        corvid.event("dialog-closed", code="DEBUGMAIN")
        corvid.line("#WHILE {1} {#VAR a 1}")
        self.dialog("DEBUGMAIN", "Debug Module - [Step Mode]")
        self.assertEqual(corvid.end(), 0)


class OnAConsole(unittest.TestCase):
    def test_each_stop_begins_with_the_command_that_comes_next(self):
        data = prepared_folder()
        self.addCleanup(lambda: shutil.rmtree(data, ignore_errors=True))
        lines = ["/key Alt", "tools", "debug", "y", "/key F5", "#BREAK;#VAR b 2;#VAR c 3",
                 "/key F8", "/key F8", "/1", "/key F5", "#QUIT"]
        done = subprocess.run([str(PROGRAM), "--ui", "console", "--data", str(data)],
                              input="".join(line + "\n" for line in lines),
                              env={**os.environ, "ALSOFT_DRIVERS": "null"},
                              capture_output=True, text=True, timeout=LIMIT)
        said = [line for line in done.stdout.splitlines() if line.startswith(("--- Debug Module", "1. ", "3. "))]
        self.assertEqual(["--- Debug Module  ---", "1. Debug Mode: yes or no? (no)", "3. Expanded Current Script Line?",
                          "--- Debug Module  - [#break Command] ---", "3. Expanded Current Script Line? (#BREAK)",
                          "--- Debug Module - [Step Mode] ---", "3. Expanded Current Script Line? (#VAR {b} {2})",
                          "--- Debug Module - [Step Mode] ---", "3. Expanded Current Script Line? (#VAR {c} {3})",
                          "1. Debug Mode: yes or no? (yes)"], said)
        self.assertEqual((0, ""), (done.returncode, done.stderr))


if __name__ == "__main__":
    unittest.main()
