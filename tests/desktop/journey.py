# SPDX-License-Identifier: LGPL-2.1-or-later
"""What all journeys share: a program of their own, and a picture of the screen when one fails."""

import contextlib
import faulthandler
import functools
import os
import pathlib
import unittest

from desktop import Desktop, Installation, screen_picture
from device import CARL, SERVER, SETTINGS, Device, Directory
from waiting import wait_for

STAGE = pathlib.Path(os.environ["QUELM_STAGE"])
SAMPLES = pathlib.Path(os.environ["QUELM_SAMPLES"])
FAILURES = pathlib.Path(os.environ["QUELM_FAILURES"])

# Should a tool or the bus never answer, this tells where, ahead of the limit of run-journeys.
faulthandler.dump_traceback_later(270, exit=True)


def pictured(test):
    """Has a test that fails leave a picture of the screen as it was then."""

    @functools.wraps(test)
    def run(self):
        try:
            test(self)
        except BaseException:
            FAILURES.mkdir(parents=True, exist_ok=True)
            picture = FAILURES / f"{self.id()}.png"
            screen_picture(picture)
            print(f"the screen at the failure of {self.id()}: {picture}", flush=True)
            raise

    return run


class Journey(unittest.TestCase):
    """A test of the whole program."""

    maxDiff = None

    def __init_subclass__(cls, **arguments):
        super().__init_subclass__(**arguments)
        for name, test in list(vars(cls).items()):
            if name.startswith("test_"):
                setattr(cls, name, pictured(test))

    def setUp(self):
        self.installation = Installation(STAGE)
        self.addCleanup(self.installation.remove)
        self.letter = SAMPLES / "letter.ps"

    def start(self, *arguments):
        """A running program. Unless a test ends it, it is ended without ceremony."""
        desktop = Desktop(self.installation, *arguments)
        self.addCleanup(desktop.end_at_once)
        return desktop

    def start_with_letter(self, *arguments):
        """A program with a document whose first page has been drawn and whose pages have been counted."""
        desktop = self.start(*arguments, str(self.letter))
        main = desktop.main()
        wait_for(lambda: main.control("Main Document Pages").showing, "the pages to be counted")
        wait_for(lambda: "letter.ps" in main.control("Main Document Page").name, "the first page")
        return desktop

    def device_with_directory(self, *people):
        """A device that knows a directory with these people, by default with one."""
        directory = Directory(*(people or [CARL]))
        self.addCleanup(directory.close)
        device = self.device({**SETTINGS, SERVER: directory.address})
        device.directory = directory
        return device

    def device(self, objects):
        """A device that has these objects and no others."""
        device = Device(objects)
        self.addCleanup(device.close)
        return device

    @contextlib.contextmanager
    def trying(self, how):
        """Has a failure say which of several ways was tried."""
        try:
            yield
        except BaseException as failure:
            failure.add_note(f"This was tried {how}.")
            raise

    def eventually(self, condition, instead=None):
        """Fails unless the condition comes to hold; `instead` then tells what there is."""
        wait_for(condition, lambda: f"what this test expects next; instead: {instead() if instead else '-'}")

    def quits_silently(self, desktop):
        """The program ends when it is told to, and neither it nor the toolkit complained meanwhile."""
        status = desktop.quit()
        self.assertEqual((status, desktop.errors()), (0, ""))
