#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs, updates, uses and uninstalls what packaging/windows/pack.sh has packed, under Wine, as users of their own:
#   tests/windows/installer-test.sh
# Needs the target vst2-host of the cross build. Says what it has tried, a line each; ends with 1 if anything failed.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

build="$PWD/build/windows"
version="$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")"
setup="$PWD/build/packages/Quorel-$version-win64-setup.exe"
zip_file="$PWD/build/packages/Quorel-$version-win64.zip"
host="$build/tests/windows/vst2-host.exe"
work="$build/installer-test"
uninstall_key='HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Quorel'
preset="01 Keys and Splits/Four Corners"
failures=0
export QUOREL_WINE_TIMEOUT=600
rm -rf "$work"
mkdir -p "$work"

# check WHAT COMMAND...: the command's exit code is the verdict.
check()
{
    if "${@:2}" > "$work/said.txt" 2>&1; then
        echo "ok      $1"
    else
        echo "FAILED  $1"
        sed 's/^/        /' "$work/said.txt"
        failures=$((failures + 1))
    fi
}

not() { ! "$@"; }
ends_with() { "${@:2}"; [[ $? == "$1" ]] || { echo "not exit code $1"; return 1; }; }
is_same() { diff <(echo "$1") <(echo "$2"); }
run() { tests/windows/run-in-wine.sh "$@"; }
registry() { run "$drive/windows/system32/reg.exe" "$@" 2> /dev/null; }

# new_user NAME: a Windows of the user's own, in which nothing is installed.
new_user()
{
    export USER="$1" LOGNAME="$1" QUOREL_WINE_FOLDER="$work/$2"
    echo "As $1"
    drive="$QUOREL_WINE_FOLDER/plain/drive_c"
    user="$drive/users/$1"
    mkdir -p "$QUOREL_WINE_FOLDER"
    run "$setup" /S "/VST2DIR=Z:\\proc" > /dev/null 2>&1
    registry query 'HKCU\Software' > "$QUOREL_WINE_FOLDER/software.txt"
    programs="$user/AppData/Local/Programs/Quorel"
    plugin="$user/AppData/Local/Programs/Common/VST2/Quorel/Quorel.dll"
    vst3="$user/AppData/Local/Programs/Common/VST3/Quorel.vst3"
    data="$user/AppData/Roaming/Ostrand/Quorel"
    menu="$user/AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Quorel"
}

files_below() { (cd "$1" && find . -type f -printf '%P\n' | LC_ALL=C sort); }
registry_value() { registry query "$uninstall_key" /v "$1" | sed -n 's/^ *[^ ].* REG_[A-Z]* *//p'; }

# Programs are those of the list, data those of the products, settings and start menu are there.
is_installed()
{
    is_same "$( (sed 's/\r$//; /\\$/d; s,\\,/,g' "$programs/files.txt" && printf 'Uninstall.exe\nfiles.txt\n') | LC_ALL=C sort)" \
            "$(files_below "$programs")" &&
        cmp "$plugin" "$build/dist/Quorel.dll" &&
        diff -r "$vst3" "$build/dist/Quorel.vst3" &&
        is_same "$(files_below "$build/dist/presets")" "$(files_below "$data/Banks")" &&
        diff -r "$build/dist/presets" "$data/Banks" &&
        diff -r "$build/dist/Ostrand" "$data/Plugins/Ostrand" &&
        diff -r "$build/dist/Banks" "$data/Instrument Banks" &&
        cmp "$build/dist/Help/quorel-user-guide.html" "$data/Help/quorel-user-guide.html" &&
        is_same "$(ls "$menu")" "$(printf 'Quorel user guide.lnk\nQuorel.lnk\nUninstall Quorel.lnk')" &&
        is_same "$(registry_value DisplayVersion)" "$version" &&
        not grep -F "(not set)" <(run "$programs/quorel-setup.exe" --show)
}

renders()
{
    run "$programs/quorel-render.exe" --preset "$preset" --tail 1 demo/quorel-demo.mid -o "$work/render.wav" &&
        loud_enough "$work/render.wav"
}

# More than 1 MB, and not silent.
loud_enough() { [[ "$(gzip -c "$1" | wc -c)" -gt 1000000 ]]; }

# In a host, with the preset as it stands in the user's folder.
plays() { run "$host" "$plugin" --chunk "$data/Banks/$preset.qrl" --note 60:0:800 --seconds 1.5 --at-least -40; }

uninstall()
{
    run "$programs/Uninstall.exe" /S
    # It works from a copy of itself, so that it can remove its own file.
    for _ in {1..120}; do
        [[ -e "$programs/Uninstall.exe" ]] || return 0
        sleep 0.5
    done
    return 1
}

# Nothing but what the host and the instruments write themselves, and the user's own: "is_gone FILE...", below Ostrand.
is_gone()
{
    not [ -e "$programs" ] && not [ -e "$(dirname "$plugin")" ] && not [ -e "$vst3" ] &&
        not [ -e "$menu" ] &&
        is_same "$(registry query 'HKCU\Software')" "$(cat "$QUOREL_WINE_FOLDER/software.txt")" &&
        not registry query "$uninstall_key" &&
        is_same "$(printf '%s\n' "$@" | LC_ALL=C sort)" "$(files_below "$user/AppData/Roaming/Ostrand")"
}

# older_version: another set of products, older in all that counts. One program's file more, a preset less, one that has
# changed since.
older_version()
{
    local dist="$work/older"
    cp -a "$build/dist" "$dist"
    echo "old" > "$dist/Help/old-page.html"
    rm "$dist/presets/$preset.qrl"
    cp "$dist/presets/01 Keys and Splits/Toy Box.qrl" "$dist/presets/01 Keys and Splits/Harp and Choir.qrl"
    packaging/windows/pack.sh 0.9.0 "$work" "$dist" &&
        older="$work/Quorel-0.9.0-win64-setup.exe"
}

# While a host has the plug-in open.
refused_while_open()
{
    run "$host" "$plugin" --editor 40 --seconds 0.1 > "$work/host.txt" 2>&1 &
    local pid=$!
    for _ in {1..100}; do
        grep -q . "$work/host.txt" && break
        sleep 0.2
    done
    local before
    before="$(files_below "$user/AppData")"
    # The uninstaller goes on in a copy of itself.
    ends_with 2 run "$setup" /S && run "$programs/Uninstall.exe" /S && sleep 5 &&
        is_same "$before" "$(files_below "$user/AppData" | grep -v '/Un.exe$')"
    local verdict=$?
    wait "$pid"
    return "$verdict"
}

update_keeps_what_is_the_users()
{
    local bank="$data/Instrument Banks/Zeph/Skies.fxb"
    printf 'x' >> "$bank"
    printf 'x' >> "$data/Banks/06 Motion and Rhythm/Tape Clock.qrl"
    rm "$data/Banks/06 Motion and Rhythm/Wah Steps.qrl"
    mkdir "$data/Banks/Mine"
    cp "$data/Banks/01 Keys and Splits/Toy Box.qrl" "$data/Banks/Mine/My Box.qrl"
    echo "notes" > "$programs/my notes.txt"
    cp "$bank" "$work/bank"
    ends_with 0 run "$setup" /S &&
        cmp "$drive/old plug-ins/Quorel/Quorel.dll" "$build/dist/Quorel.dll" &&
        cmp "$bank" "$work/bank" &&
        not cmp -s "$data/Banks/06 Motion and Rhythm/Tape Clock.qrl" "$build/dist/presets/06 Motion and Rhythm/Tape Clock.qrl" &&
        not [ -e "$data/Banks/06 Motion and Rhythm/Wah Steps.qrl" ] &&
        cmp "$data/Banks/$preset.qrl" "$build/dist/presets/$preset.qrl" &&
        cmp "$data/Banks/01 Keys and Splits/Harp and Choir.qrl" "$build/dist/presets/01 Keys and Splits/Harp and Choir.qrl" &&
        not [ -e "$programs/Help/old-page.html" ] && [ -e "$programs/my notes.txt" ] &&
        is_same "$(registry_value DisplayVersion)" "$version"
}

# The README's own steps.
zip_works()
{
    local folder="$user/My programs"
    mkdir "$folder" && python3 -m zipfile -e "$zip_file" "$folder" || return 1
    folder="$folder/Quorel-$version-win64"
    run "$folder/quorel-setup.exe" || return 1
    mkdir -p "$(dirname "$plugin")" "$(dirname "$vst3")" && cp "$folder/Quorel.dll" "$plugin" &&
        cp -R "$folder/Quorel.vst3" "$vst3" && plays || return 1
    run "$folder/quorel-setup.exe" --remove || return 1
    rm -r "$user/My programs" "$(dirname "$plugin")" "$vst3"
    is_gone "Quorel/Banks/99 Default Preset/Default Preset.qrl"
}

new_user anna plain-user
check "a VST2 folder that can't be written is refused" ends_with 2 run "$setup" /S "/VST2DIR=Z:\\proc"
check "and nothing is installed" not [ -e "$programs" ]
check "an older version" older_version
check "it is installed, to another VST2 folder" ends_with 0 run "$older" /S "/VST2DIR=C:\\old plug-ins"
check "an update goes where it was and keeps what is the user's" update_keeps_what_is_the_users
check "an older version doesn't replace a newer one" ends_with 3 run "$older" /S
check "unless it is told to" ends_with 0 run "$older" /S /DOWNGRADE
check "and back, with the plug-in elsewhere" ends_with 0 run "$setup" /S "/VST2DIR=C:\\users\\anna\\AppData\\Local\\Programs\\Common\\VST2"
check "the old plug-in is gone" not [ -e "$drive/old plug-ins/Quorel" ]
check "a host plays the preset" plays
check "uninstalled" uninstall
check "what is the user's stays" [ -e "$programs/my notes.txt" ]
rm -r "$programs"
check "and that alone" is_gone "Quorel/Instrument Banks/Zeph/Skies.fxb" "Quorel/Banks/06 Motion and Rhythm/Tape Clock.qrl" \
    "Quorel/Banks/Mine/My Box.qrl" "Quorel/Banks/99 Default Preset/Default Preset.qrl"

new_user "Анна Ли" other-user
check "a silent installation" ends_with 0 run "$setup" /S
check "everything is there" is_installed
check "a preset is rendered" renders
check "a host plays the preset" plays
check "nothing changes while a host has the plug-in open" refused_while_open
check "uninstalled" uninstall
check "nothing is left but the Default Preset" is_gone "Quorel/Banks/99 Default Preset/Default Preset.qrl"
rm -r "$data"
check "the zip, by its README's words" zip_works

new_user ben third-user
mkdir "$drive/Plug-ins"
registry add 'HKCU\SOFTWARE\VST' /v VSTPluginsPath /d 'C:\Plug-ins' > /dev/null
programs="$drive/Music/Quorel"
check "programs go where they are wanted" ends_with 0 run "$setup" /S '/D=C:\Music\Quorel'
check "they are there" cmp "$programs/Quorel.exe" "$build/dist/Quorel.exe"
check "the plug-in is where the registry has those of VST2" cmp "$drive/Plug-ins/Quorel/Quorel.dll" "$build/dist/Quorel.dll"
check "uninstalled" uninstall
check "nothing is left of them" is_same "$(ls -A "$drive/Plug-ins" "$drive/Music" | grep -v '^$')" \
    "$(printf '%s:\n' "$drive/Music" "$drive/Plug-ins")"

echo "$failures failed"
[[ "$failures" == 0 ]]
