#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Packs build/windows/dist into build/packages/: Quorel-<version>-win64-setup.exe and Quorel-<version>-win64.zip. The same
# products make the same packages, to the byte.
#   packaging/windows/pack.sh [VERSION [FOLDER [DIST]]]     other products as another version, for tests of updates
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

build=build/windows
version="${1:-$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")}"
packages="${2:-build/packages}"
dist="${3:-$build/dist}"
name="Quorel-$version-win64"
work="$build/package-$version"
products="$work/$name"
programs=(Quorel.exe ostrand-banks.exe quorel-presets.exe quorel-render.exe quorel-setup.exe)
rm -rf "$work"
mkdir -p "$products" "$packages"

for item in Quorel.dll "${programs[@]}" Ostrand Banks presets Help; do
    cp -R "$dist/$item" "$products/"
done

sed "s/@VERSION@/$version/; s/\$/\r/" packaging/windows/README.txt.in > "$products/README.txt"
sed 's/$/\r/' LICENSE > "$products/LICENSE.txt"

# No time of this machine gets into the packages.
export SOURCE_DATE_EPOCH="${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2> /dev/null || stat -c %Y CHANGELOG.md)}"
export TZ=UTC
settle_times() { find "$products" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +; }
settle_times

rm -f "$packages/$name.zip"
zip_file="$(cd "$packages" && pwd)/$name.zip"
(cd "$work" && find "$name" | LC_ALL=C sort | zip -q -X -9 "$zip_file" -@)

# What the uninstaller takes, and the installer of a later version. The plug-in itself goes elsewhere.
(cd "$products" && {
    find . -type f ! -path ./Quorel.dll -printf '%P\n' | LC_ALL=C sort
    find . -mindepth 1 -depth -type d -printf '%P/\n'
} | sed 's,/,\\,g; s/$/\r/') > "$work/files.txt"
mv "$work/files.txt" "$products/"
settle_times

makensis -V2 -WX -DVERSION="$version" -DSIZE="$(du -sk --apparent-size "$products" | cut -f1)" -DPRODUCTS="$PWD/$products" \
    -DICON="$PWD/$build/src/adapters/Quorel_artefacts/JuceLibraryCode/icon.ico" -DOUTPUT="$(cd "$packages" && pwd)/$name-setup.exe" \
    packaging/windows/quorel.nsi
rm -rf "$work"
ls -l "$packages/$name-setup.exe" "$packages/$name.zip"
