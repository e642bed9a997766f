#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Packs build/windows/dist into build/packages/: Quorel-<version>-win64-setup.exe and Quorel-<version>-win64.zip. The same
# products of the same commit make the same packages, to the byte.
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
zip_file="$name.zip"
setup_file="$name-setup.exe"
programs=(Quorel.exe ostrand-banks.exe quorel-presets.exe quorel-render.exe quorel-setup.exe)
quick=()
[[ $# -lt 3 ]] || quick=(-DQUICK)

# Nothing is newer than both packages.
up_to_date()
{
    local file
    for file in "$packages/$zip_file" "$packages/$setup_file"; do
        [[ -e "$file" && -z "$(find "$dist" packaging/windows LICENSE -type f -newer "$file" -print -quit)" ]] || return 1
    done
}

if [[ $# == 0 ]] && up_to_date; then
    exit 0
fi

rm -rf "$work"
mkdir -p "$products" "$packages"
packages="$(cd "$packages" && pwd)"

for item in Quorel.dll Quorel.vst3 "${programs[@]}" Ostrand Banks presets Help; do
    cp -R "$dist/$item" "$products/"
done

sed "s/@VERSION@/$version/; s/\$/\r/" packaging/windows/README.txt.in > "$products/README.txt"
sed 's/$/\r/' LICENSE > "$products/LICENSE.txt"

# No time of this machine gets into the packages.
export SOURCE_DATE_EPOCH="${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2> /dev/null || stat -c %Y CHANGELOG.md)}"
export TZ=UTC
settle_times() { find "$products" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +; }
settle_times

rm -f "$packages/$zip_file" "$packages/$setup_file"
(cd "$work" && find "$name" | LC_ALL=C sort | zip -q -X -9 "$packages/$zip_file" -@)

# What the uninstaller takes, and the installer of a later version. The plug-ins go elsewhere.
(cd "$products" && {
    find . -type f ! -path ./Quorel.dll ! -path './Quorel.vst3/*' -printf '%P\n' | LC_ALL=C sort
    find . -mindepth 1 -depth -type d ! -path './Quorel.vst3*' -printf '%P/\n'
} | sed 's,/,\\,g; s/$/\r/') > "$work/files.txt"
mv "$work/files.txt" "$products/"
settle_times

makensis -V2 -WX "${quick[@]}" -DVERSION="$version" -DSIZE="$(du -sk --apparent-size "$products" | cut -f1)" \
    -DPRODUCTS="$PWD/$products" -DICON="$PWD/$build/src/adapters/Quorel_artefacts/JuceLibraryCode/icon.ico" \
    -DOUTPUT="$packages/$setup_file" packaging/windows/quorel.nsi
rm -rf "$work"
ls -l "$packages/$setup_file" "$packages/$zip_file"
