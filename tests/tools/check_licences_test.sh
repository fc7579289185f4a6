#!/usr/bin/env bash
# A source without the line of its licence is found, whatever language it is in; texts need none.
# SPDX-License-Identifier: LGPL-2.1-or-later
source "$(dirname "$0")/shell_test.sh"

project="$work/project"
line='SPDX-License-Identifier: LGPL-2.1-or-later'
mkdir -p "$project/base" "$project/tools" "$project/docs"
cp "$root"/tools/{check-licences,list-files} "$project/tools"
rm "$project/tools/list-files"
printf '#!/bin/sh\n# %s\nfind . -type f | sed s,^./,,\n' "$line" >"$project/tools/list-files"
chmod +x "$project/tools/list-files"
printf '// A file.\n// %s\nint right;\n' "$line" >"$project/base/right.cpp"
printf 'Text.\n' >"$project/docs/guide.md"
run "$project/tools/check-licences"
expect_status 0
expect_output ""

for file in base/wrong.h base/CMakeLists.txt base/wrong.cmake tools/wrong.py tools/wrong.sh base/wrong.cpp.in; do
    printf '# A file.\n' >"$project/$file"
    run "$project/tools/check-licences"
    expect_status 1
    expect_text "$file: has no line"
    expect_no_text "right.cpp"
    rm "$project/$file"
done
printf '#!/bin/sh\necho\n' >"$project/tools/wrong"
run "$project/tools/check-licences"
expect_status 1
expect_text "tools/wrong: has no line"
run "$project/tools/check-licences" base/right.cpp docs/guide.md
expect_status 0

rm -r "$project/base" "$project/tools/wrong"
printf '#!/bin/sh\necho docs/guide.md\n' >"$project/tools/list-files"
run "$project/tools/check-licences"
expect_status 2
finish
