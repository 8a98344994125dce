# SPDX-License-Identifier: GPL-3.0-or-later
"""What a window test may count on: a screen, a window manager, the accessibility bus, an empty home folder."""
import os
import pathlib
import subprocess
import unittest

import pyatspi


class Rig(unittest.TestCase):
    def test_there_is_a_screen_with_a_window_manager(self):
        told = subprocess.run(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], capture_output=True, text=True, check=True)
        self.assertIn("window id", told.stdout)

    def test_the_accessibility_tree_can_be_walked(self):
        desktop = pyatspi.Registry.getDesktop(0)
        self.assertEqual(pyatspi.ROLE_DESKTOP_FRAME, desktop.getRole())

    def test_the_home_folder_is_the_rigs_own(self):
        home = pathlib.Path(os.environ["HOME"])
        self.assertIn("corvid-rig.", str(home))
        for name in ("XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"):
            self.assertTrue(pathlib.Path(os.environ[name]).is_relative_to(home), name)

    def test_nothing_of_the_testers_session_shines_through(self):
        for name in ("WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "SESSION_MANAGER"):
            self.assertNotIn(name, os.environ)


if __name__ == "__main__":
    unittest.main()
