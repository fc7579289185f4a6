#!/bin/sh
# Draws the pictures below icon/ from their sources: GIF files for the dialogs, by the names that their
# definition gives, and the program's icon, which desktops find in packaging/icons/ by the program's name on them. The
# results are committed, so that a build needs neither tool.
# Needs rsvg-convert (librsvg2-bin) and ImageMagick's convert. Usage: icon/draw.sh [FOLDER]
# SPDX-License-Identifier: LGPL-2.1-or-later
set -eu

here=$(cd "$(dirname "$0")" && pwd)
out=${1:-$here}

# A GIF pixel is either there or not: the soft edges are mixed with a usual window background.
background='#f6f5f4'

for source in "$here"/source/*/*.svg; do
    name=${source#"$here/source/"}
    picture=$out/base/${name%.svg}.gif
    mkdir -p "$(dirname "$picture")"
    rsvg-convert --format=png "$source" |
        convert png:- \( +clone -alpha extract -threshold 15% \) \
            \( -clone 0 -background "$background" -alpha remove -alpha off \) \
            -delete 0 +swap -compose CopyOpacity -composite -strip -colors 64 "gif:$picture"
done

for size in 16 32 48; do
    rsvg-convert --format=png --width=$size --height=$size "$here/source/quelm-driver.svg" \
        >"$out/quelm-driver-$size.png"
done

icons=${1:-$here/../packaging/icons}
for size in 16 22 24 32 48 64 128 256; do
    mkdir -p "$icons/hicolor/${size}x$size/apps"
    rsvg-convert --format=png --width=$size --height=$size "$here/source/quelm-driver.svg" \
        >"$icons/hicolor/${size}x$size/apps/net.quelm.Desktop.png"
done
