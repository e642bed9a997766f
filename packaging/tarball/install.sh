#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs Quorel from the unpacked archive that this script lies in, into a user's own folders, and takes it off again.
set -eu

say() { printf '%s\n' "$*"; }
fail() { printf 'install.sh: %s\n' "$*" >&2; exit 1; }
usage()
{
    cat <<TEXT
Usage: install.sh [--prefix FOLDER] [--uninstall]

Installs Quorel for you alone: programs in ~/.local/bin, what they need in ~/.local/lib/quorel, menu entry, icons and manual
pages in ~/.local/share, plug-ins in ~/.vst, ~/.vst3 and ~/.lv2. An older version is replaced.

  --prefix FOLDER   installs into bin, lib and share of this folder, plug-ins into its lib/vst, lib/vst3 and lib/lv2
  --uninstall       takes off what was installed, there or for you alone. Presets and settings of yours stay.
TEXT
}

here="$(cd "$(dirname "$0")" && pwd)"
prefix=
chosen=
uninstall=
while [ $# -gt 0 ]; do
    case "$1" in
        --prefix) [ $# -ge 2 ] || fail "--prefix wants a folder"; prefix="$2"; shift ;;
        --prefix=*) prefix="${1#--prefix=}" ;;
        --uninstall) uninstall=yes ;;
        -h | --help) usage; exit 0 ;;
        *) usage >&2; exit 2 ;;
    esac
    shift
done

if [ -z "$prefix" ]; then
    [ -n "${HOME:-}" ] || fail "HOME isn't set: say where to with --prefix"
    prefix="$HOME/.local"
    vst="$HOME/.vst" vst3="$HOME/.vst3" lv2="$HOME/.lv2"
else
    case "$prefix" in
        /*) ;;
        *) prefix="$(pwd)/$prefix" ;;
    esac
    chosen=yes
    vst="$prefix/lib/vst" vst3="$prefix/lib/vst3" lv2="$prefix/lib/lv2"
fi
share="$prefix/share"
# One installed file a line; folders that were made for them end with a slash.
list="$prefix/lib/quorel/installed.txt"

# make_folder FOLDER: with its parents, each of which goes into the list if it wasn't there.
make_folder()
{
    [ ! -d "$1" ] || return 0
    make_folder "$(dirname "$1")"
    mkdir "$1"
    printf '%s/\n' "$1" >> "$new"
}

# put FILE TARGET: never through a link that lies there, and whole or not at all: a host may have the old file open.
put()
{
    make_folder "$(dirname "$2")"
    if [ -L "$1" ]; then
        rm -f "$2"
    elif [ -d "$2" ] && [ ! -L "$2" ]; then
        fail "$2 is a folder, and in the way"
    fi
    cp -P -p "$1" "$2.quorel-new"
    mv -f "$2.quorel-new" "$2"
    printf '%s\n' "$2" >> "$new"
}

# put_tree FOLDER TARGET
put_tree()
{
    [ -d "$1" ] || return 0
    find "$1" \( -type f -o -type l \) -print | while IFS= read -r file; do
        put "$file" "$2/${file#"$1"/}"
    done
}

# What programs of the desktop make of the files below share, where these programs are.
refresh_desktop()
{
    [ ! -d "$share/mime/packages" ] || ! command -v update-mime-database > /dev/null || update-mime-database "$share/mime" || :
    [ ! -d "$share/applications" ] || ! command -v update-desktop-database > /dev/null ||
        update-desktop-database "$share/applications" || :
    # A cache that isn't there is not missed; one that is older than its folder is passed over.
    [ ! -e "$share/icons/hicolor/icon-theme.cache" ] || ! command -v gtk-update-icon-cache > /dev/null ||
        gtk-update-icon-cache -q -f -t "$share/icons/hicolor" || :
}

# remove_listed LIST [STILL]: files that LIST names and STILL doesn't, then the folders that are empty.
remove_listed()
{
    while IFS= read -r path; do
        case "$path" in
            */) ;;
            *) grep -q -x -F -e "$path" "${2:-/dev/null}" || rm -f "$path" ;;
        esac
    done < "$1"
    grep '/$' "$1" | LC_ALL=C sort -r | while IFS= read -r path; do
        [ ! -d "$path" ] || rmdir "$path" 2> /dev/null || :
    done
}

if [ -n "$uninstall" ]; then
    [ -s "$list" ] || fail "there is no Quorel in $prefix that this script has installed"

    # Root has set nobody up.
    if [ "$(id -u)" != 0 ] && [ -x "$prefix/bin/quorel-setup" ]; then
        "$prefix/bin/quorel-setup" --remove || fail "nothing was uninstalled: close your DAW and try again"
    fi

    listed="$(mktemp)"
    trap 'rm -f "$listed"' EXIT
    mv "$list" "$listed"
    remove_listed "$listed"
    refresh_desktop

    # What those programs have made, in folders that came with Quorel and that nobody else has put anything into.
    for made in "$share/mime" "$share/applications"; do
        if grep -q -x -F -e "$made/" "$listed" && [ -d "$made" ] &&
            [ -z "$(find "$made" -name '*.desktop' -o -path '*/packages/*' -type f)" ]; then
            rm -r "$made"
        fi
    done
    remove_listed "$listed"
    say "Quorel is uninstalled. What is yours stays: presets in ${XDG_DATA_HOME:-~/.local/share}/Ostrand, settings in ${XDG_CONFIG_HOME:-~/.config}/Ostrand."
    exit 0
fi

[ -x "$here/bin/quorel" ] || fail "$here/bin/quorel is missing: start this from the whole archive"
before="$(mktemp)"
new="$(mktemp)"

# Also a run that doesn't get to its end leaves a list of all there is.
leave_list()
{
    [ ! -d "$prefix/lib/quorel" ] || LC_ALL=C sort -u "$before" "$new" > "$list" || :
    rm -f "$before" "$new"
    trap - EXIT
}
trap leave_list EXIT
trap 'exit 1' HUP INT TERM
[ ! -e "$list" ] || cp "$list" "$before"

put_tree "$here/bin" "$prefix/bin"
put_tree "$here/lib/quorel" "$prefix/lib/quorel"
put_tree "$here/lib/vst" "$vst"
put_tree "$here/lib/vst3" "$vst3"
put_tree "$here/lib/lv2" "$lv2"
put_tree "$here/share" "$share"
put "$here/install.sh" "$prefix/lib/quorel/install.sh"

# The menu knows no PATH of the user's.
entry="$share/applications/org.ostrand.quorel.desktop"
sed "s|^Exec=quorel|Exec=\"$prefix/bin/quorel\"|" "$here/share/applications/org.ostrand.quorel.desktop" > "$entry.quorel-new"
mv -f "$entry.quorel-new" "$entry"

remove_listed "$before" "$new"
grep '/$' "$before" >> "$new" || :
: > "$before"
leave_list
refresh_desktop

say "$(cd "$here" && head -n 1 README.txt | sed "s/ for Linux//") is installed."
say "Plug-ins:  $(cd "$here/lib" && for folder in vst vst3 lv2; do
    [ ! -d "$folder" ] || case "$folder" in vst) printf '%s  ' "$vst" ;; vst3) printf '%s  ' "$vst3" ;; *) printf '%s  ' "$lv2" ;; esac
done)"
say "Programs:  $prefix/bin: quorel, the instrument without a DAW, quorel-render, quorel-presets, quorel-setup"
case ":$PATH:" in
    *":$prefix/bin:"*) ;;
    *) say "That folder isn't in your PATH: start the programs by their whole path, or log in anew if your shell adds ~/.local/bin." ;;
esac
say "Let your DAW scan its plug-in folders anew. To take it off again:"
say "$prefix/lib/quorel/install.sh --uninstall${chosen:+ --prefix \"$prefix\"}"
