# SPDX-License-Identifier: GPL-3.0-or-later
"""Plays the practice game over loopback sockets: usage play_test.py PROGRAM."""

import os
import re
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time
import unittest

PROGRAM = sys.argv[1]
LIMIT = 20  # seconds that anything may take on a busy machine
PROMPT = b"gold> \xff\xf9"


class Server:
    def __init__(self, *arguments):
        self.process = subprocess.Popen(
            [PROGRAM, "--seed", "5", "--parent-exits", *arguments],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.port = int(re.fullmatch(rb"port (\d+)\n", self.process.stdout.readline()).group(1))

    def end(self):
        """Closes its standard input, as a client does that ends; gives code, rest of the output, errors."""
        out, errors = self.process.communicate(timeout=LIMIT)
        return self.process.returncode, out, errors


class Player:
    opened = []  # closed when a test ends

    def __init__(self, port, name=None, small=False):
        self.socket = socket.socket()
        Player.opened.append(self)
        if small:
            self.socket.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, 4096)
        self.socket.settimeout(LIMIT)
        self.socket.connect(("127.0.0.1", port))
        self.all = b""
        self.waiting = b""
        if name:
            self.until(b"name? \xff\xf9")
            self.type(name)
            self.until(b"password: \xff\xf9")
            self.type("word")
            self.until(PROMPT)

    def type(self, line):
        self.socket.sendall(line.encode("latin-1") + b"\r\n")

    def until(self, end):
        """What came up to and with the bytes end, or all there was before the connection closed."""
        while end not in self.waiting:
            got = self.socket.recv(1 << 20)
            if not got:
                break
            self.all += got
            self.waiting += got
        at = self.waiting.find(end)
        cut = at + len(end) if at >= 0 else len(self.waiting)
        result, self.waiting = self.waiting[:cut], self.waiting[cut:]
        return result

    def to_end(self):
        return self.until(b"never sent \0")

    def close(self):
        self.socket.close()


class PlayTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.server = None

    def start(self, *arguments):
        self.server = Server(*arguments)
        self.addCleanup(self.reap)
        return self.server

    def reap(self):
        while Player.opened:
            Player.opened.pop().close()
        if self.server.process.poll() is None:
            self.server.process.kill()
        self.server.process.communicate()

    def test_a_game_and_its_record(self):
        record = os.path.join(self.folder.name, "record")
        server = self.start("--record", record)
        anna = Player(server.port)
        self.assertTrue(anna.until(b"name? \xff\xf9").startswith(b"\xff\xfb\x5a\xff\xfd\x18===="))
        anna.socket.sendall(b"\xff\xfd\x5a\xff\xfb\x18")
        self.assertEqual(anna.until(b"\xff\xf0"), b"\xff\xfa\x18\x01\xff\xf0")
        anna.socket.sendall(b"\xff\xfa\x18\x00dumb\xff\xf0anna\r\n")
        self.assertIn(b"\xff\xfb\x01Choose a password: ", anna.until(b"password: \xff\xf9"))
        anna.type("secret")
        self.assertIn(b"\xff\xfc\x01", anna.until(PROMPT))
        bob = Player(server.port, "bob")
        anna.until(PROMPT)
        anna.type("n")
        self.assertIn(b"!!SOUND(step.wav V=60 L=1)\r\n", anna.until(PROMPT))
        anna.type("quit")
        self.assertIn(b"Goodbye, Anna.", anna.to_end())
        code, out, errors = server.end()
        self.assertEqual((code, out, errors), (0, b"", b""))
        self.assertIn(b"The practice game ends. Goodbye.", bob.to_end())
        with open(record, "rb") as file:
            self.assertEqual(file.read(), anna.all)
        with open(record + ".2", "rb") as file:
            recorded = file.read()
        self.assertTrue(bob.all.startswith(recorded) and len(recorded) > 200)

    def test_the_clock_runs(self):
        server = self.start()
        anna = Player(server.port, "anna")
        for step in ("w", "d", "chatter off", "k rat"):
            anna.type(step)
            anna.until(PROMPT)
        began = time.monotonic()
        anna.until(PROMPT)
        self.assertGreater(time.monotonic() - began, 1.5)

    def test_twenty_five_players(self):
        server = self.start()
        names = ["pa" + chr(97 + i) for i in range(25)]
        players = [Player(server.port, name) for name in names]
        players[0].type("who")
        self.assertIn(b"30 players.", players[0].until(b"players."))
        players[3].type("chat to all of you")
        for player in players:
            self.assertIn(b" Pad: to all of you", player.until(b"to all of you"))

    def test_a_flood_is_whole_and_the_keys_still_answer(self):
        server = self.start()
        anna = Player(server.port, "anna")
        anna.type("flood 200000 colour")
        anna.until(b"0000001")
        anna.type("gold")
        text = anna.until(b"flood done 200000\r\n")
        self.assertIn(b"You have 15 gold pieces.", text)
        numbers = [int(n) for n in re.findall(rb"m(0\d{6})\x1b", text)]
        self.assertEqual(numbers, list(range(2, 200001)))
        self.assertEqual(text.count(b"<20/20hp 15gold> \r\n"), 20000)
        anna.until(PROMPT)

    def test_who_does_not_read_is_dropped_and_nobody_else_waits(self):
        server = self.start()
        anna = Player(server.port, "anna")
        bob = Player(server.port, "bob", small=True)
        stop = threading.Event()

        def read_anna():
            while not stop.is_set() and anna.socket.recv(1 << 20):
                pass

        reader = threading.Thread(target=read_anna)
        reader.start()
        line = b"chat " + b"x" * 990 + b"\r\n"
        end = time.monotonic() + LIMIT
        gone = False
        os.set_blocking(server.process.stderr.fileno(), False)
        while not gone and time.monotonic() < end:
            anna.socket.sendall(line * 50)
            gone = b"connection 2 does not read and is dropped" in (server.process.stderr.read() or b"")
        stop.set()
        anna.type("quit")
        reader.join(LIMIT)
        self.assertTrue(gone)
        bob.close()

    def test_hostile_bytes_and_sudden_ends(self):
        server = self.start()
        anna = Player(server.port, "anna")
        for bytes_ in (b"\xff" * 5000, b"\xff\xfa\x18" * 3000, b"\0\x07\x1b[999m" * 500, b"x" * 300000, b"\r" * 3000):
            bad = Player(server.port)
            bad.socket.sendall(bytes_)
            bad.socket.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, b"\1\0\0\0\0\0\0\0")
            bad.close()
        anna.type("gold")
        self.assertIn(b"You have 15 gold pieces.", anna.until(PROMPT))

    def test_many_commands_without_reading(self):
        """Input waits while the answers are not read, and nothing of it is lost."""
        server = self.start()
        anna = Player(server.port, "anna")
        writer = threading.Thread(target=lambda: anna.socket.sendall(b"look\r\n" * 20000 + b"say the end\r\n"))
        writer.start()
        text = anna.until(b"You say: the end")
        writer.join(LIMIT)
        self.assertEqual(text.count(b"The Village Square\x1b[0m\r\n"), 20000)

    def test_ends_on_sigterm(self):
        server = self.start()
        anna = Player(server.port, "anna")
        server.process.send_signal(signal.SIGTERM)
        self.assertIn(b"The practice game ends. Goodbye.", anna.to_end())
        self.assertEqual(server.process.wait(LIMIT), 0)

    def test_listens_on_loopback_alone(self):
        server = self.start()
        with open("/proc/net/tcp", encoding="ascii") as file:
            rows = [row.split()[1] for row in file][1:]
        self.assertIn("0100007F:%04X" % server.port, rows)
        self.assertNotIn("00000000:%04X" % server.port, rows)

    def test_bad_arguments(self):
        missing = os.path.join(self.folder.name, "no", "file")
        for arguments, message in (
                (["--port", "x"], "--port needs a number from 0 to 65535, not x"),
                (["--loud"], "unknown argument --loud"),
                (["--record", missing], "cannot write the file " + missing)):
            run = subprocess.run([PROGRAM, *arguments], capture_output=True, text=True, timeout=LIMIT, check=False)
            self.assertEqual((run.returncode, run.stdout), (2, ""))
            self.assertIn(message, run.stderr)
        server = self.start()
        taken = subprocess.run([PROGRAM, "--port", str(server.port)], capture_output=True, text=True, timeout=LIMIT,
                               check=False)
        self.assertEqual((taken.returncode, taken.stdout), (1, ""))
        self.assertIn("cannot listen on port %d" % server.port, taken.stderr)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
