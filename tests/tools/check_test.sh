#!/usr/bin/env bash
# The quick check looks at what was changed, and runs the tests of the rooms that it lies in.
# SPDX-License-Identifier: LGPL-2.1-or-later
source "$(dirname "$0")/shell_test.sh"

# A small project under version control; cmake and ctest note how they are called, and ctest has results.
project="$work/project"
journal="$work/journal"
mkdir -p "$project/tools" "$project/model" "$project/docs" "$project/driver/core" "$work/bin"
for room in model driver/core layers library; do
    mkdir -p "$project/tests/$room"
    printf '# Tests.\n# SPDX-License-Identifier: LGPL-2.1-or-later\n' >"$project/tests/$room/CMakeLists.txt"
done
cp "$root"/tools/{check,format,steps.sh,tally.sh,check-words,check-licences} "$project/tools"
cp "$root/.clang-format" "$project"
printf '// One.\n// SPDX-License-Identifier: LGPL-2.1-or-later\nint one;\n' >"$project/model/one.cpp"
printf 'int two;\n' >"$project/driver/core/two.h"
program() { printf '#!/bin/sh\n%s\n' "$2" >"$work/bin/$1"; chmod +x "$work/bin/$1"; }
program cmake "echo \"cmake \$*\" >>$journal"
program ctest "echo \"ctest \$*\" >>$journal
mkdir -p build/any/test-results
printf '<testsuites tests=\"5\" failures=\"0\" disabled=\"0\" errors=\"0\" name=\"x\">\n' >build/any/test-results/one.xml
printf '<testsuites tests=\"2\" failures=\"0\" disabled=\"0\" errors=\"0\" name=\"x\">\n' >build/any/test-results/two.xml
printf '<testsuites tests=\"9\" failures=\"1\" disabled=\"0\" errors=\"0\" name=\"x\">\n' >build/any/test-results/bad.xml
while [ \"\$1\" != --output-junit ]; do shift; done
printf '<testsuite name=\"x\"\n tests=\"3\"\n failures=\"0\"\n disabled=\"0\"\n skipped=\"0\"\n>\n' >\"\$2\""
git_here() { git -C "$project" -c user.name=Ann -c user.email=ann@example.org "$@" >/dev/null 2>&1; }
git_here init
printf 'build/\n' >"$project/.gitignore"
git_here add . && git_here commit -m First

quick_check() {
    : >"$journal"
    run env "PATH=$work/bin:$PATH" PRESET=any "$project/tools/check" "$@"
}
expect_call() { grep -qF -- "$1" "$journal" || complain "\"$1\" is not among the calls: $(cat "$journal")"; }
expect_no_call() { if grep -qF -- "$1" "$journal"; then complain "\"$1\" was called"; fi; }

quick_check
expect_status 0
expect_no_text "the formatting"
expect_call "cmake --build --preset any --target layers_tests"
expect_call "--tests-regex ^(layers)\\."
expect_text "3 ok, 0 not, in them 7 test cases"
expect_text "9 passed, 0 failed"

# Changed, new and removed files, and one in no room.
printf '// One.\n// SPDX-License-Identifier: LGPL-2.1-or-later\nint one = 1;\n' >"$project/model/one.cpp"
printf 'Text.\n' >"$project/docs/guide.md"
rm "$project/driver/core/two.h"
quick_check
expect_status 0
expect_text "the formatting"
expect_call "--target layers_tests driver_core_tests model_tests"
expect_call "--tests-regex ^(layers|driver/core|model)\\."
expect_text "12 passed, 0 failed"

printf '// One.\n// SPDX-License-Identifier: LGPL-2.1-or-later\nint  one=1;\n' >"$project/model/one.cpp"
quick_check
expect_status 1
expect_text "model/one.cpp:3: is not formatted"
expect_text "1 failed"
git_here checkout .

# A test is of its room; what sanitizers would change has a build of its own; and rooms can be named.
printf '// A test.\n// SPDX-License-Identifier: LGPL-2.1-or-later\nint test;\n' >"$project/tests/library/exports_test.cpp"
quick_check
expect_call "--preset any --target layers_tests"
expect_call "--preset bench --target library_tests"
quick_check driver/core
expect_call "--tests-regex ^(layers|driver/core)\\."
expect_no_call library
# Rooms with long names, and many of them.
long=component/a-room-whose-name-takes-as-much-room-as-a-name-may-take-in-a-path
for number in 1 2 3 4; do
    mkdir -p "$project/tests/$long-$number"
    cp "$project/tests/layers/CMakeLists.txt" "$project/tests/$long-$number"
done
quick_check $long-{1,2,3,4}
expect_status 0
expect_text "the tests of layers $long-1"
quick_check nowhere
expect_status 2
expect_text "there are no tests in tests/nowhere"

# Words are looked at in what was changed, and a build that fails runs no tests.
printf 'FIX''ME\n' >"$project/docs/guide.md"
quick_check
expect_status 1
expect_text "something left undone"
rm "$project/docs/guide.md"
program cmake "echo no compiler; exit 1"
quick_check
expect_status 1
expect_text "no compiler"
expect_no_call ctest
finish
