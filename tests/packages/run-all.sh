#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes the packages, looks at them, and installs, uses, upgrades and removes them in a bare Debian of their own, below
# build/packages-test/. Needs root, and Debian's archive over the network. The bare system is made once and kept.
#   tests/packages/run-all.sh [--standing]     --standing takes the packages as they stand in build/packages/
# QUOREL_DEBIAN_MIRROR names another archive than Debian's own.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

[[ $EUID == 0 ]] || { echo "./test.sh packages installs packages in a system of its own: start it as root" >&2; exit 1; }

case "${1:-}" in
    "") packaging/package.sh ;;
    --standing) ;;
    *)
        echo "usage: ./test.sh packages [--standing]" >&2
        exit 2 ;;
esac

packages="$PWD/build/packages"
work="$PWD/build/packages-test"
release=bookworm
mirror="${QUOREL_DEBIAN_MIRROR:-http://deb.debian.org/debian}"
bare="$work/bare-$release.tar.gz"
root="$work/root"
version="$(sed -n 's/^project(Quorel VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)"
mkdir -p "$work"

echo
echo "== The packages by themselves"
tests/packages/look-at.sh "$version"

echo
echo "== In a bare $release"
if [[ ! -e "$bare" ]]; then
    rm -rf "$root"
    debootstrap --variant=minbase "$release" "$root" "$mirror"
    tar -C "$root" -czf "$bare.new" .
    mv "$bare.new" "$bare"
fi

rm -rf "$root"
mkdir -p "$root" "$work/archives"
tar -C "$root" -xzf "$bare"
cp /etc/resolv.conf /etc/hosts "$root/etc/"
# As this system fetches its packages.
apt-config dump | grep -i '^Acquire::[a-z]*::Proxy' > "$root/etc/apt/apt.conf.d/90proxy" || :
# What is fetched is kept for the next time.
echo 'APT::Keep-Downloaded-Packages "true";' > "$root/etc/apt/apt.conf.d/91keep"
rm -f "$root/etc/apt/apt.conf.d/docker-clean"
# No service starts in there.
printf '#!/bin/sh\nexit 101\n' > "$root/usr/sbin/policy-rc.d"
chmod +x "$root/usr/sbin/policy-rc.d"

tests/packages/older-packages.sh "$packages" "$root/older"
mkdir "$root/packages" "$root/test"
cp "$packages"/quorel{,-data}_"$version"_*.deb "$packages/quorel-$version-linux-$(uname -m).tar.gz" "$root/packages/"
cp -R demo tests/packages "$root/test/"

# A process tree and mounts of its own: nothing of it is left behind.
unshare --mount --pid --fork --kill-child --propagation private bash -euc '
    root="$0" archives="$1"
    mount -t proc proc "$root/proc"
    mount -t tmpfs -o mode=1777 tmpfs "$root/dev/shm"
    mount --bind "$archives" "$root/var/cache/apt/archives"
    mkdir -p "$root/dev/pts"
    exec env -i PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 HOME=/root TERM="${TERM:-dumb}" \
        chroot "$root" /test/packages/in-bare-system.sh "$2"' "$root" "$work/archives" "$version"
rm -rf "$root"
