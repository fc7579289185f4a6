#!/usr/bin/env bash
# A source whose formatting is off is found, wherever it lies, and what was built is not looked at.
source "$(dirname "$0")/shell_test.sh"

project="$work/project"
mkdir -p "$project/model" "$project/build" "$project/tools"
cp "$root"/tools/{check-format,list-sources,list-files} "$project/tools"
cp "$root/.clang-format" "$project"
printf 'int  wrong ;\n' >"$project/build/generated.cpp"
printf 'int right;\n' >"$project/model/right.cpp"
run "$project/tools/check-format"
expect_status 0

printf 'int  wrong ;\n' >"$project/model/wrong.h"
run "$project/tools/check-format"
expect_failure
expect_text "model/wrong.h:1"

rm "$project/model/wrong.h" "$project/model/right.cpp"
run "$project/tools/check-format"
expect_failure
finish
