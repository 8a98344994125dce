# SPDX-License-Identifier: GPL-3.0-or-later
"""Meeting a window as a screen reader does, and typing into it."""
import subprocess
import time

import pyatspi

LIMIT = 20.0  # seconds that anything may take on a busy machine


def until(condition, what):
    """Asks every 20 ms; gives what the condition gave."""
    end = time.monotonic() + LIMIT
    while True:
        try:
            found = condition()
        except Exception:  # the tree changes while it is walked
            found = None
        if found:
            return found
        if time.monotonic() > end:
            raise AssertionError("never came: " + what)
        time.sleep(0.02)


def keys(*names):
    subprocess.run(["xdotool", "key", "--delay", "5", *names], check=True)


def type_text(text):
    """As fast as a keyboard can."""
    subprocess.run(["xdotool", "type", "--delay", "1", text], check=True)


def find(root, role, name):
    return pyatspi.findDescendant(root, lambda each: each.getRole() == role and each.name == name)


def find_application(process):
    for application in pyatspi.Registry.getDesktop(0):
        if application and application.get_process_id() == process.pid:
            return application
    return None


def text_of(node):
    return node.queryText().getText(0, -1)


def has_focus(node):
    return node.getState().contains(pyatspi.STATE_FOCUSED)


def shown_output(window):
    """The output that is seen, of all that there are."""
    outputs = pyatspi.findAllDescendants(
        window, lambda each: each.getRole() == pyatspi.ROLE_TEXT and each.name == "Output")
    return next((each for each in outputs if each.getState().contains(pyatspi.STATE_SHOWING)), None)
