#!/usr/bin/env bash
# The demo writes its files, and opens the desktop where there is a display. The programs it calls are stand-ins.
# SPDX-License-Identifier: LGPL-2.1-or-later
source "$(dirname "$0")/shell_test.sh"

mkdir -p "$work/tools" "$work/samples" "$work/build/release/stage"
cp "$root/tools/demo" "$work/tools/"
stand_in() {
    printf '#!/bin/sh\n%s\n' "$2" >"$work/$1"
    chmod +x "$work/$1"
}
stand_in build/release/stage/quelm-driver 'for last; do :; done; echo "%%OID_ATT_JOB" >"$last"'
stand_in tools/draw-pages 'touch "$2"'
stand_in build/release/stage/quelm-desktop 'echo "desktop: $*, settings in $XDG_CONFIG_HOME"'

unset DISPLAY WAYLAND_DISPLAY
run "$work/tools/demo"
expect_status 0
expect_text "demo/letter-fax.ps"
expect_text "OID_ATT_JOB"
expect_no_text "esktop"

export DISPLAY=:99
run "$work/tools/demo"
expect_status 0
expect_text "desktop: samples/letter.ps, settings in /"
expect_text "OID_ATT_JOB"

stand_in build/release/stage/quelm-desktop 'exit 1'
run "$work/tools/demo"
expect_status 0
expect_text "The desktop could not be opened"
finish
