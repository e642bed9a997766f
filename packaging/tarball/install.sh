#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs Quorel from the unpacked archive that this script lies in, into a user's own folders, and uninstalls it.
set -eu

# Paths are bytes: a name that is no text of the user's locale is still a name.
export LC_ALL=C
# What root installs is for everyone.
[ "$(id -u)" != 0 ] || umask 022

say() { printf '%s\n' "$*"; }
fail() { printf 'install.sh: %s\n' "$*" >&2; exit 1; }
usage()
{
    cat <<TEXT
Usage: install.sh [--prefix FOLDER] [--uninstall]

Installs Quorel for you alone: programs in ~/.local/bin, what they need in ~/.local/lib/quorel, menu entry, icons and manual
pages in ~/.local/share, plug-ins in ~/.vst, ~/.vst3 and ~/.lv2. An older version is replaced.

  --prefix FOLDER   installs into bin, lib and share of this folder, plug-ins into its lib/vst, lib/vst3 and lib/lv2
  --uninstall       removes what was installed in FOLDER, or without --prefix in your own folders.
                    FOLDER/lib/quorel/install.sh finds FOLDER by itself. Presets and settings of yours stay.
TEXT
}

# By its real name, so that neither another spelling of a folder nor a link to it makes two of it.
real() { realpath -m -- "$1"; }

here="$(real "$0")"
here="${here%/*}"
prefix=
uninstall=
pathHint=
while [ $# -gt 0 ]; do
    case "$1" in
        --prefix)
            case "${2:-}" in '' | -*) fail "--prefix wants a folder" ;; esac
            prefix="$2"
            shift
            ;;
        --prefix=?*) prefix="${1#--prefix=}" ;;
        --prefix=) fail "--prefix wants a folder" ;;
        --uninstall) uninstall=yes ;;
        -h | --help) usage; exit 0 ;;
        *) usage >&2; exit 2 ;;
    esac
    shift
done

# One installed file a line; folders that were made for them end with a slash.
listName=lib/quorel/installed.txt
if [ -z "$prefix" ] && [ -n "$uninstall" ] && [ -s "${here%/lib/quorel}/$listName" ]; then
    prefix="${here%/lib/quorel}"
fi
if [ -z "$prefix" ]; then
    [ -n "${HOME:-}" ] || fail "HOME isn't set: say where to with --prefix"
    prefix="$(real "$HOME/.local")"
    pathHint=", or log in anew if your shell adds ~/.local/bin"
    vst="$(real "$HOME/.vst")" vst3="$(real "$HOME/.vst3")" lv2="$(real "$HOME/.lv2")"
else
    prefix="$(real "$prefix")"
    prefix="${prefix%/}"
    vst="$prefix/lib/vst" vst3="$prefix/lib/vst3" lv2="$prefix/lib/lv2"
fi
case "$prefix$vst$vst3$lv2" in *"
"*) fail "a folder's name has two lines" ;; esac
share="$prefix/share"
entry="$share/applications/org.ostrand.quorel.desktop"
list="$prefix/$listName"

# What was installed here before. If the folder has been moved since, or had another name then, so have its files.
read_list()
{
    [ -e "$list" ] || return 0
    from="$(sed -n 's|/lib/quorel/install\.sh$||p' "$list" | head -n 1)"
    from="${from:-$prefix}" to="$prefix"
    # A whole home with its plug-ins.
    case "$from:$to" in */.local:*/.local) from="${from%/.local}" to="${to%/.local}" ;; esac
    while IFS= read -r path; do
        case "$path" in "$from"/*) path="$to/${path#"$from"/}" ;; esac
        printf '%s\n' "$path"
    done < "$list"
}

# behind_link PATH: whether it is one of the plug-ins, or lies in one, and a link stands there in the plug-in's place. What is
# behind that, such as a build, isn't ours to write or to delete.
behind_link()
{
    case "$1/" in
        */Quorel.vst3/*) [ -L "${1%/Quorel.vst3*}/Quorel.vst3" ] ;;
        */Quorel.lv2/*) [ -L "${1%/Quorel.lv2*}/Quorel.lv2" ] ;;
        */Quorel.so/) [ -L "$1" ] ;;
        *) return 1 ;;
    esac
}

# remove_files LIST [KEPT]: the files in LIST, and what a run that broke off left beside them; but not those whose numbers KEPT
# names: an older list may call a file by another path.
remove_files()
{
    while IFS= read -r path; do
        case "$path" in '' | */) continue ;; esac
        ! behind_link "$path" || continue
        rm -f "$path.quorel-new"
        case " ${2:-} " in *" $(stat -c %d:%i "$path" 2> /dev/null || echo none) "*) continue ;; esac
        rm -f "$path"
    done <<LIST
$1
LIST
}

# remove_folders LIST: those of its folders that are empty.
remove_folders()
{
    printf '%s\n' "$1" | grep '/$' | LC_ALL=C sort -r | while IFS= read -r path; do
        [ ! -d "$path" ] || behind_link "${path%/}" || rmdir "$path" 2> /dev/null || :
    done
}

# What programs of the desktop make of the files below share, where these programs are.
# What it says of folders that are in no search path is nothing that a user has to do.
refresh_desktop()
{
    [ ! -d "$share/mime/packages" ] || ! command -v update-mime-database > /dev/null || update-mime-database "$share/mime" 2> /dev/null || :
    [ ! -d "$share/applications" ] || ! command -v update-desktop-database > /dev/null ||
        update-desktop-database "$share/applications" || :
    # A cache that isn't there is not missed; one that is older than its folder is passed over.
    [ ! -e "$share/icons/hicolor/icon-theme.cache" ] || ! command -v gtk-update-icon-cache > /dev/null ||
        gtk-update-icon-cache -q -f -t "$share/icons/hicolor" || :
}

# came_with_us FOLDER PATTERN: whether it did, and has no such file left.
came_with_us()
{
    printf '%s\n' "$before" | grep -q -x -F -e "$1/" && [ -d "$1" ] && [ -z "$(find "$1" -path "$2")" ]
}

# What those programs have made, in folders that came with Quorel and serve nobody else now. All other files there are the user's.
remove_made_by_desktop()
{
    if came_with_us "$share/mime" '*/packages/*.xml'; then
        for name in XMLnamespaces aliases application/x-quorel-preset.xml generic-icons globs globs2 icons magic mime.cache \
            subclasses treemagic types version; do
            rm -f "$share/mime/$name"
        done
        [ ! -d "$share/mime/application" ] || rmdir "$share/mime/application" 2> /dev/null || :
    fi
    ! came_with_us "$share/applications" '*.desktop' || rm -f "$share/applications/mimeinfo.cache"
}

before="$(read_list)"

if [ -n "$uninstall" ]; then
    [ -n "$before" ] || fail "there is no Quorel in ${prefix:-/} that this script has installed"

    # Root has set nobody up, a user who has never started it isn't, and a program that can't start here (127) hasn't either.
    if [ "$(id -u)" != 0 ] && [ -x "$prefix/bin/quorel-setup" ] && [ -e "${XDG_CONFIG_HOME:-$HOME/.config}/Ostrand" ]; then
        "$prefix/bin/quorel-setup" --remove || [ $? = 127 ] || fail "not everything that Quorel had set up for you could be removed, as it says above; the programs are still
installed. Put that right, or close your DAW if it holds the files, and try again"
    fi

    # The script and its list go last: a run that breaks off can be repeated.
    remove_files "$(printf '%s\n' "$before" | grep -v -x -F -e "$prefix/lib/quorel/install.sh" || :)"
    refresh_desktop
    remove_made_by_desktop
    remove_folders "$before"
    rm -f "$prefix/lib/quorel/install.sh" "$prefix/lib/quorel/install.sh.quorel-new" "$list.quorel-new" "$list"
    remove_folders "$before"
    say "Quorel is uninstalled. What is yours stays: presets in ${XDG_DATA_HOME:-~/.local/share}/Ostrand, settings in ${XDG_CONFIG_HOME:-~/.config}/Ostrand."
    exit 0
fi

[ -f "$here/bin/quorel" ] || fail "$here/bin/quorel is missing: start this from the whole archive"

# locate FILE: sets `target`, where this file of the archive belongs.
locate()
{
    case "$1" in
        install.sh) target="$prefix/lib/quorel/install.sh" ;;
        lib/vst/*) target="$vst/${1#lib/vst/}" ;;
        lib/vst3/*) target="$vst3/${1#lib/vst3/}" ;;
        lib/lv2/*) target="$lv2/${1#lib/lv2/}" ;;
        *) target="$prefix/$1" ;;
    esac
}

# plan_folder FOLDER: says which are to be made.
plan_folder()
{
    if ! behind_link "$1"; then
        [ ! -d "$1" ] || return 0
        if [ -e "$1" ] || [ -L "$1" ]; then
            fail "$1 is in the way: a folder belongs there"
        fi
    fi
    printf '%s/\n' "$1"
    parent="${1%/*}"
    plan_folder "${parent:-/}"
}

# numbers_of LIST: what the system numbers those of its files that exist; the same file may have another path in another list.
numbers_of() { printf '%s\n' "$1" | grep -v '/$' | tr '\n' '\0' | xargs -0 stat -c %d:%i 2> /dev/null | tr '\n' ' ' || :; }

# Says what will be there: each file, and the folders that are to be made. Fails where something of the user's would go for it.
plan()
{
    folder=
    ours=" $(numbers_of "$before")"
    printf '%s\n' "$files" | while IFS= read -r file; do
        locate "$file"
        printf '%s\n' "$target"
        [ -L "$target" ] || [ ! -d "$target" ] || fail "$target is a folder, and in the way"
        if [ -e "$target" ] && [ ! -L "$target" ] && ! behind_link "$target"; then
            case "$ours" in *" $(stat -c %d:%i "$target") "*) ;; *) fail "$target wasn't installed by this script, and would be
replaced: move it away first" ;; esac
        fi
        [ "$folder" != "${target%/*}" ] || continue
        folder="${target%/*}"
        plan_folder "$folder"
    done
}

# write_list LINES
write_list()
{
    mkdir -p "${list%/*}"
    half="$list.quorel-new"
    printf '%s\n' "$1" | grep . | LC_ALL=C sort -u > "$half"
    mv -f -T "$half" "$list"
    half=
}

# put FILE TARGET: never through a link that lies there, and whole or not at all: a host may have the old file open.
put()
{
    [ -d "${2%/*}" ] || mkdir -p "${2%/*}"
    half="$2.quorel-new"
    if [ "$2" = "$entry" ]; then
        make_entry < "$1" > "$half"
    else
        cp -P --preserve=mode,timestamps -T --remove-destination "$1" "$half"
    fi
    mv -f -T "$half" "$2"
    half=
}

# The menu knows no PATH of the user's. A quoted argument of its own rules, within a text of the file's.
make_entry()
{
    program="$(printf '%s\n' "$prefix/bin/quorel" | sed 's/%/%%/g; s/["`$\\]/\\&/g; s/\\/\\\\/g')"
    while IFS= read -r line; do
        case "$line" in Exec=quorel*) line="Exec=\"$program\"${line#Exec=quorel}" ;; esac
        printf '%s\n' "$line"
    done
}

# An interrupted run, too, leaves a list of what it installed, and no half file; or, before there is a list, nothing.
half=
planned=
clean_up()
{
    [ -z "$half" ] || rm -f "$half"
    [ -e "$list" ] || remove_folders "$planned"
}
trap clean_up EXIT
trap 'exit 1' HUP INT TERM

files="install.sh
$(cd "$here" && find bin lib share \( -type f -o -type l \) | LC_ALL=C sort)"
planned="$(plan)"
write_list "$before
$planned"

# Links in the plug-ins' places, as of `quorel-setup --link`.
for plugin in "$vst/Quorel.so" "$vst3/Quorel.vst3" "$lv2/Quorel.lv2"; do
    [ ! -L "$plugin" ] || rm "$plugin"
done
while IFS= read -r file; do
    locate "$file"
    put "$here/$file" "$target"
done <<FILES
$files
FILES

gone="$(printf '%s\n' "$before" | grep -v -x -F -e "$planned" || :)"
kept=
if printf '%s\n' "$gone" | grep -q '[^/]$'; then
    kept="$(numbers_of "$planned")"
fi
remove_files "$gone" "$kept"
remove_folders "$before"
write_list "$(printf '%s\n' "$before" | grep '/$' || :)
$planned"
refresh_desktop

say "$(head -n 1 "$here/README.txt" | sed "s/ for Linux//") is installed."
say "Plug-ins:  $(cd "$here/lib" && for folder in vst vst3 lv2; do
    [ ! -d "$folder" ] || case "$folder" in vst) printf '%s  ' "$vst" ;; vst3) printf '%s  ' "$vst3" ;; *) printf '%s  ' "$lv2" ;; esac
done)"
say "Programs:  $prefix/bin: quorel, the instrument without a DAW, quorel-render, quorel-presets, quorel-setup"
case ":$PATH:" in
    *":$prefix/bin:"*) ;;
    *) say "That folder isn't in your PATH: start the programs by their whole path$pathHint." ;;
esac
if ! problem="$("$prefix/bin/quorel" --version 2>&1 > /dev/null)"; then
    say "But Quorel can't start here; README.txt says which libraries it needs:"
    say "$problem"
fi
say "Have your DAW rescan its plug-ins. To uninstall:"
say "'$(printf '%s\n' "$prefix" | sed "s/'/'\\\\''/g")/lib/quorel/install.sh' --uninstall"
