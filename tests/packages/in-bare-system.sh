#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# The part of the test that runs in a bare Debian, as its root: in-bare-system.sh VERSION
set -uo pipefail
. /test/packages/checks.sh

version="$1"
export DEBIAN_FRONTEND=noninteractive
quietly() { "$@" > "$said" 2>&1 || { cat "$said"; return 1; }; }
install() { quietly apt-get install -y -q "$@"; }
has_version() { is_same "$(printf '%s\n' "$1" "$1")" "$(dpkg-query -W -f='${Version}\n' quorel quorel-data)"; }

# as USER COMMAND...: in the user's home, with the user's own PATH, as after a login.
as()
{
    local user="$1" home="/home/$1"
    shift
    (cd "$home" && exec setpriv --reuid "$user" --regid "$user" --clear-groups \
        env -i HOME="$home" USER="$user" LANG=C.UTF-8 PATH="$home/.local/bin:/usr/local/bin:/usr/bin:/bin" "$@")
}
new_user() { useradd --create-home --shell /bin/bash "$1"; }
files_below() { (cd "$1" && find . -mindepth 1 | LC_ALL=C sort); }
# The whole system but what runs, what is fetched, what was logged, and the users' own.
system_files() { find / -xdev \( -path /proc -o -path /home -o -path /packages -o -path /older -o -path /test -o -path /tmp \
    -o -path /var/log -o -path /var/cache -o -path /var/lib/apt -o -path /var/lib/dpkg \) -prune -o -print | LC_ALL=C sort; }

# More than 1 MB, and not silent.
loud_enough() { [[ "$(gzip -c "$1" | wc -c)" -gt 1000000 ]]; }
# renders_demo USER: as README.md says, with folders of its own.
renders_demo()
{
    as "$1" quorel-setup --prefix demo && as "$1" bash -c '/test/demo/render.sh "$(command -v quorel-render)" "$HOME/demo" demo.wav' &&
        loud_enough "/home/$1/demo.wav"
}

# opens USER ARGUMENT...: the standalone shows its window, and ends as a session's end asks it to.
opens()
{
    as "$1" xvfb-run --auto-servernum --server-args="-screen 0 1600x1200x24" bash -c '
        quorel "$@" & process=$!
        for _ in {1..100}; do
            xwininfo -root -tree | grep -F "\"Quorel\": (\"Quorel\" \"Quorel\")" && shown=yes && break
            sleep 0.2
        done
        sleep 3
        kill -TERM "$process"
        wait "$process" && [[ -n "${shown:-}" ]]' "$@"
}
kept_sound() { sed -n 's/.*name="filterState" val="\([^"]*\)".*/\1/p' "/home/$1/.config/Ostrand/Quorel.settings"; }
banks_of() { echo "/home/$1/.local/share/Ostrand/Quorel/Banks"; }
# Opening a preset's file leaves another sound than a fresh start.
opens_a_file()
{
    local before
    before="$(kept_sound "$1")"
    opens "$1" "$(banks_of "$1")/01 Keys and Splits/Four Corners.qrl" && [[ -n "$before" && "$before" != "$(kept_sound "$1")" ]]
}
# All presets of the package are there, beside those that Quorel makes for the user.
is_set_up() { not grep -v "^Only in $(banks_of "$1")" < <(diff -r /usr/lib/quorel/presets "$(banks_of "$1")"); }

has_type() { as "$1" gio info -a standard::content-type "$2" | grep 'application/x-quorel-preset$'; }
knows_presets()
{
    as "$1" cp "$(banks_of "$1")/01 Keys and Splits/Four Corners.qrl" preset.qrl && as "$1" cp preset.qrl nameless &&
        has_type "$1" preset.qrl && has_type "$1" nameless &&
        as "$1" gio mime application/x-quorel-preset | grep -F org.ostrand.quorel.desktop
}
has_pages()
{
    local program
    for program in quorel quorel-render quorel-setup quorel-presets; do
        as "$1" man "$program" | grep -A 1 '^NAME' | grep "$program - " || return 1
    done
}
nothing_of_it() { not grep . <(find / -xdev \( -path /proc -o -path /home -o -path /packages -o -path /older -o -path /test \
    -o -path /var/log -o -path /var/cache/apt \) -prune -o \( -iname '*quorel*' -o -iname '*ostrand*' \) -print); }

with_debian()
{
    check "apt installs the packages on a bare system" install /packages/quorel*.deb
    check "both have version $version" has_version "$version"
    new_user ada
    check "a program starts" as ada quorel-render --help

    # What a desktop has, and what looks at windows.
    check "apt installs what the test needs" install xvfb xauth x11-utils man-db shared-mime-info desktop-file-utils libglib2.0-bin
    check "the standalone opens its window" opens ada
    check "which has set its user up" is_set_up ada
    check "the demo is rendered" renders_demo ada
    check "a preset's file is opened" opens_a_file ada
    check "presets are known by name and by content, and open with Quorel" knows_presets ada
    check "manual pages" has_pages ada

    cp -a /home/ada /home/ada-before
    check "apt purges the packages" quietly apt-get purge -y -q quorel quorel-data
    check "without a trace" nothing_of_it
    check "but the user's own files" diff -r /home/ada /home/ada-before
    rm -rf /home/ada-before
}

with_an_older_debian()
{
    system_files > /tmp/before.txt
    check "apt installs an older version" install /older/quorel*.deb
    check "both have version 0.9.0" has_version 0.9.0
    new_user bela
    check "its standalone opens" opens bela
    local presets
    presets="$(banks_of bela)/01 Keys and Splits"
    printf 'x' >> "$presets/Toy Box.qrl"
    cp "$presets/Toy Box.qrl" "$presets/My own.qrl"

    # The programs in these packages are of the new version already.
    check "its user has been set up" grep -F "\"$version\"" /home/bela/.config/Ostrand/Registry.xml
    sed -i "s/\"$version\"/\"0.9.0\"/" /home/bela/.config/Ostrand/Registry.xml

    check "apt upgrades it" install /packages/quorel*.deb
    check "both have version $version" has_version "$version"
    check "a file that is no more is gone" not test -e /usr/lib/quorel/Help/old-page.html
    check "the menu entry is the new one" not grep Comment=Old /usr/share/applications/org.ostrand.quorel.desktop
    check "dpkg finds every file as it was packed" is_same "" "$(dpkg --verify quorel quorel-data 2>&1)"
    check "the standalone opens" opens bela
    check "and has brought its user the new preset" cmp "/usr/lib/quorel/presets/01 Keys and Splits/Four Corners.qrl" "$presets/Four Corners.qrl"
    check "and the changed one" cmp "/usr/lib/quorel/presets/01 Keys and Splits/Harp and Choir.qrl" "$presets/Harp and Choir.qrl"
    check "what the user has changed stays" not cmp "/usr/lib/quorel/presets/01 Keys and Splits/Toy Box.qrl" "$presets/Toy Box.qrl"

    check "apt removes and purges it" quietly apt-get purge -y -q quorel quorel-data
    check "without a trace" nothing_of_it
    system_files > /tmp/after.txt
    check "and leaves the system as it was" diff /tmp/before.txt /tmp/after.txt
    check "but the user's own file" test -e "$presets/My own.qrl"
}

archive_of() { echo "/home/$1/quorel-$version-linux-$(uname -m)"; }
# holds_the_archive USER PREFIX VST-FOLDER [PREFIX-IN-ENTRY]: each of its files, the menu entry aside, which has got its program's place.
holds_the_archive()
{
    local archive file result=0
    archive="$(archive_of "$1")"
    while IFS= read -r file; do
        case "$file" in
            lib/vst*/* | lib/lv2/*) cmp "$archive/$file" "${3%vst}${file#lib/}" || result=1 ;;
            *.desktop) grep -x -F "Exec=\"${4:-$2}/bin/quorel\" %f" "$2/$file" && desktop-file-validate "$2/$file" || result=1 ;;
            *) cmp "$archive/$file" "$2/$file" || result=1 ;;
        esac
    done < <(cd "$archive" && find bin lib share ! -type d)
    [[ -s "$2/lib/quorel/installed.txt" ]] || result=1
    return "$result"
}

# What a user's home holds, but for settings and presets of the user's, and what other programs keep.
traces() { files_below "/home/$1" |
    grep -v -E '^\./(\.cache|\.config|\.local|\.local/share|\.Xauthority)$|^\./(\.cache|\.config/Ostrand|\.local/share/Ostrand)(/|$)'; }
# A build, with links to it and to one that is no more in the plug-ins' places.
link_plugins()
{
    as "$1" bash -c 'mkdir -p build/Contents/x86_64-linux && rm -rf .vst/Quorel.so .vst3/Quorel.vst3 .lv2/Quorel.lv2 &&
        echo own > build/Contents/x86_64-linux/Quorel.so && ln -s ../build/Contents/x86_64-linux/Quorel.so .vst/ &&
        ln -s ../build .vst3/Quorel.vst3 && ln -s ../nowhere .lv2/Quorel.lv2'
}
own_build_stays() { grep -x own "/home/$1/build/Contents/x86_64-linux/Quorel.so" && is_same 4 "$(find "/home/$1/build" | wc -l)"; }
# killed_in_between USER PROGRAM: when some files are there, and others aren't.
killed_in_between()
{
    as "$1" bash -c '"$0" & for _ in {1..1000}; do [[ ! -e .local/bin/quorel-render ]] || break; sleep 0.01; done
        kill -KILL $!; sleep 1; [[ -e .local/bin/quorel-render && ! -e .local/share/mime/packages/quorel.xml ]]' "$2"
}

# root_owns_all ARCHIVE: whoever owns the archive, and whatever root's umask is.
root_owns_all()
{
    (umask 077 && "$1/install.sh" --prefix /opt/quorel) && is_same 0 "$(find /opt/quorel ! -user root -o ! -type l ! -perm -o=r | wc -l)" &&
        as cleo /opt/quorel/bin/quorel-render --version && /opt/quorel/lib/quorel/install.sh --uninstall && [[ ! -e /opt/quorel ]]
}

with_the_tarball()
{
    new_user cleo
    tar -C /home/cleo -xzf "/packages/quorel-$version-linux-$(uname -m).tar.gz"
    chown -R cleo: /home/cleo
    local archive presets
    archive="$(archive_of cleo)"
    traces cleo > /tmp/before.txt
    as cleo mkdir -p .local/bin
    as cleo touch .local/bin/quorel-render
    check "install.sh replaces no file of the user's" says "quorel-render wasn't installed by this script" as cleo "$archive/install.sh"
    as cleo rm -r .local/bin
    check "without a trace" diff /tmp/before.txt <(traces cleo)
    check "install.sh installs for everyone" root_owns_all "$archive"
    check "install.sh is killed" killed_in_between cleo "$archive/install.sh"
    check "and takes off what it has installed" as cleo "$archive/install.sh" --uninstall
    check "without a trace" diff /tmp/before.txt <(traces cleo)
    check "install.sh installs for an ordinary user" as cleo "$archive/install.sh"
    check "everything is there" holds_the_archive cleo /home/cleo/.local /home/cleo/.vst
    check "the standalone opens" opens cleo
    check "the demo is rendered" renders_demo cleo
    check "presets open with Quorel" knows_presets cleo
    check "manual pages" has_pages cleo
    check "quorel-setup --link finds the plug-ins in their places" says ".vst3/Quorel.vst3 is installed there already" as cleo quorel-setup --link
    presets="$(banks_of cleo)/01 Keys and Splits"
    cp "$presets/Toy Box.qrl" "$presets/My own.qrl"

    # An older version had a file more, and the user has links in the plug-ins' places.
    echo "/home/cleo/.local/lib/quorel/Help/old-page.html" >> /home/cleo/.local/lib/quorel/installed.txt
    echo old > /home/cleo/.local/lib/quorel/Help/old-page.html
    link_plugins cleo
    ln -s "$archive/install.sh" /tmp/start
    check "install.sh replaces what is installed" as cleo /tmp/start
    check "everything is there again" holds_the_archive cleo /home/cleo/.local /home/cleo/.vst
    check "a file that is no more is gone" not test -e /home/cleo/.local/lib/quorel/Help/old-page.html
    check "nothing was written through a link" own_build_stays cleo

    link_plugins cleo
    as cleo touch .local/share/applications/mimeapps.list .local/share/mime/mine
    check "install.sh takes it off" as cleo .local/lib/quorel/install.sh --uninstall
    check "nothing was deleted through a link" own_build_stays cleo
    check "nor a file of the user's" as cleo rm .local/share/applications/mimeapps.list .local/share/mime/mine
    as cleo rm .vst/Quorel.so .vst3/Quorel.vst3 .lv2/Quorel.lv2
    as cleo rmdir .local/share/applications .local/share/mime .vst .vst3 .lv2
    rm -rf /home/cleo/{demo,demo.wav,preset.qrl,nameless,build}
    check "without a trace" diff /tmp/before.txt <(traces cleo)
    check "but the user's own files" test -e "$presets/My own.qrl"
    check "the instruments it had copied are gone" not test -e /home/cleo/.local/share/Ostrand/Quorel/Plugins

    files_below /home/cleo > /tmp/before.txt
    local elsewhere='my $programs/5% & "more"'
    check "install.sh installs elsewhere" as cleo "$archive/install.sh" --prefix "$elsewhere"
    check "and again under another spelling" as cleo "$archive/install.sh" --prefix "./my \$programs//5% & \"more\"/"
    check "everything is there" holds_the_archive cleo "/home/cleo/$elsewhere" "/home/cleo/$elsewhere/lib/vst" \
        '/home/cleo/my \\$programs/5%% & \\"more\\"'
    as cleo mv "$elsewhere" moved
    check "install.sh takes it off where it has been moved to" as cleo moved/lib/quorel/install.sh --uninstall
    files_below /home/cleo > /tmp/after.txt
    check "without a trace" diff /tmp/before.txt /tmp/after.txt
    check "and says so where there is nothing to take off" says "there is no Quorel in" as cleo "$archive/install.sh" --uninstall
}

quietly apt-get update -q || exit 1
with_debian
with_an_older_debian
with_the_tarball
verdict
