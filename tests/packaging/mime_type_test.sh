#!/usr/bin/env bash
# Desktops know a phonebook by its ending, and by what it is when the ending is another: mime_type_test.sh BUILD
# SPDX-License-Identifier: LGPL-2.1-or-later
set -euo pipefail
build=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() {
    echo "$1" >&2
    exit 1
}

mkdir -p "$work/share/mime/packages" "$work/home"
cp "$build/desktop/net.quelm.Desktop.xml" "$work/share/mime/packages"
cp /usr/share/mime/packages/freedesktop.org.xml "$work/share/mime/packages"
XDG_DATA_DIRS=$work/share update-mime-database "$work/share/mime" 2>&1 | tee "$work/said"
[ ! -s "$work/said" ] || fail "update-mime-database said something"

env HOME="$work/home" XDG_DATA_HOME="$work/home/data" XDG_CONFIG_HOME="$work/home/config" \
    "$build/stage/quelm-driver" --home "$build/stage" phonebook add --file "$work/book.xdb" Ann 555-0104
cp "$work/book.xdb" "$work/other"
printf 'SQLite format 3\0%084d' 0 >"$work/database"
type_of() {
    env HOME="$work/home" XDG_DATA_HOME="$work/home/data" XDG_DATA_DIRS="$work/share" /usr/bin/python3 -c '
import sys
from gi.repository import Gio
print(Gio.File.new_for_path(sys.argv[1]).query_info("standard::content-type", 0, None).get_content_type())' "$1"
}
for book in book.xdb other; do
    [ "$(type_of "$work/$book")" = application/x-quelm-phonebook ] || fail "$book is $(type_of "$work/$book")"
done
[ "$(type_of "$work/database")" = application/vnd.sqlite3 ] || fail "a database is $(type_of "$work/database")"
grep -q 'xml:lang="de"' "$work/share/mime/application/x-quelm-phonebook.xml" || fail "the type has no German name"
