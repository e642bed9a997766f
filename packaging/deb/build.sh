#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes the Debian packages quorel and quorel-data in build/packages/. dpkg-buildpackage works in build/deb/quorel-<version>/,
# where the sources lie as a source package has them, and leaves its .changes beside that.
#   packaging/deb/build.sh                  from the products of build/, which are brought up to date first
#   packaging/deb/build.sh --from-source    compiles everything once more, as Debian's builders do; takes minutes
#   packaging/deb/build.sh --tree           only lays out the sources, for dpkg-buildpackage by hand
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

kind="${1:-}"
case "$kind" in
    "" | --from-source | --tree) ;;
    *)
        echo "usage: packaging/deb/build.sh [--from-source | --tree]" >&2
        exit 2 ;;
esac
maintainer="Quorel maintainers <maintainers@quorel.invalid>"
version="$(sed -n 's/^project(Quorel VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)"
work="$PWD/build/deb"
tree="$work/quorel-$version"
packages="$PWD/build/packages"

packaging/install-packages.sh
packaging/install-packages.sh packaging/deb/debian-packages.txt

# What ./run.sh needs, but for what every builder has, and what only people want.
build_depends()
{
    sed '/^# tests/,$d; /^#/d; /^$/d' packaging/debian-packages.txt |
        grep -v -x -e ca-certificates -e g++ -e ccache -e git | LC_ALL=C sort | sed 's/^/               /; s/$/,/'
}

# What git has or would take: nothing built comes along.
lay_out()
{
    rm -rf "$work"
    mkdir -p "$tree"
    if [[ -e .git ]]; then
        git ls-files -z --cached --others --exclude-standard | while IFS= read -r -d '' file; do
            [[ ! -e "$file" ]] || printf '%s\0' "$file"
        done
    else
        find . -type f ! -path './build/*' ! -path './debian/*' -print0
    fi | tar -c --null -T - | tar -x -C "$tree"

    cp -R packaging/deb/debian "$tree/"
    rm "$tree/debian/control.in"
    maintainer="$maintainer" depends="$(build_depends)" awk '
        { gsub(/@MAINTAINER@/, ENVIRON["maintainer"]) }
        /@BUILD_DEPENDS@/ { print ENVIRON["depends"]; next }
        { print }' packaging/deb/debian/control.in > "$tree/debian/control"
    packaging/deb/make_changelog.py CHANGELOG.md "$version" "$maintainer" \
        "${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2> /dev/null || stat -c %Y CHANGELOG.md)}" > "$tree/debian/changelog"
}

lay_out
[[ "$kind" != --tree ]] || { echo "$tree"; exit 0; }

if [[ "$kind" != --from-source ]]; then
    packaging/build.sh release products
    export QUOREL_BUILD_DIR="$PWD/build"
    # There are no symbols in these products.
    export DEB_BUILD_OPTIONS="${DEB_BUILD_OPTIONS:-} noautodbgsym"
fi

(cd "$tree" && dpkg-buildpackage --build=binary --no-sign)
mkdir -p "$packages"
rm -f "$packages"/quorel{,-data}{,-dbgsym}_*.deb
cp "$work"/*.deb "$packages/"
ls -l "$packages"/*.deb
