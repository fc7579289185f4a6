# Counts tests for tools/run-tests: sourced, never run.
# SPDX-License-Identifier: LGPL-2.1-or-later
passed=0
failed=0
counted=

# Adds to the totals: count PASSED FAILED.
count() {
    passed=$((passed + $1))
    failed=$((failed + $2))
}

# The number that ctest's results hold under a name; nothing when they hold none.
result() { tr '\n' ' ' <"$1" | sed -n "s/.*<testsuite [^>]*[[:space:]]$2=\"\([0-9]*\)\".*/\1/p"; }

# Adds what ctest wrote with --output-junit: count_results FILE STATUS. Whatever did not pass failed: a test
# that was not run, and one that is disabled, too. Without readable results, without a test and when
# ctest ended badly for another reason than its tests, the whole run is one failure more. Sets `counted` to what
# was added, in words. False when something failed.
count_results() {
    local results=$1 status=$2 tests="" failures=0 kind
    if [ -r "$results" ]; then
        tests=$(result "$results" tests)
        for kind in failures disabled skipped; do
            failures=$((failures + $(result "$results" "$kind") + 0))
        done
    fi
    if [ "${tests:-0}" -eq 0 ] || { [ "$status" -ne 0 ] && [ "$failures" -eq 0 ]; }; then
        failures=$((failures + 1))
        tests=$((${tests:-0} + 1))
    fi
    count $((tests - failures)) "$failures"
    counted="$((tests - failures)) ok, $failures not"
    [ "$failures" -eq 0 ]
}

# What ctest's output says beside that tests passed: show_failures LOG.
show_failures() { grep -vE ' +Passed +[0-9.]+ sec$|^ +Start +[0-9]+:' "$1" | tail -n 400; }

# Prints the line that ends the run; false when something failed, and when nothing was run at all.
tally() {
    echo "$passed passed, $failed failed"
    [ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
}
