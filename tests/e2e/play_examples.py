# SPDX-License-Identifier: GPL-3.0-or-later
"""The example scripts at work in the practice game, as a player meets them."""
import pathlib
import re
import shutil
import subprocess
import unittest

from corvid_json import BUILD, LIMIT, Corvid, prepared_folder

TREE = pathlib.Path(__file__).resolve().parents[2]
SCRIPTS = 6  # the channel of what scripts say


class Game:
    """The practice game on a port of its own: the same dice every time."""

    def __init__(self, seed):
        self.process = subprocess.Popen([BUILD / "practice/corvid-practice", "--parent-exits", "--seed", str(seed)],
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.port = int(self.process.stdout.readline().split()[1])

    def end(self):
        self.process.stdin.close()
        self.process.stdout.close()
        self.process.wait(LIMIT)


class Examples(unittest.TestCase):
    def play(self, seed=1):
        game = Game(seed)
        self.addCleanup(game.end)
        self.folder = prepared_folder(("Magpie Cross", game.port, "anna", "anna", "secret", 0))
        self.addCleanup(lambda: shutil.rmtree(self.folder, ignore_errors=True))
        shutil.copytree(TREE / "share/examples", self.folder / "examples")
        self.start()

    def start(self):
        self.corvid = Corvid("--connect", "anna", data=self.folder)
        home = self.corvid.home
        self.addCleanup(lambda: shutil.rmtree(home, ignore_errors=True))
        self.corvid.hears("What is your name?")
        self.corvid.line("anna")
        self.corvid.until(lambda e: e["event"] == "speech" and "Anna" in e["text"], "the game to greet")
        self.corvid.line("secret")
        self.corvid.hears("You are in the game, Anna.")
        self.prompt()
        self.do("chatter off", "Chatter is now off.")

    def prompt(self):
        return self.corvid.hears("gold>", channel=1)["text"]

    def do(self, line, answer):
        """Types a line and waits for words and for the prompt behind them."""
        self.corvid.line(line)
        self.corvid.hears(answer)
        return self.prompt()

    def load(self, script):
        self.corvid.line(f"#LOAD examples/{script}")
        ready = self.corvid.until(lambda e: e["event"] in ("ready", "dialog"), "the script to be loaded")
        self.assertEqual("ready", ready["event"], ready)

    def says(self, words):
        return self.corvid.hears(words, channel=SCRIPTS)["text"]

    def end(self):
        """Ends the program; nothing may have gone wrong on the way."""
        self.assertEqual("", self.corvid.get("buffer", number=2)["text"].strip())
        self.assertEqual([], [e for e in self.corvid.seen if e["event"] == "dialog"])
        self.assertEqual(0, self.corvid.end())

    def heard(self, words, channel):
        return [e["text"] for e in self.corvid.seen if e["event"] == "speech" and e["channel"] == channel
                and words in e["text"]]


class Fight(Examples):
    def to_the_rat(self):
        self.load("fight.set")
        self.do("west", "The Sleeping Crow")
        self.do("down", "rat")

    def test_it_counts_the_blows_and_tells_how_it_stands(self):
        self.play()
        self.load("fight.set")
        self.corvid.line("health")
        self.says("Your prompt has not come yet.")
        self.to_the_rat()
        self.corvid.line("health")
        self.assertEqual("20 of 20, that is 100 percent, and 15 gold.", self.says("percent").strip())
        self.corvid.line("kill rat")
        self.says("against the rat.")  # the alarm, six seconds on
        words = self.says("The rat is dead. You dealt")
        self.corvid.hears("The rat is dead!", channel=1)
        dealt = sum(int(n) for n in re.findall(r"You hit the rat for (\d+)", "\n".join(self.heard("You hit", 1))))
        taken = sum(int(n) for n in re.findall(r"The rat bites you for (\d+)", "\n".join(self.heard("bites you", 1))))
        self.assertEqual(f"The rat is dead. You dealt {dealt} and took {taken}.", words.strip())
        self.prompt()
        self.corvid.line("#IF {@beat = 0} {say no alarm is left}")
        self.corvid.event("send", text="say no alarm is left")
        self.corvid.send(key="F8")
        self.says("of 20, that is")
        self.end()

    def test_it_warns_in_time_and_flees(self):
        self.play()
        self.load("fight.set")
        self.corvid.line("autoflee on")
        for step in ("south", "south", "down"):
            self.corvid.line(step)
        self.corvid.hears("boar")
        self.prompt()
        self.corvid.line("kill boar")
        self.says("Half of your health is gone.")
        self.corvid.until(lambda e: e["event"] == "send" and e["text"] == "flee", "the script to flee")
        self.assertEqual(1, len(self.heard("Half of your health is gone.", SCRIPTS)))
        self.assertEqual(1, len(self.heard("Danger.", SCRIPTS)))
        self.assertTrue([e for e in self.corvid.seen if e["event"] == "beep"])
        self.end()

    def test_it_can_be_silenced(self):
        self.play()
        self.to_the_rat()
        self.corvid.line("fightwatch off")
        self.corvid.line("kill rat")
        self.corvid.hears("The rat is dead!", channel=1)
        self.prompt()
        self.assertEqual([], self.heard("", SCRIPTS))
        self.corvid.line("fightwatch on")
        self.do("look", "Cellar")
        self.corvid.line("health")
        self.says("of 20, that is")
        self.end()


class Chat(Examples):
    def test_what_is_said_is_kept_by_channel(self):
        self.play()
        self.load("chat.set")
        self.do("chat one, two; ~{three~} @four 5% \"six\"", "[chat] Anna: one, two")
        self.do("newbie is this|that right", "[newbie] Anna: is this|that right")
        self.corvid.line("said chat")
        first = self.says("[chat] Anna: one, two").strip()
        self.corvid.line("said newbie")
        self.assertEqual("[newbie] Anna: is this/that right", self.says("[newbie]").strip())
        self.corvid.line("said auction")
        self.says("Nothing on auction yet.")
        self.assertEqual(first + "\r\n", (self.folder / "chatlog-chat.txt").read_bytes().decode())
        self.assertEqual(b"[newbie] Anna: is this|that right\r\n", (self.folder / "chatlog-newbie.txt").read_bytes())
        self.end()

    def test_channels_are_silenced_one_by_one(self):
        self.play()
        self.load("chat.set")
        self.corvid.line("channel chat off")
        self.says("Channel chat is off.")
        self.corvid.line("chat nobody hears this")
        self.corvid.event("send", text="chat nobody hears this")
        self.do("newbie but this", "[newbie] Anna: but this")
        self.assertEqual([], self.heard("[chat] Anna", 1))
        self.assertIn("[chat] Anna: nobody hears this\r\n", self.corvid.get("output")["text"])
        self.assertIn(b"nobody hears this", (self.folder / "chatlog-chat.txt").read_bytes())
        self.corvid.line("channel chat on")
        self.do("chat and this again", "[chat] Anna: and this again")
        self.end()

    def test_keeping_is_switched_by_channel(self):
        self.play()
        self.load("chat.set")
        self.corvid.line("keeplines chat off")
        self.do("chat gone with the wind", "gone with the wind")
        self.corvid.line("keeplines chat on")
        self.do("chat carved in stone", "carved in stone")
        self.assertEqual(b"[chat] Anna: carved in stone\r\n", (self.folder / "chatlog-chat.txt").read_bytes())
        self.corvid.line("#DELCLASS chatlog")
        self.do("chat never kept", "never kept")
        self.assertNotIn(b"never", (self.folder / "chatlog-chat.txt").read_bytes())
        self.end()

    def test_only_the_last_lines_are_said_again(self):
        self.play()
        self.load("chat.set")
        for number in range(1, 23):
            self.do(f"chat number {number}.", f"number {number}.")
        self.corvid.line("said chat")
        self.assertEqual("[chat] Anna: number 3.", self.says("number").strip())
        self.says("number 22.")
        self.assertEqual(20, len(self.heard("[chat] Anna: number", SCRIPTS)))
        self.end()


class Shop(Examples):
    def test_prices_are_learnt_and_kept(self):
        self.play()
        self.load("shop.set")
        self.corvid.line("price sword")
        self.says("I know no price for that.")
        self.do("east", "Pell")
        self.do("list", "Pell sells:")
        self.do("list", "Pell sells:")
        self.corvid.line("price sword")
        self.assertEqual("short sword costs 14 gold at Pell.", self.says("sword").strip())
        self.assertEqual(["short sword=14=Pell", "leather cloak=8=Pell", "woollen cap=3=Pell", "green potion=5=Pell"],
                         (self.folder / "prices.txt").read_bytes().decode().split("\r\n")[:-1])
        self.end()
        self.start()
        self.load("shop.set")
        self.corvid.line("price cap")
        self.says("woollen cap costs 3 gold at Pell.")
        self.end()

    def test_what_is_on_the_list_is_bought(self):
        self.play()
        self.load("shop.set")
        for thing in ("cap", "cloak", "sword", "cap"):
            self.corvid.line(f"want {thing}")
        self.says("You want: cap, cloak, sword.")
        self.corvid.line("unwant cloak")
        self.says("You want: cap, sword.")
        self.assertEqual(b"cap\r\nsword\r\n", (self.folder / "wanted.txt").read_bytes())
        self.do("east", "Pell")
        self.do("list", "Pell sells:")
        self.corvid.line("shopping")
        self.corvid.event("send", text="buy cap")
        self.corvid.hears("You buy a woollen cap for 3 gold.")
        self.prompt()
        self.corvid.line("shopping")
        self.says("sword costs 14, and you have 12 gold.")
        self.corvid.line("wanted")
        self.says("You want: sword.")
        self.corvid.line("spent")
        self.says("You have spent 3 gold.")
        self.end()
        self.start()
        self.load("shop.set")
        self.corvid.line("spent")
        self.says("You have spent 3 gold.")
        self.corvid.line("wanted")
        self.says("You want: sword.")
        self.end()


if __name__ == "__main__":
    unittest.main()
