#!/usr/bin/env bash
# AppStream takes the metadata without a word, and they name what else is installed, and a version that the changelog
# has: metadata_test.sh BUILD
# SPDX-License-Identifier: LGPL-2.1-or-later
set -euo pipefail
project=$(cd "$(dirname "$0")/../.." && pwd)
file=$1/desktop/net.quelm.Desktop.metainfo.xml
fail() {
    echo "$1" >&2
    exit 1
}

appstreamcli validate --no-net --pedantic --strict "$file"
xmllint --noout "$file"
value() { xmllint --xpath "string($1)" "$file"; }
[ -f "$1/desktop/$(value '/component/launchable')" ] || fail "there is no entry $(value '/component/launchable')"
[ "$(value '/component/summary[lang("de")]')" != "$(value '/component/summary')" ] || fail "the summary is not German"
version=$(sed -n 's/^project(.* VERSION \([0-9.]*\).*/\1/p' "$project/CMakeLists.txt")
[ "$(value '/component/releases/release[1]/@version')" = "$version" ] || fail "the newest release is not $version"
grep -q "^## \[$version\]" "$project/CHANGELOG.md" || fail "the changelog has no version $version"
