# SPDX-License-Identifier: GPL-3.0-or-later
"""The shipped sounds are what the script makes, and are fit to be heard."""
import array
import os
import pathlib
import subprocess
import tempfile
import unittest
import wave

TREE = pathlib.Path(os.environ.get("CORVID_SOURCE_DIR", pathlib.Path(__file__).resolve().parents[2]))
SHIPPED = TREE / "share" / "Sounds"
NAMES = {"step", "door", "hit", "miss", "coin", "bell", "chat", "death", "ding", "music", "error", "connect",
         "disconnect"}


def read(path):
    with wave.open(str(path)) as sound:
        assert sound.getsampwidth() == 2
        values = array.array("h", sound.readframes(sound.getnframes()))
        return sound.getframerate(), sound.getnchannels(), values


class Sounds(unittest.TestCase):
    def test_the_script_makes_the_shipped_bytes(self):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([TREE / "scripts" / "make-sounds", folder], check=True)
            made = {path.name: path.read_bytes() for path in pathlib.Path(folder).iterdir()}
        self.assertEqual({name + ".wav" for name in NAMES}, set(made))
        shipped = {path.name: path.read_bytes() for path in SHIPPED.glob("*.wav")}
        for name in sorted(made):
            self.assertTrue(made[name] == shipped.get(name), f"{name} differs: run scripts/make-sounds")
        self.assertEqual(set(made), set(shipped))

    def test_each_is_heard_in_the_practice_game(self):
        game = "".join(path.read_text() for path in (TREE / "practice" / "game").glob("*.cpp"))
        self.assertEqual([], [name for name in sorted(NAMES) if f'"{name}.wav"' not in game])

    def test_the_sounds_are_small(self):
        sizes = {path.stem: path.stat().st_size for path in SHIPPED.glob("*.wav")}
        self.assertLess(sum(sizes.values()), 1_500_000)
        self.assertLess(sizes["music"], 700_000)

    def test_no_sound_begins_or_ends_with_a_click(self):
        for path in sorted(SHIPPED.glob("*.wav")):
            rate, channels, values = read(path)
            self.assertIn(rate, (22050, 44100), path.name)
            self.assertIn(channels, (1, 2), path.name)
            loudest = max(abs(value) for value in values)
            self.assertGreater(loudest, 5000, f"{path.name} can hardly be heard")
            self.assertLess(loudest, 32767, f"{path.name} is clipped")
            self.assertLess(abs(values[0]), 0.06 * loudest, f"{path.name} begins with a click")
            if path.stem != "music":
                self.assertLess(abs(values[-1]), 0.02 * loudest, f"{path.name} ends with a click")

    def test_the_music_loops_without_a_seam(self):
        _, _, values = read(SHIPPED / "music.wav")
        widest = max(abs(after - before) for before, after in zip(values, values[1:]))
        self.assertLessEqual(abs(values[0] - values[-1]), widest)


if __name__ == "__main__":
    unittest.main()
