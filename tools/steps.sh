# The steps of tools/run-tests and tools/check: sourced in the project's root, never run. What a step printed is shown
# when it failed; all of it stays in the folder `logs`, which the caller names.
# SPDX-License-Identifier: LGPL-2.1-or-later
source tools/tally.sh

# Takes a step's name for a file: log_of NAME. A name that holds many rooms is cut, and marked by its sum.
log_of() {
    local file=${1//[^a-z0-9]/-}
    if [ ${#file} -gt 200 ]; then file=${file:0:200}-$(cksum <<<"$1" | cut -d ' ' -f 1); fi
    echo "$logs/$file.log"
}

# Runs a command as one test of this run: check NAME COMMAND...
check() {
    local name=$1 log start=$SECONDS
    log=$(log_of "$name")
    shift
    printf '%-36s ' "$name"
    if "$@" >"$log" 2>&1 </dev/null; then
        count 1 0
        echo "ok, $((SECONDS - start)) s"
    else
        count 0 1
        echo "FAILED, $((SECONDS - start)) s:"
        tail -n 200 "$log"
        return 1
    fi
}

# Builds one configuration, or only some targets of it: build PRESET [TARGET...].
build() {
    local preset=$1
    shift
    cmake --preset "$preset" && cmake --build --preset "$preset" ${1+--target "$@"}
}

# Runs tests of a build: run_tests NAME PRESET [OPTION FOR CTEST...]. More run at once than there are processors:
# many of them wait, for servers and for screens. Who is not root is told that tests are left out.
run_tests() {
    local name=$1 preset=$2 start=$SECONDS log results cases suites
    log=$(log_of "$name")
    rm -rf "build/$preset/test-results"
    results=${log%.log}.xml
    shift 2
    if [ "$(id -u)" -ne 0 ]; then
        echo "The tests with the label root, which become other users, are left out: they take root."
        set -- "$@" --label-exclude '^root$'
    fi
    printf '%-36s ' "$name"
    ctest --preset "$preset" --parallel $(($(nproc) + 1)) --output-junit "$results" "$@" >"$log" 2>&1 </dev/null
    count_results "$results" "$?"
    local failed_here=$?
    # A suite that passed counts as all the cases that it had.
    read -r cases suites < <(sed -n 's/^<testsuites tests="\([0-9]*\)" failures="0".* errors="0".*/\1/p' \
        "build/$preset/test-results/"*.xml 2>/dev/null | awk '{ sum += $1 } END { print sum + 0, NR }')
    count $((cases - suites)) 0
    echo "$counted, in them $cases test cases, $((SECONDS - start)) s"
    [ "$failed_here" -eq 0 ] || show_failures "$log"
    return "$failed_here"
}
