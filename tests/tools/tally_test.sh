#!/usr/bin/env bash
# The tally counts what ctest really ran, and takes everything that did not pass as failed.
# SPDX-License-Identifier: LGPL-2.1-or-later
source "$(dirname "$0")/shell_test.sh"
source "$root/tools/tally.sh"

# Runs ctest on tests that the arguments describe in CMake's words, and prints the tally's closing line.
tally_of() {
    rm -rf "$work/run" && mkdir "$work/run"
    printf '%s\n' "$@" >"$work/run/CTestTestfile.cmake"
    (
        cd "$work/run" || exit 1
        ctest --output-junit "$work/run/results.xml" >log 2>&1
        count_results "$work/run/results.xml" "$?"
        tally
    )
}

run tally_of 'add_test(a true)' 'add_test(b true)'
expect_output "2 passed, 0 failed"
expect_status 0

run tally_of 'add_test(a true)' 'add_test(breaks false)' 'add_test(c true)'
expect_output "2 passed, 1 failed"
expect_status 1
run show_failures "$work/run/log"
expect_text "breaks"
expect_no_text "Passed"

run tally_of 'add_test(a true)' 'add_test(lost "/nowhere/to/be/found")'
expect_output "1 passed, 1 failed"
expect_status 1

run tally_of 'add_test(a true)' 'add_test(off true)' 'set_tests_properties(off PROPERTIES DISABLED ON)'
expect_output "1 passed, 1 failed"
expect_status 1

run tally_of 'add_test(a true)' 'add_test(skips true)' \
    'set_tests_properties(skips PROPERTIES SKIP_REGULAR_EXPRESSION "" SKIP_RETURN_CODE 0)'
expect_output "1 passed, 1 failed"

run tally_of ''
expect_output "0 passed, 1 failed"
expect_status 1

# A text that a test prints must not be taken for the results.
run tally_of 'add_test(a cmake -E echo "<testsuite tests=\"900\" failures=\"0\" skipped=\"0\" disabled=\"0\">")'
expect_output "1 passed, 0 failed"

without_results() { (count_results "$work/none.xml" 0; tally); }
run without_results
expect_output "0 passed, 1 failed"

ended_badly() {
    printf '<testsuite name="x"\n\ttests="3"\n\tfailures="0"\n\tdisabled="0"\n\tskipped="0"\n>\n' >"$work/bad.xml"
    (count_results "$work/bad.xml" 8; tally)
}
run ended_badly
expect_output "3 passed, 1 failed"

several() { (count 2 0; count 0 1; count 5 2; tally); }
run several
expect_output "7 passed, 3 failed"

run tally
expect_output "0 passed, 0 failed"
expect_status 1
finish
