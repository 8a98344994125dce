# SPDX-License-Identifier: GPL-3.0-or-later
"""A few seconds of scripts/soak: every log as the servers sent it, flat memory. How quick it is, a busy build machine
cannot tell; scripts/soak itself does."""
import os
import pathlib
import subprocess
import sys

TREE = pathlib.Path(os.environ["CORVID_SOURCE_DIR"])
sys.exit(subprocess.run([TREE / "scripts/soak", "--seconds", "8", "--measure-only", "--build",
                         os.environ["CORVID_BUILD_DIR"]]).returncode)
