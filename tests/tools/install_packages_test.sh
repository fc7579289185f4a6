#!/usr/bin/env bash
# Only what is missing is installed, and what stands in the way is said in one line.
# SPDX-License-Identifier: LGPL-2.1-or-later
source "$(dirname "$0")/shell_test.sh"

# A machine of our own: the script, a list, and programs that note how they were called.
bin="$work/bin"
journal="$work/journal"
mkdir -p "$work/tools" "$bin"
cp "$root/tools/install-packages" "$work/tools"
for program in sh sed dirname cat env mktemp rm; do ln -s "$(command -v $program)" "$bin/$program"; done

program() { printf '#!/bin/sh\n%s\n' "$2" >"$bin/$1"; chmod +x "$bin/$1"; }
packages() { printf '%s\n' "$@" >"$work/tools/packages"; }
installed() { program dpkg-query "case \$3 in $1) printf 'installed ' ;; half) printf 'not-installed ' ;; *) exit 1 ;; esac"; }
install() {
    : >"$journal"
    run env -i "PATH=$bin" "TMPDIR=$work" sh "$work/tools/install-packages"
}
expect_journal() { [ "$(cat "$journal")" = "$1" ] || complain "the journal is \"$(cat "$journal")\""; }

options="-q -y -o DPkg::Lock::Timeout=300"
note="echo \"\$DEBIAN_FRONTEND \$RUNLEVEL \$SYSTEMD_OFFLINE \$*\" >>$journal"
program apt-get "$note"
program id "echo 0"

packages "# Comment" "" "here  # there already" "gone  # is not" "half" "tool unless sh" "other unless no-such-program"
installed here
install
expect_status 0
expect_output "Installing: gone half other"
expect_journal "noninteractive 1 1 $options update
noninteractive 1 1 $options install --no-install-recommends gone half other"

packages "here" "tool unless sh"
install
expect_status 0
expect_output ""
expect_journal ""

packages "gone"
program apt-get "$note; [ \"\$5\" != update ] || { echo 'could not resolve'; exit 100; }"
install
expect_status 1
expect_text "could not resolve"
expect_text "install-packages: the package lists could not be fetched; is this machine online?"
expect_no_text "could not install"

program apt-get "$note; [ \"\$5\" != install ] || exit 100"
install
expect_status 1
expect_text "install-packages: could not install: gone"

program id "echo 1000"
program apt-get "$note"
install
expect_status 1
expect_text "needs root or sudo"
expect_text "apt-get install gone"
expect_journal ""

program sudo "[ \"\$1\" = -n ] && exit 1"
install
expect_status 1
expect_text "sudo asks for a password; run as root: apt-get install gone"
expect_journal ""

program sudo "[ \"\$1\" = -n ] && shift; \"\$@\""
install
expect_status 0
expect_journal "noninteractive 1 1 $options update
noninteractive 1 1 $options install --no-install-recommends gone"

# What this release does not have is named and left out.
packages "gone" "elsewhere" "half"
program apt-cache "[ \"\$2\" != elsewhere ]"
install
expect_status 0
expect_text "install-packages: this system has no package elsewhere; it is left out"
expect_journal "noninteractive 1 1 $options update
noninteractive 1 1 $options install --no-install-recommends gone half"

packages "elsewhere"
install
expect_status 0
expect_journal "noninteractive 1 1 $options update"

rm "$bin/apt-get"
install
expect_status 0
expect_text "install-packages: apt-get is not here, so nothing is installed; docs/building.md names the packages of \
other systems, under \"Other systems\""
finish
