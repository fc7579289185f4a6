#!/bin/sh
# A catalogue and the template hold the same texts, all of them translated and in the right form:
# catalogue_test.sh TEMPLATE CATALOGUE
# SPDX-License-Identifier: LGPL-2.1-or-later
set -eu
template=$1
catalogue=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failed=0
report() {
    echo "$catalogue: $1; run tools/update-catalogues and translate what it lists" >&2
    failed=1
}

# Guards against a template that lost its texts: those of every source of them must be there.
for text in 'Fax Recipients' 'Do you want to add a duplicate of this Recipient?' 'Load...'; do
    msggrep --msgid --fixed-strings -e "$text" "$template" | grep -q msgid ||
        { echo "$template: \"$text\" is missing" >&2; failed=1; }
done

msgcmp "$catalogue" "$template" 2>"$scratch/compared" || report "is not complete"
cat "$scratch/compared" >&2
msgfmt --check --output-file=/dev/null "$catalogue" || report "has entries of a wrong form"

! grep -q 'this message is not used' "$scratch/compared" || report "has texts that are shown nowhere"
[ "$(msgattrib --only-obsolete "$catalogue" 2>/dev/null | grep -c '^#~ msgid')" -eq 0 ] || report "keeps texts that were given up"
exit $failed
