#!/usr/bin/env bash
# The demo with the programs of a build, without a display: demo_test.sh STAGE
# SPDX-License-Identifier: LGPL-2.1-or-later
source "$(dirname "$0")/../tools/shell_test.sh"

mkdir -p "$work/tools" "$work/build/release"
cp "$root/tools/demo" "$root/tools/draw-pages" "$work/tools/"
cp -r "$root/samples" "$work/"
ln -s "$1" "$work/build/release/stage"
unset DISPLAY WAYLAND_DISPLAY
export LC_ALL=C.UTF-8 LANGUAGE=

# What an earlier demo left has no say.
mkdir "$work/demo"
touch "$work/demo/left"
run "$work/tools/demo"
expect_status 0
expect_text "Brackwater Corner Shop (5550108812): busy"
expect_text "Brackwater Corner Shop (5550108812): sent, 3 pages"
expect_text "Ελένη Παπαδοπούλου (0015550103201): sent, 3 pages"
expect_text "Ann Marlow (5550104477): sent, 3 pages"
expect_text "job 1: done, 3 of 3 sent"
expect_no_text "quelm-driver:"
expect_no_text "warning"
[ ! -e "$work/demo/left" ] || complain "an earlier demo's file is still there"

# Everybody has the same three pages, each of them a picture with something on it.
pictures=()
for number in 5550104477 5550108812 0015550103201; do
    pictures+=("$work/demo/received/$number"-{1,2,3}.png)
    [ ! -e "$work/demo/received/$number-4.png" ] || complain "$number has a fourth page"
done
identify -format '%# %k\n' "${pictures[@]}" >"$work/pages" 2>&1 || complain "no pictures: $(cat "$work/pages")"
[ "$(wc -l <"$work/pages")" -eq 9 ] || complain "pictures are missing: $(cat "$work/pages")"
[ "$(sort -u "$work/pages" | wc -l)" -eq 3 ] || complain "not all have the same pages: $(cat "$work/pages")"
! grep ' 1$' "$work/pages" || complain "a page is empty"
[ "$(head -c 4 "$work/demo/confirmation.pdf")" = %PDF ] || complain "no confirmation sheet"
cmp -s <(head -c 8 "$work/demo/letter-fax.png") <(printf '\211PNG\r\n\032\n') || complain "no picture of the job"

# Nothing serves any more.
grep -E '^(jobs|directory): 127' "$work/demo/device.log" >"$work/places"
[ "$(wc -l <"$work/places")" -eq 2 ] || complain "the device has no directory: $(cat "$work/places")"
while read -r _ place; do
    ! (exec 3<>"/dev/tcp/${place%:*}/${place#*:}") 2>/dev/null || complain "$place still serves"
done <"$work/places"
finish
