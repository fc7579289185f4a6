# SPDX-License-Identifier: LGPL-2.1-or-later
"""Waits for conditions, never for time to pass."""

import time

from gi.repository import GLib

PATIENCE = 60  # seconds; a busy machine takes a while to draw a window


def wait_for(condition, what, patience=PATIENCE):
    """What `condition` returns as soon as that is true. `what` names it when it is waited for in vain."""
    end = time.monotonic() + patience
    while True:
        while GLib.MainContext.default().iteration(False):
            pass  # what the bus told meanwhile is taken in
        try:
            found = condition()
        except GLib.Error:  # something left the screen while it was looked at
            found = None
        if found:
            return found
        if time.monotonic() > end:
            raise AssertionError(f"waited {patience} seconds in vain for {what() if callable(what) else what}")
        time.sleep(0.02)
