# SPDX-License-Identifier: GPL-3.0-or-later
"""What the real program keeps from others: it listens on no port, takes no line without end, and lets nobody else read."""
import os
import pathlib
import shutil
import unittest

from corvid_json import Corvid, Server, prepared_folder


def listening(process):
    """The places on which a process waits for connections, as /proc tells them."""
    waiting = set()
    for table in ("tcp", "tcp6", "udp", "udp6"):
        for line in pathlib.Path(f"/proc/{process}/net/{table}").read_text().splitlines()[1:]:
            words = line.split()
            if words[3] in ("0A", "07"):  # listening; a datagram socket that takes from anybody
                waiting.add((words[9], words[1]))
    held = set()
    for number in pathlib.Path(f"/proc/{process}/fd").iterdir():
        try:
            held.add(os.readlink(number))
        except FileNotFoundError:
            continue
    return [place for inode, place in waiting if f"socket:[{inode}]" in held]


class Trust(unittest.TestCase):
    def setUp(self):
        server = Server()
        self.addCleanup(server.listener.close)
        self.folder = prepared_folder(("Aard", server.port, "Bob", "bob", "secret", 0))
        self.addCleanup(lambda: shutil.rmtree(self.folder, ignore_errors=True))
        self.corvid = Corvid("--connect", "bob", data=self.folder)
        self.addCleanup(lambda: shutil.rmtree(self.corvid.home, ignore_errors=True))
        self.game = server.accept()
        self.addCleanup(self.game.close)
        self.corvid.event("ready")

    def end(self):
        self.game.close()
        self.assertEqual(self.corvid.end(), 0)

    def test_it_listens_on_no_port(self):
        self.assertEqual(listening(self.corvid.process.pid), [])
        # The look itself sees what listens.
        other = Server()
        self.addCleanup(other.listener.close)
        self.assertIn(f"0100007F:{other.port:04X}", listening(os.getpid()))
        self.end()

    def test_a_line_without_end_is_dropped_and_the_next_one_taken(self):
        pipe = self.corvid.process.stdin
        for _ in range(17):
            pipe.write(b"x" * (1 << 20))
        pipe.write(b"\n")
        pipe.flush()
        self.assertEqual(self.corvid.event("error")["text"], f"This line is longer than {16 << 20} bytes")
        self.corvid.line("look")
        self.corvid.event("send", session=1, text="look")
        self.end()

    def test_what_it_writes_is_its_owners_alone(self):
        self.corvid.line("#VARIABLE heard {a secret}")
        self.corvid.line("#SAVE")
        self.game.sendall(b"The word is raven.\r\n")
        self.corvid.hears("The word is raven.", channel=1)
        self.end()
        shared = [path for path in self.folder.rglob("*") if path.is_file() and path.stat().st_mode & 0o077 and
                  any(word in path.read_bytes() for word in (b"secret", b"raven"))]
        self.assertEqual(shared, [])
        self.assertEqual([path for path in self.folder.rglob("*") if ".new-" in path.name], [])


if __name__ == "__main__":
    unittest.main()
