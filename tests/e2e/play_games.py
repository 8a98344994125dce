# SPDX-License-Identifier: GPL-3.0-or-later
"""Real sockets, several games, and servers that do everything wrong."""
import random
import shutil
import threading
import unittest

from corvid_json import Corvid, Server, prepared_folder, receive

IAC = b"\xff"


class Games(unittest.TestCase):
    def start(self, *names, options=""):
        self.server = Server()
        self.addCleanup(self.server.listener.close)
        self.folder = prepared_folder(*(("Dale", self.server.port, name.title(), name, "pw", 0) for name in names),
                                      options=options)
        self.addCleanup(lambda: shutil.rmtree(self.folder, ignore_errors=True))
        self.corvid = Corvid(data=self.folder)
        self.addCleanup(lambda: shutil.rmtree(self.corvid.home, ignore_errors=True))
        self.corvid.pass_the_list()
        return self.corvid

    def connect(self, name):
        self.corvid.line(f"#CONNECT {name}")
        peer = self.server.accept()
        self.addCleanup(peer.close)
        self.corvid.until(lambda e: e["event"] == "title" and e["text"] == f"Corvid [{name}", f"the title of {name}")
        return peer

    def finish(self):
        self.assertEqual(self.corvid.end(), 0)

    def test_the_keys_that_answer_alt_f4_are_without_alt(self):
        corvid = self.start("bob")
        bob = self.connect("bob")
        corvid.event("ready")
        corvid.send(key="Alt-F4")
        question = corvid.event("dialog")
        corvid.send(key="Tab")
        corvid.until(lambda e: e["event"] == "focus" and question["controls"][e["control"]]["caption"] == "No",
                     "the focus on No")
        corvid.send(key="Enter")
        corvid.event("dialog-closed")
        corvid.event("ready")
        self.assertEqual("Disconnect Verification ", question["title"])
        first = len(corvid.seen)
        corvid.line("still here")
        receive(bob, b"still here\r\n")
        self.assertEqual([], [e for e in corvid.seen[first:] if e["event"] == "menu"])
        bob.close()
        self.finish()

    def test_only_the_game_in_front_is_heard_and_prefixes_reach_the_others(self):
        corvid = self.start("bob", "ann")
        bob = self.connect("bob")
        ann = self.connect("ann")
        bob.sendall(b"Bob hears this.\r\n")
        ann.sendall(b"Ann hears this.\r\n")
        corvid.hears("Ann hears this.", channel=1)
        shown = {"event": "display", "session": 1, "text": "Bob hears this.\r\n"}
        if shown not in corvid.seen:
            corvid.until(lambda e: e == shown, "Bob's line in his own window")
        corvid.line("bob::hello")
        receive(bob, b"hello\r\n")
        corvid.line("bob:look")
        receive(bob, b"look\r\n")
        self.assertEqual(corvid.get("title")["text"], "Corvid [bob")
        corvid.line("*:wave")
        receive(bob, b"wave\r\n")
        receive(ann, b"wave\r\n")
        corvid.line("nobody:x")
        corvid.hears("Character Reference nobody not found or not connected")
        corvid.send(key="Enter")
        spoken = [e["text"] for e in corvid.seen if e["event"] == "speech"]
        self.assertNotIn("Bob hears this.", spoken)
        self.finish()
        logs = {p.name.split(" ")[0]: p.read_bytes() for p in (self.folder / "logs").iterdir()}
        self.assertIn(b"Bob hears this.\r\n", logs["bob"])
        self.assertIn(b"Ann hears this.\r\n", logs["ann"])

    def test_negotiation_is_answered_byte_for_byte(self):
        for said, answered in [(b"\xfb\x00", b"\xff\xfd\x00"), (b"\xfb\x01", b"\xff\xfd\x01"),
                               (b"\xfd\x18", b"\xff\xfb\x18"), (b"\xfa\x18\x01", b"\xff\xfa\x18\x00dumb\xff\xf0"),
                               (b"\xfb\x5a", b"\xff\xfd\x5a"), (b"\xfb\x56", b"\xff\xfe\x56"),
                               (b"\xfd\x1f", b"\xff\xfc\x1f"), (b"\xfb\xc9", b"\xff\xfe\xc9")]:
            with self.subTest(said=said):
                if not hasattr(self, "peer"):
                    self.start("bob")
                    self.peer = self.connect("bob")
                self.peer.sendall(IAC + said)
                self.assertEqual(receive(self.peer, answered), answered)
        self.finish()

    def test_a_prompt_without_an_end_is_shown_and_joined_when_more_comes(self):
        corvid = self.start("bob")
        peer = self.connect("bob")
        peer.sendall(b"You stand here.\r\nHP 20> ")
        corvid.hears("You stand here.")
        corvid.hears("HP 20> ")
        self.finish()

    def test_typed_letters_reach_old_and_new_servers(self):
        corvid = self.start("bob")
        peer = self.connect("bob")
        corvid.line("say gr\u00fc\u00df")
        receive(peer, b"say gr\xfc\xdf\r\n")
        peer.sendall("\u00fcberall\r\n".encode())
        corvid.hears("\u00fcberall")
        corvid.line("say gr\u00fc\u00df")
        receive(peer, "say gr\u00fc\u00df\r\n".encode())
        peer.sendall(b"caf\xe9 \x93open\x94\r\n")
        corvid.hears("caf\u00e9 \u201copen\u201d")
        self.finish()

    def test_a_server_that_closes_and_one_that_is_not_there(self):
        corvid = self.start("bob", "ann")
        peer = self.connect("bob")
        peer.sendall(b"\x1b[1;3")
        peer.close()
        corvid.hears("Connection closed", channel=5)
        corvid.line("hello")
        corvid.event("dialog", title="Connect")
        corvid.send(key="N")
        corvid.event("dialog-closed", code="MSGBOX")
        self.server.listener.close()
        corvid.line("#CONNECT ann")
        corvid.hears("Unable to connect to 127.0.0.1")
        corvid.send(key="Enter")
        corvid.event("dialog-closed", code="MSGBOX")
        self.finish()

    def test_twenty_games_fit_and_the_next_is_refused(self):
        names = ["c" + chr(ord("a") + i) for i in range(21)]
        corvid = self.start(*names)
        for name in names[:20]:
            self.connect(name)
        corvid.line(f"#CONNECT {names[20]}")
        corvid.hears("No more free connections--Maximum: 21")
        corvid.send(key="Enter")
        self.assertEqual(len([s for s in corvid.get("sessions")["sessions"] if s["state"] == "connected"]), 20)
        self.finish()

    def test_hostile_bytes_neither_end_nor_stop_the_program(self):
        corvid = self.start("bob")
        peer = self.connect("bob")
        chance = random.Random(7)
        pieces = [b"\xff" * 999, b"\xff\xfa\x18", b"\xff\xfd", b"\x1b[", b"\x1b[99999999999999999999m", b"\x1b[38;5;196m",
                  b"\x00" * 100, b"\x07" * 500, b"\xc3", b"\xe2\x82", b"\xf0\x9f\x90\xa6", b"x" * 5000, b"\r", b"\n\n\n",
                  b"!!SOUND(", b"!!SOUND(../../../etc/passwd)", b"!!MUSIC(Off)\r\n", b"<RED>", b"<" * 50, b"%1;#QUIT\r\n"]
        for _ in range(400):
            peer.sendall(chance.choice(pieces) + bytes(chance.randrange(256) for _ in range(chance.randrange(40))))
        peer.sendall(b"\r\nx\x1bm\r\nstill here\r\n")
        corvid.hears("still here")
        corvid.line("#CONFIGURE MarginBell 20")
        corvid.line("look")
        receive(peer, b"look\r\n")
        self.finish()

    def test_a_flood_leaves_the_keys_alive_and_loses_nothing(self):
        corvid = self.start("bob")
        peer = self.connect("bob")
        lines = 20000
        peer.settimeout(60)

        def flood():
            peer.sendall(b"".join(b"\x1b[32m%07d\x1b[0m the wind combs the grass\r\n" % i for i in range(lines)))

        thread = threading.Thread(target=flood)
        thread.start()
        corvid.line("look")
        receive(peer, b"look\r\n")
        corvid.hears("%07d" % (lines - 1))
        thread.join()
        self.finish()
        log = next((self.folder / "logs").iterdir()).read_bytes()
        told = [line for line in log.split(b"\r\n") if line.endswith(b"grass")]
        self.assertEqual(told, [b"%07d the wind combs the grass" % i for i in range(lines)])

    def test_a_character_that_was_typed_once_is_there_the_next_time(self):
        corvid = self.start("bob")
        corvid.line("#MUD hero {My Game} 127.0.0.1 %d Hero {open sesame}" % self.server.port)
        corvid.send(wait=0.05)
        corvid.event("ready")
        self.finish()
        self.assertNotIn(b"sesame", (self.folder / "Character.mud").read_bytes())
        self.assertEqual((self.folder / "Character.mud").stat().st_mode & 0o777, 0o600)
        self.corvid = Corvid(data=self.folder)
        self.addCleanup(lambda: shutil.rmtree(self.corvid.home, ignore_errors=True))
        self.corvid.pass_the_list()
        self.connect("hero")
        self.finish()

    def test_commands_that_worked_are_kept_as_new_lines_and_others_are_not(self):
        corvid = self.start("bob")
        corvid.line("#CONFIGURE CommandChar !")
        corvid.line("!CONFIGURE MarginBell 33")
        corvid.line("!NOSUCH")
        corvid.hears("Bad command !NOSUCH")
        corvid.send(key="Enter")
        kept = corvid.get("buffer", number=3)["text"]
        self.assertIn("!CONFIGURE MarginBell 33\r\n", kept)
        self.assertNotIn("NOSUCH", kept)
        self.finish()


class FirstRun(unittest.TestCase):
    def test_the_first_start_asks_in_words_that_are_spoken(self):
        corvid = Corvid()
        self.addCleanup(lambda: shutil.rmtree(corvid.home, ignore_errors=True))
        corvid.event("dialog", title="Previous Installation Data Transfer")
        corvid.send(key="Enter")  # most have none, so that is what Enter says
        corvid.event("dialog", title="Moving")
        corvid.send(key="Enter")
        corvid.event("dialog", title="Move Complete")
        corvid.send(key="Enter")
        corvid.event("dialog", title="Interim Speech")
        corvid.send(key="Enter")
        choice = corvid.event("dialog", code="INITIALSPEECH")
        box = next(c for c in choice["controls"] if c["kind"] == "list")
        self.assertEqual(box["items"], ["No Speech", "Screen Reader", "MS Sapi"])
        self.assertEqual(box["value"], 2, "what works here is chosen already")
        corvid.send(key="Enter")
        corvid.event("dialog", title="Next Step")
        corvid.send(key="Enter")
        corvid.event("title")
        self.assertEqual(corvid.end(), 0)
        folder = corvid.home / "Documents/Corvid"
        self.assertTrue((folder / "start.set").is_file())
        self.assertEqual((folder / "speech.ini").stat().st_mode & 0o777, 0o600)
        again = Corvid(home=corvid.home)
        again.event("title")
        again.send(wait=0.05)
        again.event("ready")
        self.assertEqual([e for e in again.seen if e["event"] == "dialog"], [])
        self.assertEqual(again.end(), 0)

    def test_refusing_ends_the_program_and_leaves_nothing_half_done(self):
        corvid = Corvid()
        self.addCleanup(lambda: shutil.rmtree(corvid.home, ignore_errors=True))
        corvid.event("dialog", title="Previous Installation Data Transfer")
        corvid.send(key="N")
        corvid.event("dialog", title="Moving")
        corvid.send(key="Escape")
        corvid.event("exit")
        self.assertEqual(corvid.end(), 0)


if __name__ == "__main__":
    unittest.main()
