#!/usr/bin/env bash
# Words that have no place in the project are found, and their likes are left alone.
# SPDX-License-Identifier: LGPL-2.1-or-later
source "$(dirname "$0")/shell_test.sh"

# Written in two halves, for these words have no place here either.
refused=(
    "see /wo""rk/main/file" "(/tm""p/build-x/y)"
    "from regi""stry.npmjs.org" "http://de""b.debian.org/debian"
    "as the specif""ication says" "sp""ec.md" "what the sp""ec wants" "Par""t 3.1" "Par""ts 6.2 to 6.5" "des""ign.md"
    "TO""DO: more" "fix""me" "GTEST_""SKIP()" "TEST(A, DIS""ABLED_B)"
)
for text in "${refused[@]}"; do
    printf 'First line.\n%s\n' "$text" >"$work/file"
    run "$root/tools/check-words" "$work/file"
    expect_status 1
    expect_text "$work/file:2:$text"
done

accepted=("specific" "a part of 3.1 kilograms" "/network/share" "mastodons" "a special design" "homework/" "spectrum")
printf '%s\n' "${accepted[@]}" >"$work/file"
run "$root/tools/check-words" "$work/file"
expect_output ""
expect_status 0

run "$root/tools/check-words"
expect_output ""
expect_status 0
finish
