# What the tests of the scripts share: sourced first, with `root` and a temporary folder `work` set.
# SPDX-License-Identifier: LGPL-2.1-or-later
set -uo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
complaints=0

complain() {
    printf '%s:%s: %s\n' "$(basename "$0")" "${BASH_LINENO[1]}" "$1"
    complaints=$((complaints + 1))
}

# Runs a command; its output, both streams, is kept in `output` and its status in `status`.
run() {
    output=$("$@" 2>&1 </dev/null)
    status=$?
}

expect_status() { [ "$status" -eq "$1" ] || complain "status $status instead of $1, with: $output"; }
expect_failure() { [ "$status" -ne 0 ] || complain "no failure, but: $output"; }
expect_output() { [ "$output" = "$1" ] || complain "the output is \"$output\" instead of \"$1\""; }
expect_text() { [[ $output == *"$1"* ]] || complain "the output lacks \"$1\": $output"; }
expect_no_text() { [[ $output != *"$1"* ]] || complain "the output holds \"$1\": $output"; }

# Ends the test: the last line of each.
finish() { exit $((complaints > 0)); }
