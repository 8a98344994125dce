# SPDX-License-Identifier: GPL-3.0-or-later
"""A script's data files on the real disk: what one run writes, the next reads, and a disk that refuses is told."""
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

from corvid_json import LIMIT, PROGRAM, Corvid, Server, prepared_folder, receive


class DataFiles(unittest.TestCase):
    def setUp(self):
        self.server = Server()
        self.addCleanup(self.server.listener.close)
        self.folder = prepared_folder(("Echo", self.server.port, "Eve", "eve", "x", 0))
        self.addCleanup(lambda: shutil.rmtree(self.folder, ignore_errors=True))
        self.start()

    def start(self):
        self.corvid = Corvid("--connect", "eve", data=self.folder)
        self.addCleanup(lambda home=self.corvid.home: shutil.rmtree(home, ignore_errors=True))
        self.peer = self.server.accept()
        self.addCleanup(self.peer.close)
        self.corvid.event("session", session=1, state="connected")
        self.corvid.event("ready")

    def error_of(self, line):
        """The words of the box in which a typed line fails."""
        self.corvid.line(line)
        box = self.corvid.event("dialog")
        self.corvid.send(key="Enter")
        self.corvid.event("dialog-closed")
        return next(control["value"] for control in box["controls"] if control["kind"] == "label")

    def test_what_one_run_writes_the_next_one_reads(self):
        self.assertEqual([], self.corvid.sent_by("#FILE 2 Shop.txt;#WRITE 2 {sword 50};#WRITE 2 {shield} NoReturn;"
                                          "#WRITE 2 { 40};#CLOSE 2"))
        self.assertEqual(b"sword 50\r\nshield 40\r\n", (self.folder / "Shop.txt").read_bytes())
        self.assertEqual([], self.corvid.sent_by("#FILE 6 rooms.dat;#WRITE 6 {the temple} 2"))
        self.assertEqual(b"\0" * 128 + b"\x0a\0the temple".ljust(128, b"\0"), (self.folder / "rooms.dat").read_bytes())
        self.assertEqual(0, self.corvid.end())
        self.start()
        self.assertEqual(["say sword 50", "say shield 40"],
                         self.corvid.sent_by("#FILE 1 shop.TXT;#READ 1 x;#WHILE {@x<>\"[EOF]\"} {say @x;#READ 1 x}"))
        self.assertEqual(["say the temple", "say []"],
                         self.corvid.sent_by("#FILE 6 rooms.dat;#READ 6 x 2;say @x;#READ 6 x 9;say [@{x}]"))
        self.assertEqual([], self.corvid.sent_by("#DELFILE shop.txt"))
        self.assertFalse((self.folder / "Shop.txt").exists())
        self.assertEqual(0, self.corvid.end())

    def test_a_disk_that_refuses_is_told(self):
        self.assertIn("No such file", self.error_of("#FILE 1 none.txt;#READ 1 x"))
        if os.path.exists("/dev/full"):
            (self.folder / "full.txt").symlink_to("/dev/full")
            self.assertIn("Bad parsing error - ", self.error_of("#FILE 2 full.txt;#WRITE 2 x"))
            self.assertIn("No space left on device", self.error_of("#WRITE 2 x"))
        os.mkfifo(self.folder / "pipe.txt")
        self.assertIn("is no ordinary file", self.error_of("#FILE 3 pipe.txt;#READ 3 x"))
        self.assertEqual(["look"], self.corvid.sent_by("look"))
        self.assertEqual(0, self.corvid.end())

    def test_a_line_for_a_script_that_cannot_be_changed_goes_to_the_game(self):
        (self.folder / "bad.set").write_bytes(b"#NOSUCHCOMMAND\r\n")
        self.corvid.sent_by("#CONFIGURE ScriptReadOnly true;#KEY F5 {smile}")
        self.error_of("#LOAD bad.set")
        shown = self.corvid.get("entry")
        self.assertEqual(("Script bad.set", True), (shown["label"], shown["locked"]))
        self.corvid.send(key="F5")  # a key that the program takes for itself types nothing
        self.corvid.event("send", text="smile")
        for line in ("caf\u00e9", "look"):
            self.corvid.line(line)
            self.corvid.event("send", text=line)
        shown = self.corvid.get("entry")
        self.assertEqual(("Entry", False), (shown["label"], shown["locked"]))
        self.assertTrue(shown["text"].endswith("caf\u00e9\r\nlook\r\n"), shown["text"])
        number = next(n for n in range(4, 12) if "NOSUCH" in self.corvid.get("buffer", number=n)["text"])
        self.assertEqual("#NOSUCHCOMMAND\r\n", self.corvid.get("buffer", number=number)["text"])
        self.assertEqual(0, self.corvid.end())

    def test_no_name_leads_out_of_the_folder(self):
        outside = self.folder.parent / (self.folder.name + ".txt")
        outside.write_text("mine")
        self.addCleanup(outside.unlink)
        for name in (f"../{outside.name}", f"..\\{outside.name}", str(outside), f"a/../../{outside.name}"):
            with self.subTest(name):
                words = "Directory and wildcard characters are not allowed."
                self.assertIn(words, self.error_of(f"#DELFILE {{{name}}}"))
                self.assertIn(words, self.error_of(f"#FILE 2 {{{name}}}"))
        self.assertIn("is a folder", self.error_of("#FILE 2 ..;#WRITE 2 x"))
        self.assertIn("is a folder", self.error_of("#DELFILE .."))
        self.assertEqual("mine", outside.read_text())
        self.assertEqual(0, self.corvid.end())

    def test_a_file_is_sent_line_by_line(self):
        (self.folder / "song.txt").write_bytes(b"la #QUIT;@x\r\nli\nlo")
        self.corvid.line("#SEND song.txt {sing }")
        heard = receive(self.peer, b"lo\r\n")
        self.assertIn(b"sing la #QUIT;@x\r\nsing li\r\nsing lo\r\n", heard)
        self.assertEqual(0, self.corvid.end())


class FirstRun(unittest.TestCase):
    def test_answers_typed_ahead_lead_through_every_question_of_the_console(self):
        home = pathlib.Path(tempfile.mkdtemp(prefix="corvid-home-"))
        self.addCleanup(lambda: shutil.rmtree(home, ignore_errors=True))
        (home / "old" / "Aard").mkdir(parents=True)
        (home / "old" / "start.set").write_bytes(b"#alias {k} {kill}\r\n")
        (home / "old" / "Aard" / "bob.set").write_bytes(b"; mine\r\n")
        (home / "old" / "notes.txt").write_bytes(b"not copied")
        answers = ["yes", "yes", "1", "", "1", "old", "start.set", "ok", "ok", "ok", "3", "", "#QUIT"]
        surroundings = {"PATH": "/usr/bin:/bin", "HOME": str(home), "LANG": "C.UTF-8", "ALSOFT_DRIVERS": "null"}
        done = subprocess.run([str(PROGRAM), "--ui", "console"], input="\n".join(answers) + "\n", env=surroundings,
                              capture_output=True, text=True, timeout=LIMIT)
        titles = [line[4:-4] for line in done.stdout.splitlines() if line.startswith("--- ")]
        self.assertEqual(["Previous Installation Data Transfer", "Moving your Corvid datafiles and Folders",
                          "Select a drive",
                          "Select Folder - use arrows to move through the folders, and press OK to select", "Moving",
                          "Transfer Complete", "Interim Speech", "Initial Speech Setting", "Next Step"], titles)
        self.assertEqual((0, ""), (done.returncode, done.stderr))
        data = home / "Documents" / "Corvid"
        self.assertEqual(b"#alias {k} {kill}\r\n", (data / "start.set").read_bytes())
        self.assertEqual(b"; mine\r\n", (data / "Aard" / "bob.set").read_bytes())
        self.assertFalse((data / "notes.txt").exists())
        self.assertEqual(0o600, (data / "speech.ini").stat().st_mode & 0o777)


if __name__ == "__main__":
    unittest.main()
