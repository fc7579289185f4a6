#!/usr/bin/env bash
# The commands that a guide shows are run, and a wrong one is noticed.
# SPDX-License-Identifier: LGPL-2.1-or-later
source "$(dirname "$0")/shell_test.sh"

guide() { cat >"$work/guide.md"; }
run_guide() { run "$root/tools/run-commands" "$work/guide.md"; }

guide <<'END'
Text, and `false` in it.
```sh
echo first
echo second \
    part
```
```
false
```
```sh
pwd
```
END
run_guide
expect_status 0
expect_text $'\nfirst\n'
expect_text $'\nsecond part\n'
expect_text $'\n'"$root"

guide <<'END'
```sh
echo before
no-such-program --option
echo behind
```
END
run_guide
expect_status 1
expect_text "guide.md: this command failed: no-such-program --option"
expect_no_text $'\nbehind'

guide <<'END'
```sh
false | true
```
END
run_guide
expect_status 1

guide <<'END'
No command here.
END
run_guide
expect_status 1
expect_text "there is no command in"

# The command that runs all of this must not run again, but it must be there.
guide <<'END'
```sh
make test
.ci/run
```
END
run_guide
expect_status 0
expect_text "tools/run-tests"
expect_no_text "passed"

guide <<'END'
```sh
echo "$XDG_CONFIG_HOME"
```
END
run_guide
expect_no_text "$HOME"
finish
