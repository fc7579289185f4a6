# SPDX-License-Identifier: LGPL-2.1-or-later
"""A running quelm-desktop on the test's screen, with an installation and a user of its own."""

import os
import pathlib
import shutil
import subprocess
import tempfile

from control import Atspi, GLib, State, below, has
from waiting import wait_for
from window import Window, run

CLOCK = "2026-03-05T09:30"
LINKED = ("libBramblecorLanFax.so", "fennodial", "icon", "help", "locale")


# A test clicks faster than a person: what would be a double click are two clicks. Pictures keep still.
TOOLKIT_SETTINGS = """[Settings]
gtk-double-click-time=1
gtk-cursor-blink=0
gtk-enable-animations=0
"""


class Installation:
    """A folder with the programs' files and phonebooks of its own, and a user's home. It goes at the end."""

    def __init__(self, stage, folder=None):
        self.stage = pathlib.Path(stage)
        self.folder = folder or pathlib.Path(tempfile.mkdtemp(prefix="quelm-journey-"))
        self.folder.mkdir(exist_ok=True)
        self.home = self.folder / "installed"
        self.work = self.folder / "work"
        self.home.mkdir()
        self.work.mkdir()
        self.clock = CLOCK
        self._make_user()
        for name in LINKED:
            (self.home / name).symlink_to(self.stage / name)
        self.environment = dict(os.environ, HOME=str(self.folder / "user"), LC_ALL="C.UTF-8")
        for name in [one for one in self.environment if one.startswith("XDG_") and one != "XDG_RUNTIME_DIR"]:
            del self.environment[name]
        self.environment.pop("LANGUAGE", None)
        self.set_timer("inactive")

    def _make_user(self):
        settings = self.folder / "user" / ".config" / "gtk-3.0" / "settings.ini"
        settings.parent.mkdir(parents=True)
        settings.write_text(TOOLKIT_SETTINGS)

    def set_timer(self, state):
        """What the user's systemd says of the outbox's timer, whatever there is on this machine."""
        programs = self.folder / "machine"
        programs.mkdir(exist_ok=True)
        program = programs / "systemctl"
        program.write_text(f"#!/bin/sh\necho {state}\n[ {state} = active ]\n")
        program.chmod(0o755)
        self.environment["PATH"] = f"{programs}:{os.environ['PATH']}"

    def remove(self):
        shutil.rmtree(self.folder)

    def options(self):
        return ["--home", str(self.home), "--user", "ann", "--now", self.clock]

    def driver(self, *arguments, text=None):
        """What `quelm-driver` prints; it must succeed."""
        done = subprocess.run([self.stage / "quelm-driver", *self.options(), *arguments], input=text, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=self.environment,
                              cwd=self.work, timeout=60)
        if done.returncode != 0:
            raise AssertionError(f"quelm-driver {' '.join(arguments)}: {done.stderr}")
        return done.stdout

    def start_over(self):
        """Forgets what the user chose; phonebooks stay."""
        shutil.rmtree(self.folder / "user")
        self._make_user()

    def use_language(self, language):
        self.environment["LANGUAGE"] = language


def application_of(process):
    """The program with that process number on the accessibility bus; nothing before it has come."""
    screen = Atspi.get_desktop(0)
    for index in range(screen.get_child_count()):
        try:
            application = screen.get_child_at_index(index)
            if application and application.get_process_id() == process:
                return application
        except GLib.Error:  # another program that is just going
            continue
    return None


class Desktop:
    """The program. It must end by itself, without having said anything on standard error."""

    def __init__(self, installation, *arguments):
        self.said = installation.folder / "desktop.errors"
        with open(self.said, "wb") as errors:
            self.process = subprocess.Popen(
                [installation.stage / "quelm-desktop", *installation.options(), *arguments], stderr=errors,
                stdin=subprocess.DEVNULL, env=installation.environment, cwd=installation.work)
        self.application = wait_for(self._find_application, "the program to appear")

    def _find_application(self):
        if self.process.poll() is not None:
            raise AssertionError(f"quelm-desktop ended by itself with {self.process.returncode}: {self.errors()}")
        return application_of(self.process.pid)

    def errors(self):
        return self.said.read_text(errors="replace")

    def shown(self):
        """The fixed names of the windows on the screen, the oldest first."""
        return [one.get_description() for one in self._windows() if has(one, State.SHOWING)]

    def _windows(self):
        found = [self.application.get_child_at_index(index)
                 for index in range(self.application.get_child_count())]
        return [one for one in found if one is not None]

    def window(self, fixed_name):
        """The window of that name, once it is on the screen and has the keys."""

        def find():
            if self.process.poll() is not None:
                raise AssertionError(f"quelm-desktop ended with {self.process.returncode}: {self.errors()}")
            return next((one for one in self._windows() if one.get_description() == fixed_name and
                         has(one, State.SHOWING) and has(one, State.ACTIVE)), None)

        return Window(wait_for(find, lambda: f"{fixed_name} to have the keys; on the screen are {self.shown()}"))

    def main(self):
        return self.window("Main Driver Window")

    def fax_setup(self):
        """Opens the fax dialog from the main window."""
        self.main().press("Main Fax Setup Button")
        return self.window("Lan Fax Window")

    def message(self, main):
        """What the main window tells, once it tells something."""
        bar = main.control("Main Message")
        return wait_for(lambda: bar.showing and bar.text, "a message in the main window")

    def answer(self, yes):
        """Answers the question on the screen, and gives its text."""
        question = self.window("Question")
        text = question_text(question)
        question.press("Question Yes" if yes else "Question No")
        question.await_gone()
        return text

    def quit(self):
        """Ends the program by its own key, and returns its exit status."""
        self.main().keys("ctrl+q")
        return self.ended()

    def ended(self):
        return wait_for(lambda: (self.process.poll() is not None) and [self.process.returncode],
                        "the program's end")[0]

    def end_at_once(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()


def question_text(question):
    """What a message dialog says."""
    texts = [one.get_name() for one in below(question.accessible) if one.get_role() == Atspi.Role.LABEL]
    return "\n".join(texts).rstrip("\n")


def screen_picture(file):
    run("import", "-window", "root", str(file))
