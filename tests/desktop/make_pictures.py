# SPDX-License-Identifier: LGPL-2.1-or-later
"""Makes the pictures of all windows for the guides. Usage: make_pictures.py FOLDER"""

import hashlib
import os
import pathlib
import socket
import subprocess
import sys
import tempfile

from desktop import Desktop, Installation
from device import CARL, SERVER, SETTINGS, Device, Directory
from tour import prepare, tour
from waiting import wait_for
from window import act

# The toolkit's chooser, with the times of today's files; and a job in a file, whose path is this machine's.
UNPICTURED = ("phonebook-chooser", "main-sent")
# They show on pictures.
DIRECTORY_PORT = 3890
DEVICE = "localhost:9100"


def steady_picture(window):
    """A picture of a window with its frame, once two in a row are the same: nothing is being drawn any more."""
    act("xdotool", "mousemove", "0", "0")  # what is under the pointer looks different
    last = []

    def take():
        picture = subprocess.run(["import", "-frame", "-window", window.id, "png:-"], check=True,
                                 capture_output=True, timeout=30).stdout
        pixels = subprocess.run(["convert", "png:-", "rgb:-"], check=True, input=picture, capture_output=True).stdout
        last.append(hashlib.sha256(pixels).digest())
        return picture if last[-1:] == last[-2:-1] else None

    return wait_for(take, f"{window.fixed_name} to be drawn whole")


def keep(picture, file):
    """As few colours as serve, and nothing that differs from day to day."""
    subprocess.run(["convert", "png:-", "-strip", "+dither", "-colors", "128",
                    "-define", "png:exclude-chunks=date,time", f"png8:{file}"], check=True, input=picture)
    print(file, flush=True)


def send_to_device(desktop):
    """The main window when a device has taken the job."""
    main_window = desktop.main()
    main_window.press("Main Message Close Button")
    main_window.control("Main Destination Kind").choose_at(1)
    main_window.control("Main Destination Device").fill(DEVICE)
    with socket.create_server(("127.0.0.1", int(DEVICE.partition(":")[2]))) as listener:
        main_window.press("Main Send Button")
        with listener.accept()[0] as connection:
            while connection.recv(1 << 16):
                pass
    message = main_window.control("Main Message")
    wait_for(lambda: message.showing and DEVICE in message.text, "the job to be handed over")
    return main_window


def main(folder):
    stage = os.environ["QUELM_STAGE"]
    letter = pathlib.Path(os.environ["QUELM_SAMPLES"]) / "letter.ps"
    installation = Installation(stage, pathlib.Path(tempfile.gettempdir()) / "quelm-pictures")
    directory = Directory(CARL, dict(CARL, cn="Rita Reeve", sn="Reeve", givenName="Rita",
                                     facsimileTelephoneNumber="555-0107", mail="rita@harbour.example"),
                          port=DIRECTORY_PORT)
    device = Device({**SETTINGS, SERVER: directory.address})
    desktop = None
    try:
        prepare(installation)
        desktop = Desktop(installation)
        keep(steady_picture(desktop.main()), folder / "main-empty.png")
        desktop.quit()
        desktop = Desktop(installation, "--device-snmp", device.address, str(letter))
        main_window = desktop.main()
        wait_for(lambda: letter.name in main_window.control("Main Document Page").name, "the first page")
        wait_for(lambda: main_window.control("Main Document Pages").showing, "the pages to be counted")
        for stop, window in tour(desktop, "~/letter-fax.ps", with_directory=True):
            if stop not in UNPICTURED:
                keep(steady_picture(window), folder / f"{stop}.png")
        keep(steady_picture(send_to_device(desktop)), folder / "main-sent.png")
        if (desktop.quit(), desktop.errors()) != (0, ""):
            raise AssertionError(f"quelm-desktop said: {desktop.errors()}")
    finally:
        if desktop:
            desktop.end_at_once()
        device.close()
        directory.close()
        installation.remove()


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(pathlib.Path(sys.argv[1]))
