# SPDX-License-Identifier: LGPL-2.1-or-later
"""Makes a catalogue in which every text is 60 % longer, to see what a wordy language would do to the windows."""

import re
import subprocess

LANGUAGE = "xx"
LONGER = 1.6
FILLER = "en tovara lisum "

STRING = re.compile(r'^(msgid|msgid_plural|msgctxt|msgstr(?:\[\d\])?)? ?"(.*)"$')


def lengthened(text):
    """The text with further words in it, ahead of what ends it: a colon, dots, a line's end."""
    body = re.match(r"(.*?)((?:\\n|[\s:.?!>])*)$", text, re.DOTALL)
    more = round(len(body[1]) * (LONGER - 1))
    words = (FILLER * (more // len(FILLER) + 1))[:more].rstrip()
    return body[1] + (" " + words if words else "") + body[2]


def lengthened_catalogue(template):
    """The template's text with long translations of all its messages; the first one is its heading."""
    lines, key, messages = [], None, 0
    for line in template.splitlines():
        string = STRING.match(line)
        if string:
            key = string[1] or key
            messages += string[1] == "msgid"
            if key.startswith("msgstr") and messages > 1 and string[2]:
                line = line.replace(f'"{string[2]}"', f'"{lengthened(string[2])}"')
        lines.append(line)
    return "\n".join(lines) + "\n"


def write(template, locale_folder):
    """Compiles it to where the programs look for the language."""
    folder = locale_folder / LANGUAGE / "LC_MESSAGES"
    folder.mkdir(parents=True)
    english = subprocess.run(["msgen", "--no-wrap", str(template)], check=True, capture_output=True, text=True).stdout
    subprocess.run(["msgfmt", "-o", str(folder / "quelm-driver.mo"), "-"], check=True,
                   input=lengthened_catalogue(english), text=True)
