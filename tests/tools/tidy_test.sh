#!/usr/bin/env bash
# What clang-tidy finds is shown until it is mended, and what it has looked at is looked at again only when it changed.
# SPDX-License-Identifier: LGPL-2.1-or-later
source "$(dirname "$0")/shell_test.sh"

export XDG_CACHE_HOME="$work/cache"

# A project in a folder of its own, with a build that compiles its sources: project FOLDER.
project() {
    mkdir -p "$1/tools" "$1/base" "$1/build/any"
    cp -R "$root/tools/tidy" "$root/tools/tidy_scope" "$1/tools"
    cp "$root/.clang-tidy" "$root/.clang-format" "$1"
    printf '#include "base/number.h"\n#include <string>\nint twice(int x) { return number(x) * 2; }\n' >"$1/base/twice.cpp"
    printf 'inline int number(int x) { return x; }\n' >"$1/base/number.h"
    printf 'int once(int x) { return x; }\n' >"$1/base/once.cpp"
    local separator='[' source
    for source in twice once; do
        printf '%s{"directory": "%s", "file": "%s", "command": "clang++ -I%s -std=c++20 -o x.o -c %s"}' \
            "$separator" "$1/build/any" "$1/base/$source.cpp" "$1" "$1/base/$source.cpp"
        separator=','
    done >"$1/build/any/compile_commands.json"
    echo ']' >>"$1/build/any/compile_commands.json"
}
tidy() { run "$1/tools/tidy" -p "$1/build/any" "${@:2}"; }

one="$work/one"
project "$one"
tidy "$one"
expect_output "tidy: 2 sources, 0 of them unchanged, findings in 0"
expect_status 0
tidy "$one"
expect_output "tidy: 2 sources, 2 of them unchanged, findings in 0"
expect_status 0

# Another clone has what this one has looked at.
project "$work/other"
tidy "$work/other"
expect_output "tidy: 2 sources, 2 of them unchanged, findings in 0"

# Findings in a source and in a header of ours; they stay, and what is beside them is not looked at again.
printf '#include "base/number.h"\n#include <string>\nint* twice(int x) { return number(x) ? new int(x) : 0; }\n' >"$one/base/twice.cpp"
for _ in first second; do
    tidy "$one"
    expect_status 1
    expect_text "base/twice.cpp:3:"
    expect_text "modernize-use-nullptr"
    expect_text "tidy: 2 sources, 1 of them unchanged, findings in 1"
done
printf '#include "base/number.h"\n#include <string>\nint twice(int x) { return number(x) * 2; }\n' >"$one/base/twice.cpp"
tidy "$one"
expect_output "tidy: 2 sources, 2 of them unchanged, findings in 0"
printf 'struct Base { virtual int n() = 0; };\nstruct One : Base { virtual int n(); };\ninline int number(int x) { return x; }\n' >"$one/base/number.h"
tidy "$one"
expect_status 1
expect_text "base/number.h:2:"
expect_text "modernize-use-override"

# The analyzer looks, too; and a source that the compiler refuses is no clean one.
printf 'int twice(int x) { int* none = nullptr; if (x > 2) { none = &x; } return *none; }\n' >"$one/base/twice.cpp"
tidy "$one" twice
expect_status 1
expect_text "clang-analyzer-core.NullDereference"
printf 'int twice(int x) { return nothing; }\n' >"$one/base/twice.cpp"
tidy "$one" twice
expect_status 1
expect_text "undeclared identifier"

# Other rules and other options are a reason to look again.
tidy "$one" once
expect_output "tidy: 1 sources, 1 of them unchanged, findings in 0"
sed -i 's/-std=c++20/-std=c++20 -DOTHER/g' "$one/build/any/compile_commands.json"
tidy "$one" once
expect_output "tidy: 1 sources, 0 of them unchanged, findings in 0"
printf '# Changed.\n' >>"$one/.clang-tidy"
tidy "$one" once
expect_output "tidy: 1 sources, 0 of them unchanged, findings in 0"

# The driver's tests go to g++ as well, which warns of something else.
mkdir -p "$one/tests/driver" "$one/build/gcc"
printf 'int pick(int x) { if (x == 1) { return 2; } else if (x == 1) { return 3; } return 4; }\n' >"$one/tests/driver/pick.cpp"
for compiler in clang++ g++; do
    folder=$one/build/any
    [ $compiler = clang++ ] || folder=$one/build/gcc
    printf '[{"directory": "%s", "file": "%s", "command": "%s -c %s"}]' "$folder" "$one/tests/driver/pick.cpp" \
        "$compiler $([ $compiler = clang++ ] || echo -Wduplicated-cond -Werror)" "$one/tests/driver/pick.cpp" \
        >"$folder/compile_commands.json"
done
sed -i 's/bugprone-\*/bugprone-use-after-move/' "$one/.clang-tidy"
tidy "$one"
expect_output "tidy: 1 sources, 0 of them unchanged, findings in 0"
tidy "$one" -g "$one/build/gcc"
expect_status 1
expect_text "duplicated"
expect_text "tidy: 1 sources, 0 of them unchanged, findings in 1"

tidy "$one" no-such-source
expect_status 2
expect_text "no source matches"
rm "$one/build/any/compile_commands.json"
tidy "$one"
expect_status 2
expect_text "configure that build first"
finish
