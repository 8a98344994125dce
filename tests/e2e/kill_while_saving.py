# SPDX-License-Identifier: GPL-3.0-or-later
"""Kills the real program at random moments while it saves its characters, over and over in the same folder."""
import random
import shutil
import subprocess
import time
import unittest

from corvid_json import Corvid, Server, prepared_folder

ROUNDS = 100
BEFORE = 300  # characters that are there from the start: a file that takes a moment to write


def unscrambled(path):
    return b"\r\n".join(bytes((c + 128) % 256 for c in line) for line in path.read_bytes().split(b"\r\n")).decode("latin-1")


class KillWhileSaving(unittest.TestCase):
    def test_the_characters_are_always_there_whole(self):
        self.server = Server()
        self.addCleanup(self.server.listener.close)
        rows = [("Aard", self.server.port, f"Name{i}", f"ref{i}", f"secret{i}", 0) for i in range(BEFORE)]
        folder = prepared_folder(*rows)
        self.addCleanup(lambda: shutil.rmtree(folder, ignore_errors=True))
        table = folder / "Character.mud"
        table.chmod(0o600)
        chance = random.Random(20260115)
        began = time.monotonic()
        self.save_one(folder, BEFORE)
        longest = min(0.2, 3 * (time.monotonic() - began))  # some saves of a slow disk, or all of a fast one
        made = BEFORE + 1
        grown = 0
        for _ in range(ROUNDS):
            corvid, game = self.start(folder)
            self.addCleanup(lambda home=corvid.home: shutil.rmtree(home, ignore_errors=True))
            lines = b"".join(b'{"line":"#MUD ref%d Aard 127.0.0.1 %d Name%d secret%d"}\n' % (i, self.server.port, i, i)
                             for i in range(made, made + 20))
            corvid.process.stdin.write(lines)
            corvid.process.stdin.flush()
            try:
                corvid.process.wait(chance.uniform(0, longest))
                self.fail("the program has ended by itself")
            except subprocess.TimeoutExpired:
                corvid.process.kill()
            corvid.process.wait()
            game.close()
            corvid.reader.join()
            for pipe in (corvid.process.stdin, corvid.process.stdout, corvid.process.stderr):
                pipe.close()
            now = self.check(table)
            self.assertGreaterEqual(now, made)
            self.assertLessEqual(now, made + 20)
            grown += now > made
            made = now
        self.assertGreater(grown, ROUNDS // 10, "too few kills met a program at work")
        # The next save takes away what a kill may have left beside the file.
        self.save_one(folder, made)
        self.assertEqual(self.check(table), made + 1)
        self.assertEqual([path.name for path in folder.iterdir() if ".new-" in path.name], [])

    def start(self, folder):
        """The program, connected: without a connection a list would open half a second after the start."""
        corvid = Corvid("--events", "none", "--connect", "ref0", data=folder)
        game = self.server.accept()
        corvid.event("ready")
        return corvid, game

    def save_one(self, folder, number):
        corvid, game = self.start(folder)
        corvid.line(f"#MUD ref{number} Aard 127.0.0.1 {self.server.port} Name{number} secret{number}")
        corvid.event("ready", handled=1)
        game.close()
        self.assertEqual(corvid.end(), 0)
        shutil.rmtree(corvid.home, ignore_errors=True)

    def check(self, table):
        """The number of characters, each one whole and in its place."""
        self.assertEqual(table.stat().st_mode & 0o777, 0o600)
        for path in table.parent.iterdir():
            if ".new-" in path.name:
                self.assertEqual(path.stat().st_mode & 0o777, 0o600, path.name)
        lines = [line for line in unscrambled(table).split("\r\n") if "QUICKCONNECT" not in line]
        self.assertEqual(lines.pop(), "", "the last line has its end")
        for number, line in enumerate(lines):
            self.assertRegex(line, rf'^"Aard","127.0.0.1","","{self.server.port}","Name{number}","ref{number}","secret{number}",')
        return len(lines)


if __name__ == "__main__":
    unittest.main()
