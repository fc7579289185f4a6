#!/usr/bin/env bash
# The icons have the sizes of their folders, and are drawn from their source: icons_test.sh
# SPDX-License-Identifier: LGPL-2.1-or-later
set -euo pipefail
project=$(cd "$(dirname "$0")/../.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() {
    echo "$1" >&2
    exit 1
}

icons=$project/packaging/icons
for size in 16 22 24 32 48 64 128 256; do
    file=hicolor/${size}x$size/apps/net.quelm.Desktop.png
    [ "$(identify -format '%wx%h' "$icons/$file")" = "${size}x$size" ] || fail "$file has another size"
done
"$project/icon/draw.sh" "$work"
for file in $(cd "$icons" && find . -name '*.png') base/Fax/AddRecipient.gif quelm-driver-48.png; do
    old=$icons/$file
    [ -f "$old" ] || old=$project/icon/$file
    # Another version of the tools may write another file of the same picture.
    [ "$(compare -fuzz 10% -metric AE "$old" "$work/$file" null: 2>&1)" = 0 ] || fail "$file is not what icon/draw.sh draws"
done
