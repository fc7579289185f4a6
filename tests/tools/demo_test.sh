#!/usr/bin/env bash
# The demo starts a device, faxes by it, opens the desktop where there is a display, and stops what it started. The
# programs it calls are stand-ins; tests/journeys/demo_test.sh runs it with the real ones.
# SPDX-License-Identifier: LGPL-2.1-or-later
source "$(dirname "$0")/shell_test.sh"

mkdir -p "$work/tools" "$work/samples" "$work/build/release/stage" "$work/bin"
cp "$root/tools/demo" "$work/tools/"
stand_in() {
    printf '#!/bin/sh\n%s\n' "$2" >"$work/$1"
    chmod +x "$work/$1"
}
# Says what a device says, and serves until it is told to stop.
device() {
    stand_in build/release/stage/quelm-device "
        mkdir -p demo/device/received/5550104477 demo/device/reports
        touch demo/device/received/5550104477/call-1.tif demo/device/reports/job-1.pdf
        echo \"\$*\" >'$work/arguments'
        sleep 300 & nothing=\$!
        trap 'kill \$nothing; echo stopped >>$work/stopped; exit 143' TERM
        printf '%s\\n' 'jobs: 127.0.0.1:9' 'jobs: [::1]:9' 'panel: http://127.0.0.1:8/' 'snmp: 127.0.0.1:7' ready
        printf '%s\\n' 'call 1: job 1, 5550104477: busy, 4 s' 'trouble: of no weight' '$1' \\
            'job 1: confirmation sheet job-1.pdf'
        wait"
}
expect_stopped() {
    [ "$(cat "$work/stopped" 2>/dev/null)" = stopped ] || complain "the device was not stopped once"
    rm -f "$work/stopped"
}
device 'job 1: done, 3 of 3 sent'
stand_in build/release/stage/quelm-driver '
    for last; do :; done
    case "$last" in
    *.ps) echo "%%OID_ATT_JOB" >"$last" ;;
    *) echo "sent to $last" ;;
    esac'
stand_in tools/draw-pages 'touch "$2"'
stand_in bin/convert 'for last; do :; done; echo picture >"$last"'
stand_in build/release/stage/quelm-desktop '
    echo "desktop: $*"
    cat "$XDG_CONFIG_HOME/quelm/desktop.conf"'
export PATH="$work/bin:$PATH"

unset DISPLAY WAYLAND_DISPLAY
run "$work/tools/demo"
expect_status 0
expect_text "sent to 127.0.0.1:9"
expect_text "  call 1: job 1, Ann Marlow (5550104477): busy, 4 s"
expect_text "  trouble: of no weight"
expect_no_text "jobs:"
expect_text "demo/letter-fax.ps"
expect_text "OID_ATT_JOB"
expect_no_text "esktop"
expect_stopped
[ -s "$work/demo/received/5550104477-%d.png" ] || complain "no picture of what was received"
[ -f "$work/demo/confirmation.pdf" ] || complain "no confirmation sheet"
grep -q -- '--port 0 --panel 0 --snmp 0' "$work/arguments" || complain "the device does not take any free port"

export DISPLAY=:99
run "$work/tools/demo"
expect_status 0
expect_text "desktop: --device-snmp 127.0.0.1:7 samples/letter.ps"
expect_text "kind=device"
expect_text "device=127.0.0.1:9"
expect_text "http://127.0.0.1:8/"
expect_stopped

stand_in build/release/stage/quelm-desktop 'exit 1'
run "$work/tools/demo"
expect_status 0
expect_text "The desktop could not be opened"
expect_stopped

# Whoever presses Ctrl-C, or closes the terminal, leaves no device behind.
for signal in INT HUP TERM; do
    stand_in build/release/stage/quelm-desktop "kill -$signal \$PPID"
    run "$work/tools/demo"
    expect_status 1
    expect_stopped
done

# What goes wrong ends it.
unset DISPLAY
stand_in bin/convert 'echo "no room for pictures" >&2; exit 1'
run "$work/tools/demo"
expect_status 1
expect_text "no room for pictures"
expect_stopped

device 'job 1: done, 2 of 3 sent'
run "$work/tools/demo"
expect_status 1
expect_text "tools/demo: not everybody has received the fax"
expect_stopped

stand_in build/release/stage/quelm-driver 'echo "no such document" >&2; exit 2'
run "$work/tools/demo"
expect_status 1
expect_text "no such document"
expect_stopped

stand_in build/release/stage/quelm-device 'echo "the folder is locked" >&2; exit 1'
run "$work/tools/demo"
expect_status 1
expect_text "tools/demo: the device ended: the folder is locked"
finish
