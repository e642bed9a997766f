#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes packages of an older version, to upgrade from: older-packages.sh PACKAGES FOLDER. They have a file more, another menu
# entry, a preset less, and one that has changed since.
set -euo pipefail
packages="$1" folder="$2"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
mkdir -p "$folder"

for deb in "$packages"/quorel{,-data}_*.deb; do
    tree="$work/$(basename "${deb%%_*}")"
    dpkg-deb -R "$deb" "$tree"
    sed -i 's/^Version: .*/Version: 0.9.0/; s/(= [0-9.]*)/(= 0.9.0)/' "$tree/DEBIAN/control"
done

presets="$work/quorel-data/usr/lib/quorel/presets/01 Keys and Splits"
rm "$presets/Four Corners.qrl"
cp "$presets/Toy Box.qrl" "$presets/Harp and Choir.qrl"
echo old > "$work/quorel-data/usr/lib/quorel/Help/old-page.html"
sed -i 's/^Comment=.*/Comment=Old/' "$work/quorel/usr/share/applications/org.ostrand.quorel.desktop"

for tree in "$work"/*; do
    (cd "$tree" && find usr -type f -print0 | xargs -0 md5sum > DEBIAN/md5sums)
    dpkg-deb --root-owner-group -Znone -b "$tree" "$folder/" > /dev/null
done
