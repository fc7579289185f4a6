# What tools/install and tools/uninstall share: sourced, with the prefix, never run.
#
# The record of an installation lies in it, lib/quelm/installed-files: a line "f PATH" for each file and link, and
# "d PATH" for each folder that was made, as paths without DESTDIR.
# SPDX-License-Identifier: LGPL-2.1-or-later
export LC_ALL=C
prefix=$(realpath -ms -- "${1:?}")
prefix=${prefix%/}
root=${DESTDIR-}
case $root in "" | /) root= ;; *) root=$(realpath -m -- "$root") ;; esac
list=$prefix/lib/quelm/installed-files

fail() {
    echo "$(basename "$0"): $1" >&2
    exit 1
}

# The lines of the record; none where nothing is installed.
installed() { if [ -f "$root$list" ]; then cat "$root$list"; fi; }

# Whether files can be made in a folder, or where it will have to be made.
can_write() {
    local folder=$1
    while [ ! -e "$folder" ]; do folder=$(dirname "$folder"); done
    [ -d "$folder" ] && [ -w "$folder" ]
}

# What desktops keep of all entries and MIME types, which must be made anew when one comes or goes. Not below
# DESTDIR: whoever installs a package does so then.
update_desktops() {
    [ -z "$root" ] || return 0
    local share=$prefix/share
    if compgen -G "$share/applications/*.desktop" >/dev/null && [ -n "$(command -v update-desktop-database)" ]; then
        update-desktop-database -q "$share/applications" || :
    fi
    if compgen -G "$share/mime/packages/*.xml" >/dev/null && [ -n "$(command -v update-mime-database)" ]; then
        XDG_DATA_DIRS=$share update-mime-database "$share/mime" || :
    fi
    if [ -f "$share/icons/hicolor/icon-theme.cache" ] && [ -n "$(command -v gtk-update-icon-cache)" ]; then
        gtk-update-icon-cache -q -f -t "$share/icons/hicolor" || :
    fi
}
