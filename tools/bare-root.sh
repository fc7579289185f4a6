# Makes the bare system that packages are tried in: sourced by tools/try-packages, which has mounts of its own.
#
# It is this machine's distribution, from the mirrors that its own apt uses, and holds what debootstrap calls minimal.
# What takes long is kept in the user's cache folder: that system, the same with what the packages depend on, and the
# packages that were fetched for it. Without them it takes the network.
# SPDX-License-Identifier: LGPL-2.1-or-later
source /etc/os-release
kept=${XDG_CACHE_HOME:-$HOME/.cache}/bramblecor-lan-fax/bare-root
mkdir -p "$kept/archives/partial"

# Runs a command in the system, as root.
in_root() {
    env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive \
        ${http_proxy+"http_proxy=$http_proxy"} ${https_proxy+"https_proxy=$https_proxy"} \
        chroot "$root" "$@"
}

apt() { in_root apt-get -q -y "$@"; }

# The distribution's own archives that apt knows here, as lines of sources.list.
archives() {
    apt-get indextargets --format 'deb $(REPO_URI) $(RELEASE) $(COMPONENT)|$(ORIGIN)' 'Created-By: Packages' |
        grep -i "|$ID\$" | sed 's,|.*,,' | LC_ALL=C sort -u
}

# keep NAME-KEY: keeps the system under that name, in the place of the former one.
keep() {
    tar --create --zstd --one-file-system --directory="$root" --file="$kept/new.$$" \
        --exclude=./var/cache/apt/archives/* .
    rm -f "$kept/${1%-*}"-*.tar.zst
    mv "$kept/new.$$" "$kept/$1.tar.zst"
}

unpack() { tar --extract --zstd --directory="$root" --file="$kept/$1.tar.zst"; }

# What every use of the system needs, and none of it keeps.
prepare_root() {
    mount -t proc proc "$root/proc"
    mount --bind /dev "$root/dev"
    mount --bind "$kept/archives" "$root/var/cache/apt/archives"
    cat /etc/resolv.conf >"$root/etc/resolv.conf"
}

make_minimal() {
    local first
    first=$(archives | grep " $VERSION_CODENAME " | head -n 1 | cut -d ' ' -f 2)
    [ -n "$first" ] || fail "apt on this machine knows no archive of $ID $VERSION_CODENAME"
    debootstrap --variant=minbase --cache-dir="$kept/archives" "$VERSION_CODENAME" "$root" "$first" ||
        fail "the bare system could not be made; is this machine online?"
    umount "$root/proc" "$root/sys" 2>/dev/null || :
    archives >"$root/etc/apt/sources.list"
    apt-config dump Acquire | grep -E '^Acquire::(Check-|https?::Proxy)' >"$root/etc/apt/apt.conf.d/90machine" || :
    cat >"$root/etc/apt/apt.conf.d/91kept" <<'END'
APT::Keep-Downloaded-Packages "true";
APT::Install-Recommends "false";
APT::Sandbox::User "root";
DPkg::Options { "--force-unsafe-io"; };
END
    printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d"
    chmod 755 "$root/usr/sbin/policy-rc.d"
    in_root useradd --create-home ann
    in_root useradd --create-home bob
}

# make_root PACKAGE...: fills the folder $root with the system and all that these packages depend on.
make_root() {
    local system packages key name
    system=$(archives | cat - "${BASH_SOURCE[0]}" | sha256sum | cut -c 1-16)
    # Their dependencies, but for those on one another.
    packages=$(for name in "$@"; do dpkg-deb --field "$name" Depends; done |
        sed 's/[a-z-]* (= [^)]*)//g' | sort | sha256sum | cut -c 1-16)
    key=depends-$system$packages
    if [ -f "$kept/$key.tar.zst" ]; then
        unpack "$key"
        prepare_root
        return
    fi
    if [ -f "$kept/minimal-$system.tar.zst" ]; then
        unpack "minimal-$system"
        prepare_root
    else
        make_minimal
        prepare_root
        apt update || fail "the package lists could not be fetched; is this machine online?"
        keep "minimal-$system"
    fi
    mkdir "$root/packages"
    cp "$@" "$root/packages"
    # What apt would install beside ours.
    local needed
    needed=$(apt --simulate install "${@/#*\//\/packages\/}") || fail "apt finds no way to install the packages: $needed"
    needed=$(sed -n 's/^Inst \([^ ]*\) .*/\1/p' <<<"$needed" | grep -vxF -f <(ours "$@"))
    # The lists may be older than the archives by now.
    # shellcheck disable=SC2086 # one argument for each package
    if ! apt install $needed; then
        apt update && apt install $needed || fail "what the packages depend on could not be fetched"
    fi
    # shellcheck disable=SC2086
    in_root apt-mark -q auto $needed >/dev/null
    rm -r "$root/packages"
    keep "$key"
}

# The names of packages in files.
ours() { for name in "$@"; do dpkg-deb --field "$name" Package; done; }
