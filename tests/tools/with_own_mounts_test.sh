#!/usr/bin/env bash
# Whatever a command mounts and starts is gone when it ends, fails or is killed. Takes root.
# SPDX-License-Identifier: LGPL-2.1-or-later
source "$(dirname "$0")/shell_test.sh"
export TMPDIR=$work
mark=$((RANDOM + 100000)).$$
folders() { find "$work" -mindepth 1 -maxdepth 1 -name 'quelm-bare-*'; }
# Processes that were started here, by their unusual argument.
processes() { grep -lzx "$mark" /proc/[0-9]*/cmdline 2>/dev/null; }
mounts() { grep -F "$work" /proc/self/mountinfo; }
expect_nothing() {
    [ -z "$(mounts)" ] || complain "mounts are left: $(mounts)"
    local tries=0
    while [ -n "$(processes)" ] && [ "$tries" -lt 200 ]; do
        tries=$((tries + 1))
        sleep 0.05
    done
    [ -z "$(processes)" ] || complain "processes are left: $(processes)"
}
cat >"$work/command" <<'END'
#!/usr/bin/env bash
# command STATUS MARK FOLDER: mounts, leaves a process behind, tells, and ends with the status, or never.
mkdir -p "$3/here"
mount -t tmpfs tmpfs "$3/here"
echo full >"$3/here/file"
bash -c 'trap "" HUP TERM; while :; do read -r -t 60 _ <> <(:); done' "$2" "$2" </dev/null >/dev/null 2>&1 &
echo "in $3" >"${0%/*}/told"
[ "$1" = never ] || exit "$1"
wait
END
chmod +x "$work/command"

for status in 0 3; do
    run "$root/tools/with-own-mounts" "$work/command" "$status" "$mark"
    expect_status "$status"
    [ -s "$work/told" ] || complain "the command was not run"
    [ -z "$(folders)" ] || complain "the folder is left: $(folders)"
    expect_nothing
    rm -f "$work/told"
done

for signal in TERM KILL; do
    "$root/tools/with-own-mounts" "$work/command" never "$mark" >/dev/null 2>&1 &
    script=$!
    until [ -s "$work/told" ]; do
        kill -0 "$script" 2>/dev/null || { complain "the command was not run"; break; }
        sleep 0.05
    done
    [ -n "$(processes)" ] || complain "the command left no process to end"
    kill "-$signal" "$script"
    wait "$script" 2>/dev/null
    expect_nothing
    [ "$signal" = KILL ] || [ -z "$(folders)" ] || complain "the folder is left: $(folders)"
    rm -f "$work/told"
done
finish
