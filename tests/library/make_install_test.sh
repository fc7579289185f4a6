#!/usr/bin/env bash
# tools/install and tools/uninstall: what is installed is stripped, and all of it goes again, and nothing else:
# make_install_test.sh BUILD
# SPDX-License-Identifier: LGPL-2.1-or-later
source "$(dirname "$0")/../tools/shell_test.sh"
build=$1
install() { run "$root/tools/install" --build "$build" "$@"; }
uninstall() { run "$root/tools/uninstall" "$@"; }
contents() { (cd "$1" && find . -mindepth 1 -printf '%M %p %l\n' | sort); }
umask 077

# Below DESTDIR, with a strict umask.
export DESTDIR=$work/dest
mkdir -p "$DESTDIR/opt"
before=$(contents "$DESTDIR")
install /opt/fax
expect_status 0
fax=$DESTDIR/opt/fax
for program in quelm-driver quelm-desktop fennodial quelm-device; do
    run "$fax/bin/$program" --version
    expect_status 0
    [ -z "$(readelf --section-headers --wide "$fax/bin/$program" | grep -E '\.(debug_|symtab)')" ] ||
        complain "$program is not stripped"
done
[ -z "$(readelf --section-headers --wide "$fax/lib/quelm/libBramblecorLanFax.so" | grep -E '\.(debug_|symtab)')" ] ||
    complain "the component is not stripped"
for file in share/applications/net.quelm.Desktop.desktop share/metainfo/net.quelm.Desktop.metainfo.xml \
    share/mime/packages/net.quelm.Desktop.xml share/icons/hicolor/scalable/apps/net.quelm.Desktop.svg \
    share/icons/hicolor/256x256/apps/net.quelm.Desktop.png share/doc/quelm/user-guide.md share/doc/quelm/quelm.conf \
    share/man/man1/quelm-driver.1 share/man/de/man1/quelm-driver.1 share/bash-completion/completions/quelm-driver \
    share/zsh/site-functions/_quelm-driver share/fish/vendor_completions.d/quelm-driver.fish; do
    [ -f "$fax/$file" ] || complain "$file is not installed"
done
[ -z "$(find "$fax" -not -type l -not -perm -444)" ] || complain "not everybody can read what is installed"
[ -z "$(find "$fax" -not -type l -perm /022)" ] || complain "others can write to what is installed"
grep -q "^ExecStart=\"/opt/fax/bin/" "$fax/lib/systemd/user/quelm-outbox.service" || complain "the unit names another place"

# Again, over a version that had a file that this one lacks.
first=$(contents "$DESTDIR")
mkdir "$fax/lib/quelm/former"
touch "$fax/lib/quelm/former/module.so"
printf '%s\n' 'd /opt/fax/lib/quelm/former' 'f /opt/fax/lib/quelm/former/module.so' >>"$fax/lib/quelm/installed-files"
install /opt/fax
expect_status 0
[ ! -e "$fax/lib/quelm/former/module.so" ] || complain "a file of the former version is left"
rmdir "$fax/lib/quelm/former"
[ "$(contents "$DESTDIR")" = "$first" ] || complain "installed again it is not the same"

# What others put there stays; all else goes, the folders too.
echo phonebook >"$fax/var/lib/quelm/phonebook/office.xdb"
echo other >"$fax/bin/other"
uninstall /opt/fax
expect_status 0
expect_text "kept: $fax/var/lib/quelm/phonebook"
left=$(cd "$DESTDIR" && find . -type f | sort | tr '\n' ' ')
[ "$left" = "./opt/fax/bin/other ./opt/fax/var/lib/quelm/phonebook/office.xdb " ] || complain "left are: $left"
[ ! -e "$fax/share" ] && [ ! -e "$fax/lib" ] || complain "empty folders are left"
rm -r "$fax"
install /opt/fax
uninstall /opt/fax
[ "$(contents "$DESTDIR")" = "$before" ] || complain "left are: $(contents "$DESTDIR")"
uninstall /opt/fax
expect_status 1
expect_text "nothing was installed in $fax"

# Without DESTDIR, desktops are told; that leaves nothing either, even where others' entries were before.
unset DESTDIR
mkdir -p "$work/own/share/applications"
printf '[Desktop Entry]\nType=Application\nName=Other\nExec=other\nMimeType=text/plain;\n' >"$work/own/share/applications/other.desktop"
before=$(contents "$work/own")
install "$work/own"
expect_status 0
grep -q 'x-quelm-phonebook=net.quelm.Phonebook.desktop' "$work/own/share/applications/mimeinfo.cache" ||
    complain "desktops do not know what opens a phonebook"
[ -f "$work/own/share/mime/application/x-quelm-phonebook.xml" ] || complain "desktops do not know what a phonebook is"
install "$work/own"
uninstall "$work/own"
expect_status 0
[ ! -e "$work/own/share/mime" ] || complain "the MIME types are left"
! grep -q quelm "$work/own/share/applications/mimeinfo.cache" || complain "desktops still know of us"
rm "$work/own/share/applications/mimeinfo.cache"
[ "$(contents "$work/own")" = "$before" ] || complain "left are: $(contents "$work/own")"

# Cut off in the middle, it can be taken away as well.
install "$work/own"
rm -r "$work/own/lib/quelm/locale" "$work/own/bin/quelm-device"
uninstall "$work/own"
expect_status 0
rm "$work/own/share/applications/mimeinfo.cache"
[ "$(contents "$work/own")" = "$before" ] || complain "after a cut installation are left: $(contents "$work/own")"

run "$root/tools/install" --build "$work" "$work/own"
expect_status 1
expect_text "nothing was built in $work"
finish
