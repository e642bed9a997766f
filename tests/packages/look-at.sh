#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Looks at the packages in build/packages/ without installing them: look-at.sh VERSION
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
. tests/packages/checks.sh

version="$1"
work="$(mktemp -d)"
trap 'rm -rf "$work" "$said" "$said.out"' EXIT
debs=(build/packages/quorel_"$version"_*.deb build/packages/quorel-data_"$version"_*.deb)

lintian_is_silent() { lintian --pedantic --fail-on error,warning,pedantic build/deb/quorel_"$version"_*.changes; }
one_version() { is_same "$(printf '%s\n' "$version" "$version")" "$(for deb in "${debs[@]}"; do dpkg-deb -f "$deb" Version; done)"; }
is_elf() { [[ "$(head -c 4 "$1" | tail -c 3)" == ELF ]]; }

for deb in "${debs[@]}"; do
    dpkg-deb -x "$deb" "$work/deb"
done
mkdir "$work/archive"
tar -C "$work/archive" --strip-components=1 -xzf "build/packages/quorel-$version-linux-$(uname -m).tar.gz"
DESTDIR="$work/installed" cmake --install build --prefix /opt/quorel > "$work/install.log" || echo "FAILED  cmake --install"

no_paths_or_symbols()
{
    local file result=0
    while IFS= read -r file; do
        is_elf "$file" || continue
        if readelf -d "$file" | grep -E 'RPATH|RUNPATH' || readelf -S "$file" | grep -E '\.symtab|\.debug_info'; then
            echo "$file"
            result=1
        fi
    done < <(find "$work/deb" "$work/archive" -type f)
    return "$result"
}

# All of them have the same files, but for those about packages.
files_in() { (cd "$1" && find . ! -type d | sed 's/\.gz$//' | grep -v -E 'share/doc|share/lintian|share/doc-base' | LC_ALL=C sort); }
same_files() { is_same "$(files_in "$work/deb/usr")" "$(files_in "$work/installed/opt/quorel")" &&
    is_same "$(files_in "$work/deb/usr")" "$(files_in "$work/archive" | grep -v '^\./[^/]*$')"; }
pictures_have_their_sizes()
{
    local size
    for size in 16 22 24 32 48 64 96 128 256 512; do
        for picture in apps/quorel mimetypes/application-x-quorel-preset; do
            file "$work/deb/usr/share/icons/hicolor/${size}x$size/$picture.png" | grep "PNG image data, $size x $size," || return 1
        done
    done
}
every_program_has_a_page()
{
    local program
    for program in "$work"/deb/usr/bin/*; do
        LC_ALL=C.UTF-8 MANROFFSEQ='' man --warnings -E UTF-8 -l "$work/deb/usr/share/man/man1/${program##*/}.1.gz" 2>&1 > "$work/page" | grep . && return 1
        grep -q "^NAME" "$work/page" && grep -q -- "--help" "$work/page" || return 1
    done
}
what_completes() { bash -c '
    . /usr/share/bash-completion/bash_completion 2> /dev/null
    export PATH="$0/usr/bin:$PATH" XDG_CONFIG_HOME="$0/../user/config" XDG_DATA_HOME="$0/../user/data"
    . "$0/usr/share/bash-completion/completions/$1"
    COMP_WORDS=("${@:1}") COMP_CWORD=$(($# - 1)) COMP_LINE="${*:1}" COMP_POINT=${#COMP_LINE}
    _quorel "$1" "${@: -1}" "${@: -2:1}"
    printf "%s\n" "${COMPREPLY[@]}"' "$work/deb" "$@"; }
completes() { what_completes "${@:2}" | grep -x -F -e "$1"; }

check "quorel-setup sets a user up" "$work/deb/usr/bin/quorel-setup" --prefix "$work/user"
check "one version" one_version
check "lintian has no error, no warning and nothing pedantic" lintian_is_silent
check "desktop-file-validate" desktop-file-validate "$work/deb/usr/share/applications/org.ostrand.quorel.desktop"
check "appstreamcli validate" appstreamcli validate --no-net --pedantic "$work/deb/usr/share/metainfo/org.ostrand.quorel.metainfo.xml"
check "no search paths and no symbols in the binaries" no_paths_or_symbols
check "deb, tarball and cmake --install have the same files" same_files
check "icons in all sizes" pictures_have_their_sizes
check "every program has a manual page, without a warning" every_program_has_a_page
check "bash completes an option" completes --output quorel-render --ou
check "bash completes a command" completes verify quorel-presets ver
check "bash completes a command's option" completes --favourites quorel-presets list --fav
check "bash completes an instrument behind its layer" completes Tarn quorel-render --layer 1=Tar
check "bash completes an effect between quotes" completes '1=HQ Reverb' quorel-render --fx '"1=HQ R'
check "bash completes the value of an option" completes '05\ Leads\ and\ Basses/Hollow\ Soloist' quorel '--preset=05\ Leads\ and\ Basses/Ho'
check "bash completes a preset" completes '05\ Leads\ and\ Basses/Hollow\ Soloist' quorel --preset '05\ Leads\ and\ Basses/Ho'
check "bash completes a preset between quotes" completes '05 Leads and Basses/Hollow Soloist' quorel --preset '"05 Leads and Basses/Ho'
verdict
