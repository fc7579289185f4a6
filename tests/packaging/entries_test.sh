#!/usr/bin/env bash
# The desktop entries are what desktops take, name programs and an icon that are installed, and speak German:
# entries_test.sh BUILD
# SPDX-License-Identifier: LGPL-2.1-or-later
set -euo pipefail
project=$(cd "$(dirname "$0")/../.." && pwd)
folder=$1/desktop
fail() {
    echo "$1" >&2
    exit 1
}

entries=("$folder"/*.desktop)
[ "${#entries[@]}" -eq 2 ] || fail "there are ${#entries[@]} entries instead of 2: ${entries[*]}"
desktop-file-validate --warn-kde "${entries[@]}"
for entry in "${entries[@]}"; do
    value() { sed -n "s/^$1=//p" "$entry"; }
    for program in "$(value TryExec)" "$(value Exec | cut -d ' ' -f 1)"; do
        grep -qw -- "$program" "$project/cmake/InstallDriver.cmake" || fail "$entry: no program $program is installed"
    done
    [ -f "$project/packaging/icons/hicolor/48x48/apps/$(value Icon).png" ] || fail "$entry: no icon $(value Icon)"
    # As far as the catalogue has them.
    for text in Name Comment; do
        german=$(msggrep --no-wrap --msgid --fixed-strings -e "$(value $text)" "$project/po/de.po" |
            awk -v text="msgid \"$(value $text)\"" '$0 == text { getline; print }')
        [ -n "$german" ] || fail "$entry: the catalogue lacks its $text"
        [ "msgstr \"$(value "$text\\[de\\]")\"" = "$german" ] || fail "$entry: its $text is not German: $german"
    done
done
