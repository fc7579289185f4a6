# SPDX-License-Identifier: LGPL-2.1-or-later
"""A running quelm-device, with a directory of people, and what was received behind it."""

import subprocess

from waiting import wait_for


class EmulatedDevice:
    """Takes jobs, and calls, until it is stopped. Everything it has is below `folder`."""

    def __init__(self, stage, folder, *options):
        self.state = folder / "device"
        self.said = folder / "device.log"
        with open(self.said, "wb") as said:
            self.process = subprocess.Popen(
                [stage / "quelm-device", "serve", "--state", self.state, "--port", "0", "--panel", "0", "--snmp", "0",
                 *options], stdin=subprocess.DEVNULL, stdout=said, stderr=subprocess.STDOUT)

    def lines(self, beginning=""):
        """What it has said up to now, of the lines that begin like this."""
        return [line for line in self.said.read_text().splitlines() if line.startswith(beginning)]

    def await_line(self, beginning, count=1):
        """The lines that begin like this, once there are so many."""

        def find():
            found = self.lines(beginning)
            if len(found) < count and self.process.poll() is not None:
                raise AssertionError(f"the device ended with {self.process.returncode}: {self.lines()}")
            return len(found) >= count and found

        return wait_for(find, lambda: f"the device to say {beginning}; it said {self.lines()}")

    def place(self, what):
        """Where it serves that: an address, once it does."""
        self.await_line("ready")
        return self.await_line(what + ": ")[0].split(": ", 1)[1]

    def received(self):
        """What each number has received: the files, by number."""
        return {folder.name: sorted(folder.iterdir()) for folder in (self.state / "received").iterdir()}

    def stop(self):
        """Has it put everything in order and end."""
        if self.process.poll() is None:
            self.process.terminate()
        try:
            self.process.wait(timeout=20)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
            raise


def rendering(job, density, file):
    """The pages that Ghostscript makes of a print job, as a fax has them."""
    subprocess.run(["gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=tiffg4", f"-r{density}",
                    f"-sOutputFile={file}", job], check=True, stdin=subprocess.DEVNULL, timeout=60)
    return file


def dots(tiff):
    """The pages of a TIFF file: of each, the width, the height, and a digest of its dots."""
    described = subprocess.run(["identify", "-format", "%w %h %#\n", tiff], check=True, timeout=60,
                               stdout=subprocess.PIPE, text=True)
    return described.stdout.splitlines()
