# SPDX-License-Identifier: GPL-3.0-or-later
"""What the ear is promised, in the practice game: sounds to the left and right, music, voices over it, silence."""
import pathlib
import shutil
import tempfile
import unittest

from corvid_json import Corvid

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


if __name__ == "__main__":
    unittest.main()
