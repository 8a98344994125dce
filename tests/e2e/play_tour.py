# SPDX-License-Identifier: GPL-3.0-or-later
"""What the ear is promised, in the practice game: sounds to the left and right, music, voices over it, silence."""
import os
import pathlib
import shutil
import tempfile
import unittest

from corvid_json import Corvid, Server, prepared_folder

USER = 6  # the channel for what scripts say


def scrambled(text):
    return b"\r\n".join(bytes((c + 128) % 256 for c in line) for line in text.encode("latin-1").split(b"\r\n"))


def home_where_scripts_survive_control():
    """A home folder in which the voice for scripts is set to go on when Control is tapped."""
    home = pathlib.Path(tempfile.mkdtemp(prefix="corvid-home-"))
    folder = home / "state/corvid/practice"
    folder.mkdir(parents=True)
    rows = ["11"] + ["3,0,0,100,0,1,0,0,1,0,0"] * 5 + ["3,0,0,100,2,0,0,1,1,1,0"]
    (folder / "speech.ini").write_bytes(scrambled("\r\n".join(rows) + "\r\n"))
    return home


class Tour(unittest.TestCase):
    def setUp(self):
        self.corvid = Corvid("--practice", home=home_where_scripts_survive_control())
        self.addCleanup(lambda: shutil.rmtree(self.corvid.home, ignore_errors=True))
        self.corvid.hears("What is your name?", channel=1)
        self.corvid.line("anna")
        self.corvid.hears("Choose a password:")
        self.corvid.line("secret")
        self.corvid.hears("hp 15gold>")

    def sound(self, op, **fields):
        return self.corvid.event("sound", op=op, **fields)

    def sounds(self, **fields):
        return [e for e in self.corvid.seen
                if e["event"] == "sound" and all(e[k] == v for k, v in fields.items())]

    def test_the_tour(self):
        corvid = self.corvid
        corvid.line("#LOAD examples/tour.set")
        corvid.line("tour")
        music = self.sound("play", file="music.wav")
        self.assertTrue(music["loop"])
        self.assertEqual(music["volume"], -1800)
        corvid.hears("Sound is now off")

        # Blows: one's own on the right, the foe's on the left.
        corvid.line("w;d;kill rat")
        corvid.hears("You attack")
        mine = self.sound("pan", pan=4000)
        theirs = self.sound("pan", pan=-4000)
        for blow in (mine, theirs):
            self.assertIn(blow["file"], ("hit.wav", "miss.wav"))
            self.assertFalse(blow["loop"])
            self.assertNotEqual(blow["handle"], music["handle"])
        corvid.line("flee")

        # A line of a channel in the voice for scripts, and not in the game's.
        corvid.line("chatter now")
        chat = corvid.hears("] ", channel=USER)
        self.assertFalse([e for e in corvid.seen
                          if e["event"] == "speech" and e["channel"] == 1 and chat["text"].strip() in e["text"]])

        # Control: everything that is spoken falls silent, but for what is set to go on; the music does.
        before = len(corvid.seen)
        corvid.send(key="Control")
        for channel in range(1, USER):
            corvid.event("silence", channel=channel)
        corvid.line("#SAY {after} VoiceOnly")
        corvid.hears("after", channel=USER)
        self.assertFalse([e for e in corvid.seen[before:] if e["event"] == "silence" and e["channel"] == USER])
        self.assertFalse(self.sounds(op="stop", file="music.wav"))

        corvid.line("endtour")
        self.assertEqual(self.sound("stop", file="music.wav")["handle"], music["handle"])
        self.assertEqual(len(self.sounds(op="play", file="music.wav")), 1, "one loop, from beginning to end")
        self.assertEqual(corvid.end(), 0)

    def test_the_game_s_own_sound_lines(self):
        corvid = self.corvid
        corvid.line("n")
        step = self.sound("play", file="step.wav")
        self.assertFalse(step["loop"])
        corvid.line("s;w")
        music = self.sound("play", file="music.wav")
        self.assertTrue(music["loop"])
        self.assertEqual(music["volume"], -1800)
        corvid.line("e")
        self.sound("stop", file="music.wav", handle=music["handle"])
        corvid.line("w")
        self.sound("play", file="music.wav")  # still heard when the program ends
        self.assertEqual(corvid.end(), 0)

    def test_a_sound_that_is_not_there_is_told(self):
        corvid = self.corvid
        corvid.line("#PLAY nosuch.wav")
        corvid.hears("problem playing")
        corvid.send(key="Enter")
        corvid.event("dialog-closed", code="MSGBOX")
        corvid.line("#PLAY bell.wav 50;#PC %PLAYHANDLE Volume 20")
        bell = self.sound("play", file="bell.wav")
        self.assertEqual(bell["volume"], -1500)
        self.assertEqual(self.sound("volume", file="bell.wav")["volume"], -2400)
        self.assertEqual(corvid.end(), 0)


class SoundLines(unittest.TestCase):
    """What a server may play, with real files."""

    def setUp(self):
        self.server = Server()
        self.addCleanup(self.server.listener.close)
        self.data = prepared_folder(("Game", self.server.port, "Bob", "bob", "", 0))
        self.addCleanup(lambda: shutil.rmtree(self.data, ignore_errors=True))
        shipped = pathlib.Path(os.environ.get("CORVID_SOURCE_DIR", ".")) / "share/Sounds"
        sounds = self.data / "Sounds"
        (sounds / "fight").mkdir(parents=True)
        for copy in ("step.wav", "fight/Blow.wav"):
            shutil.copy(shipped / "step.wav", sounds / copy)
        shutil.copy(shipped / "bell.wav", self.data / "secret.wav")
        (sounds / "link.wav").symlink_to(self.data / "secret.wav")
        (sounds / "way").symlink_to(self.data)
        self.corvid = Corvid("--connect", "bob", data=self.data)
        self.addCleanup(lambda: shutil.rmtree(self.corvid.home, ignore_errors=True))
        self.peer = self.server.accept()
        self.addCleanup(self.peer.close)

    def played(self, *lines):
        """The files that sound lines play, in order."""
        before = len(self.corvid.seen)
        for line in lines:
            self.peer.sendall(line.encode() + b"\r\n")
        self.peer.sendall(b"that was all\r\n")
        self.corvid.hears("that was all", seconds=180)  # a build with sanitizers needs its time for a storm
        return [e["file"] for e in self.corvid.seen[before:] if e["event"] == "sound" and e["op"] == "play"]

    def test_only_files_of_the_folder_are_played(self):
        refused = ["link.wav", "way/secret.wav", "way\\secret", "../secret.wav", "..\\secret.wav", "fight/../../secret",
                   str(self.data / "secret.wav"), "C:\\secret.wav", "/etc/passwd", "/dev/zero", "link*"]
        self.assertEqual(self.played(*(f"!!SOUND({name})" for name in refused)), [])
        self.assertEqual(self.played("!!SOUND(STEP)", "!!MUSIC(fight/blow.wav V=50)"), ["step.wav", "fight/Blow.wav"])
        self.assertFalse([e for e in self.corvid.seen if e["event"] == "dialog"])
        self.assertEqual(self.corvid.end(), 0)

    def test_a_storm_of_sound_lines_leaves_the_game_playable(self):
        self.assertEqual(len(self.played(*(["!!SOUND(step.wav L=-1)"] * 20000))), 30)
        self.assertEqual(self.corvid.get("title")["what"], "title")
        self.assertEqual(self.corvid.end(), 0)


if __name__ == "__main__":
    unittest.main()
