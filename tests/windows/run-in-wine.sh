#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs a program for Windows under Wine, as ctest does with the tests of a cross build:
#   run-in-wine.sh [--display] PROGRAM ARGUMENT...
# Its exit code is the program's, 124 after QUOREL_WINE_TIMEOUT seconds (900). Lines end as they do here.
# Without --display windows exist, but nothing shows them, on a screen of 1024 x 768. With it the program has a screen of
# its own, 2400 x 1800, that of DISPLAY if QUOREL_WINE_SCREEN says "own".
# No program is heard. Wine's folders are made on first use, in wine/ of the build tree that the program lies in, or in QUOREL_WINE_FOLDER.
set -uo pipefail

display=
[[ "${1-}" == --display ]] && display=wanted && shift
program="$(realpath "$1")"
shift
# Listing the tests needs no display.
for argument in "$@"; do [[ "$argument" == --gtest_list_tests ]] && display=; done

# build_tree_of FILE: the folder above it that CMake has built in.
build_tree_of()
{
    local folder
    folder="$(dirname "$1")"
    while [[ "$folder" != / && ! -e "$folder/CMakeCache.txt" ]]; do folder="$(dirname "$folder")"; done
    [[ "$folder" != / ]] && echo "$folder"
}

tree="$(build_tree_of "$program")" || tree="${QUOREL_WINE_FOLDER:-}"
folder="${QUOREL_WINE_FOLDER:-${tree:+$tree/wine}}"
[[ -n "$folder" ]] || { echo "$program lies in no build tree: set QUOREL_WINE_FOLDER" >&2; exit 1; }
mkdir -p "$folder/home"

# A new prefix links the user's documents to HOME. Without its debugger, which would wait for an answer, a crash ends with
# exit code 5.
export HOME="$folder/home" WINEDEBUG=-all LC_ALL=C.UTF-8
export WINEDLLOVERRIDES="dxgi=n,b;winedbg.exe=d;mscoree=;mshtml="
own="${DISPLAY:-}"
unset DISPLAY

# set_value KEY NAME TEXT: in the registry of $WINEPREFIX. Locks stay with this shell: Wine's server would keep them.
set_value()
{
    timeout 60 wine reg add "HKCU\\Software\\Wine\\$1" /v "$2" /d "$3" /f > "$folder/prefix.log" 2>&1 8>&- 9>&-
}

# The first prefix; others are copies, which share the files of the system. The number in "ready" is that of what they
# are made by.
make_first()
{
    rm -rf "$folder/plain"
    timeout 300 wineboot -i > "$folder/prefix.log" 2>&1 8>&- 9>&- &&
        set_value Drivers Graphics null && set_value Drivers Audio "" && wineserver -w || return 1
    # The user's folders, as they are on Windows.
    for link in "$folder"/plain/drive_c/users/*/*; do
        [[ ! -L "$link" ]] || { rm "$link" && mkdir "$link"; }
    done
    touch "$folder/plain/ready-2"
}

# Windows' own frames, and no window manager.
make_copy()
{
    rm -rf "$WINEPREFIX"
    mkdir "$WINEPREFIX" &&
        cp -a "$folder"/plain/{*.reg,.update-timestamp,dosdevices} "$WINEPREFIX" &&
        cp -al "$folder/plain/drive_c" "$WINEPREFIX" &&
        sed -i '/^"Graphics"="null"/d' "$WINEPREFIX/user.reg" &&
        printf '\n[Software\\\\Wine\\\\X11 Driver]\n"Managed"="N"\n' >> "$WINEPREFIX/user.reg" &&
        touch "$WINEPREFIX/ready-2"
}

# Wine 8 tells nobody of a display's refresh, without which nothing is painted: see Dxgi.cpp.
put_dxgi()
{
    local library="$tree/tests/windows/dxgi.dll" place="$WINEPREFIX/drive_c/windows/system32/dxgi.dll"
    [[ ! -e "$library" ]] || cmp -s "$library" "$place" || cp --remove-destination "$library" "$place"
}

exec 9> "$folder/lock"
flock 9
export WINEPREFIX="$folder/plain"
[[ -e "$folder/plain/ready-2" ]] || make_first || { cat "$folder/prefix.log" >&2; exit 1; }
put_dxgi
if [[ -n "$display" ]]; then
    # The first prefix that no other program has at the moment.
    for ((number = 1;; ++number)); do
        exec 8> "$folder/display-$number.lock"
        flock -n 8 && break
    done
    WINEPREFIX="$folder/display-$number"
    [[ -e "$WINEPREFIX/ready-2" ]] || make_copy || exit 1
    put_dxgi
fi
exec 9>&-

server=
finish()
{
    [[ -n "$display" ]] || return 0
    wineserver -k
    [[ -z "$server" ]] || kill "$server"
}
trap finish EXIT
trap 'exit 143' TERM INT

if [[ -n "$display" && "${QUOREL_WINE_SCREEN:-}" == own ]]; then
    export DISPLAY="$own"
elif [[ -n "$display" ]]; then
    exec 7< <(exec Xvfb -displayfd 1 -screen 0 2400x1800x24 -nolisten tcp 2> /dev/null 8>&-)
    server=$!
    read -r screen <&7 || { echo "no screen" >&2; exit 1; }
    export DISPLAY=":$screen"
fi

# Wine's services come with its first program and would hold our output open beyond the end of that.
timeout 60 wine cmd /c exit < /dev/null > /dev/null 2>&1 7<&- 8>&-

# The server keeps what some killed programs had open, too: reading ends with the program, not with its pipe.
exec 6> >(exec sed -u 's/\r$//' 7<&- 8>&-)
output=$!
exec 5> >(exec cat >&2 6>&- 7<&- 8>&-)
errors=$!
timeout --kill-after=10 "${QUOREL_WINE_TIMEOUT:-900}" wine "$program" "$@" >&6 2>&5 5>&- 6>&- 7<&- 8>&-
code=$?
exec 5>&- 6>&-
for _ in {1..40}; do
    kill -0 "$output" 2> /dev/null || kill -0 "$errors" 2> /dev/null || break
    sleep 0.05
done
kill "$output" "$errors" 2> /dev/null
exit "$code"
