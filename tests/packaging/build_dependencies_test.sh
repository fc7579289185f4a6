#!/usr/bin/env bash
# What the build looks for, the packages' sources say they need: the one list follows the other.
# SPDX-License-Identifier: LGPL-2.1-or-later
set -euo pipefail
project=$(cd "$(dirname "$0")/../.." && pwd)
needed=$(grep -o 'DEBIAN [a-z0-9.+-]*' "$project/cmake/Requirements.cmake" | cut -d ' ' -f 2 | sort -u)
[ "$(wc -l <<<"$needed")" -gt 15 ] || { echo "the build looks for too little: $needed" >&2; exit 1; }
declared=$(sed -n '/^Build-Depends:/,/^[A-Z]/s/^ \([a-z0-9.+-]*\).*/\1/p' "$project/packaging/debian/control")
status=0
for package in $needed; do
    case $package in
    # The compiler is on every machine that makes packages; Ghostscript is run, not linked; tests are not built.
    g++ | ghostscript | libbenchmark-dev | librapidxml-dev | libgtest-dev | libgmock-dev | googletest) continue ;;
    esac
    grep -qxF -- "$package" <<<"$declared" || {
        echo "$package stands in cmake/Requirements.cmake and not in packaging/debian/control" >&2
        status=1
    }
done
exit $status
