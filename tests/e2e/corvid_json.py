# SPDX-License-Identifier: GPL-3.0-or-later
"""Plays the real program through its json face, and servers of a test's own. Standard library only."""
import json
import os
import pathlib
import queue
import socket
import subprocess
import tempfile
import threading
import time

BUILD = pathlib.Path(os.environ.get("CORVID_BUILD_DIR", "build/debug"))
PROGRAM = BUILD / "src/app/corvid"
LIMIT = 20.0  # seconds: passed only when something is wrong


class Corvid:
    """The program. Each request waits for nothing; until() waits for an event."""

    def __init__(self, *arguments, data=None, home=None):
        self.home = pathlib.Path(home or tempfile.mkdtemp(prefix="corvid-home-"))
        surroundings = {"PATH": "/usr/bin:/bin", "HOME": str(self.home), "LANG": "C.UTF-8", "ALSOFT_DRIVERS": "null",
                        "XDG_CONFIG_HOME": str(self.home / "config"), "XDG_STATE_HOME": str(self.home / "state")}
        # what a sanitizer needs to be told comes through
        surroundings.update({name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")})
        words = [str(PROGRAM), "--ui", "json", *arguments]
        if data:
            words += ["--data", str(data)]
        self.process = subprocess.Popen(words, env=surroundings, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        stderr=subprocess.PIPE)
        self.lines = queue.Queue()
        self.seen = []
        self.reader = threading.Thread(target=self._read, daemon=True)
        self.reader.start()

    def _read(self):
        for line in self.process.stdout:
            self.lines.put(json.loads(line))
        self.lines.put(None)

    def send(self, **request):
        self.process.stdin.write(json.dumps(request).encode() + b"\n")
        self.process.stdin.flush()

    def pass_the_list(self):
        """Leaves the list of characters, which opens by itself where the start names no character."""
        self.event("dialog", code="CHARACTER1")
        self.send(key="Escape")
        self.event("dialog-closed", code="CHARACTER1")

    def line(self, text):
        self.send(line=text)

    def until(self, test, what, seconds=LIMIT):
        """The first event from now on that passes the test; all on the way are kept in seen."""
        limit = time.monotonic() + seconds
        while True:
            try:
                event = self.lines.get(timeout=max(0.01, limit - time.monotonic()))
            except queue.Empty:
                raise AssertionError(f"waited for {what}; the last events: {self.seen[-15:]}") from None
            if event is None:
                errors = self.process.stderr.read().decode(errors="replace")
                raise AssertionError(f"the program ended before {what}: {errors[-2000:]}; last: {self.seen[-8:]}")
            self.seen.append(event)
            if test(event):
                return event

    def event(self, name, **fields):
        return self.until(lambda e: e["event"] == name and all(e.get(k) == v for k, v in fields.items()),
                          f"{name} {fields}")

    def hears(self, piece, channel=None, seconds=LIMIT):
        return self.until(lambda e: e["event"] == "speech" and piece in e["text"] and channel in (None, e["channel"]),
                          f"the words {piece!r}", seconds)

    def sent_by(self, line):
        """What a typed line sends to the game. It has run to its end before the next one is typed, since a line that
        loops or waits lets others in."""
        end = "that was all of it"
        first = len(self.seen)
        self.line(line)
        self.event("ready")
        self.line(f">{end}")
        self.event("send", text=end)
        sent = [event["text"] for event in self.seen[first:] if event["event"] == "send"]
        self.event("ready")
        return sent[:-1]

    def get(self, what, **more):
        self.send(get=what, **more)
        return self.event("state", what=what)

    def end(self):
        """Closes the input and gives the exit code. What the program tells last is its end."""
        self.process.stdin.close()
        try:
            code = self.process.wait(LIMIT)
        except subprocess.TimeoutExpired:
            self.process.kill()
            raise AssertionError(f"the program did not end; the last events: {self.seen[-15:]}") from None
        errors = self.process.stderr.read().decode(errors="replace")
        self.reader.join(LIMIT)
        self.process.stdout.close()
        self.process.stderr.close()
        if "ERROR: " in errors or "runtime error" in errors:
            raise AssertionError(errors[-4000:])
        while not self.lines.empty():
            event = self.lines.get()
            if event is not None:
                self.seen.append(event)
        if self.seen[-1] != {"event": "exit", "code": code}:
            raise AssertionError(f"ended with {code} behind {self.seen[-8:]}")
        return code


class Server:
    """A game server on a free port of this machine that says what the test tells it."""

    def __init__(self):
        self.listener = socket.socket()
        self.listener.bind(("127.0.0.1", 0))
        self.listener.listen(30)
        self.listener.settimeout(LIMIT)
        self.port = self.listener.getsockname()[1]

    def accept(self):
        peer, _ = self.listener.accept()
        peer.settimeout(LIMIT)
        return peer


def receive(peer, wanted):
    """Reads until the bytes wanted have come; gives all that came."""
    data = b""
    while wanted not in data:
        piece = peer.recv(65536)
        if not piece:
            raise AssertionError(f"closed before {wanted!r}; got {data!r}")
        data += piece
    return data


def prepared_folder(*characters, options=""):
    """A data folder with which the program asks nothing: speech is set up and the characters are known."""
    folder = pathlib.Path(tempfile.mkdtemp(prefix="corvid-data-"))
    (folder / "start.set").write_bytes(options.encode() or b"; nothing\r\n")

    def scrambled(text):
        return b"\r\n".join(bytes((c + 128) % 256 for c in line) for line in text.encode("latin-1").split(b"\r\n"))

    rows = ["11"] + ["3,0,0,100,0,1,0,0,1,0,0"] * 6
    (folder / "speech.ini").write_bytes(scrambled("\r\n".join(rows) + "\r\n"))
    table = "".join(f'"{mud}","127.0.0.1","","{port}","{name}","{ref}","{password}",{flags},""\r\n'
                    for mud, port, name, ref, password, flags in characters)
    if characters:
        (folder / "Character.mud").write_bytes(scrambled(table))
    return folder
