#!/usr/bin/env bash
# A source whose formatting is off is found and mended, wherever it lies, and what was built is not looked at.
# SPDX-License-Identifier: LGPL-2.1-or-later
source "$(dirname "$0")/shell_test.sh"

project="$work/project"
mkdir -p "$project/base" "$project/build" "$project/tools"
cp "$root"/tools/{format,list-sources,list-files} "$project/tools"
cp "$root/.clang-format" "$project"
printf 'int  wrong ;\n' >"$project/build/generated.cpp"
printf 'int right;\n' >"$project/base/right.cpp"
run "$project/tools/format" --check
expect_status 0

printf 'int right;\nint  wrong ;\n' >"$project/base/wrong.h"
run "$project/tools/format" --check
expect_status 1
expect_text "base/wrong.h:2: is not formatted"
expect_no_text "right.cpp"
run "$project/tools/format" --check base/right.cpp
expect_status 0
run "$project/tools/format"
expect_status 0
run cat "$project/base/wrong.h"
expect_output "int right;
int wrong;"

# One statement has no braces, and what stands in a lambda is laid out as elsewhere.
printf 'void act(int x)\n{\n    call(false, [&] {\n        if (x) {\n            x = 2;\n        }\n        return x;\n    });\n}\n' \
    >"$project/base/braces.cpp"
run "$project/tools/format" --check
expect_status 1
expect_text "base/braces.cpp:4: is not formatted"
run "$project/tools/format" base/braces.cpp
run cat "$project/base/braces.cpp"
expect_output "void act(int x)
{
    call(false, [&] {
        if (x)
            x = 2;
        return x;
    });
}"

# Includes stand in their order: the file's own header, ours, those of others, the standard library's.
printf '#include <string>\n#include <glib.h>\n#include "base/right.h"\n#include "base/order.h"\n' >"$project/base/order.cpp"
run "$project/tools/format" base/order.cpp
run cat "$project/base/order.cpp"
expect_output '#include "base/order.h"

#include "base/right.h"

#include <glib.h>

#include <string>'

rm -r "$project/base"
run "$project/tools/format" --check
expect_status 2
finish
