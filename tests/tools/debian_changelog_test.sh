#!/usr/bin/env bash
# Debian's changelog says what the changelog says, in a form that Debian's tools read.
# SPDX-License-Identifier: LGPL-2.1-or-later
source "$(dirname "$0")/shell_test.sh"

project="$work/project"
mkdir -p "$project/tools" "$project/packaging/debian" "$project/packaging/desktop"
cp "$root/tools/debian-changelog" "$project/tools"
echo 'project(Some VERSION 1.3.0 LANGUAGES C)' >"$project/CMakeLists.txt"
echo 'Maintainer: Ann Miller <ann@quelm.example>' >"$project/packaging/debian/control"
echo '<release version="1.2.0" date="2025-02-03"/>' >"$project/packaging/desktop/some.metainfo.xml.in"
cat >"$project/CHANGELOG.md" <<'END'
# Changelog

## [Unreleased]

### Added

- A `program`, see [its guide](docs/guide.md), of which there is so much to be said that it needs
  more than one line here.
- More.

### Fixed

- Faults.

## [1.2.0]

- The first.

## [1.1.0] - 2024-05-06

- The very first.
END
run "$project/tools/debian-changelog" 1735689600
expect_status 0
expect_output 'bramblecor-lanfax (1.3.0+20250101000000) unstable; urgency=medium

  [ Added ]
  * A program, see its guide, of which there is so much to be said that it
    needs more than one line here.
  * More.

  [ Fixed ]
  * Faults.

 -- Ann Miller <ann@quelm.example>  Wed, 01 Jan 2025 00:00:00 +0000

bramblecor-lanfax (1.2.0) unstable; urgency=medium

  * The first.

 -- Ann Miller <ann@quelm.example>  Mon, 03 Feb 2025 00:00:00 +0000

bramblecor-lanfax (1.1.0) unstable; urgency=medium

  * The very first.

 -- Ann Miller <ann@quelm.example>  Mon, 06 May 2024 00:00:00 +0000'

# Debian's own reader takes ours.
run "$root/tools/debian-changelog" 1795402000
expect_status 0
printf '%s\n' "$output" >"$work/changelog"
complaints_of_dpkg=$(dpkg-parsechangelog --file "$work/changelog" --all 2>&1 >/dev/null)
[ -z "$complaints_of_dpkg" ] || complain "$complaints_of_dpkg"
[ "$(grep -c '^ -- ' "$work/changelog")" = "$(grep -c '^## \[' "$root/CHANGELOG.md")" ] ||
    complain "not all versions of the changelog are there"

run "$root/tools/debian-changelog"
expect_failure
expect_text "say the date"
finish
