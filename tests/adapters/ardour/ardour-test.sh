#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Ardour without its windows scans the plug-in, loads it into a session, moves a parameter, saves; opens the session
# again with a sound in it, plays a note and meters it; then saves the sound and restores it once more.
# The VST3 and the LV2 stand beside it in the same session.
#   ardour-test.sh FOLDER-OF-PRODUCTS QUOREL-SETUP SOUND-FILE-WRITER SCRATCH-FOLDER
# Exits with 77 where Ardour 7 isn't installed.
set -euo pipefail

products="$1" setup="$2" writeSound="$3" scratch="$4"
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
ardour=/usr/lib/ardour7
instrument=Orlen
masterVolume=0.5

if [[ ! -x "$ardour/luasession" || ! -x "$ardour/ardour-vst-scanner" ]]; then
    echo "Ardour 7 isn't installed"
    exit 77
fi

fail()
{
    echo "FAILED: $*" >&2
    exit 1
}

rm -rf "$scratch"
mkdir -p "$scratch/vst" "$scratch/home/.vst3" "$scratch/home/.lv2"
scratch="$(cd "$scratch" && pwd)"
ln -s "$products/Quorel.so" "$scratch/vst/"
ln -s "$products/Quorel.vst3" "$scratch/home/.vst3/"
ln -s "$products/Quorel.lv2" "$scratch/home/.lv2/"

# A user of its own, without a screen.
export HOME="$scratch/home" XDG_CACHE_HOME="$scratch/home/cache"
export XDG_CONFIG_HOME="$scratch/prefix/config" XDG_DATA_HOME="$scratch/prefix/data"
export DISPLAY=:9999
"$setup" --prefix "$scratch/prefix" > "$scratch/setup.log" || fail "quorel-setup"
"$writeSound" "$instrument" "$masterVolume" "$scratch/sound.qrl" 2> "$scratch/sound.log" || fail "no sound file"

# As Ardour's own start scripts set them.
inArdour()
{
    env LD_LIBRARY_PATH="$ardour${LD_LIBRARY_PATH:+:$LD_LIBRARY_PATH}" ARDOUR_DATA_PATH=/usr/share/ardour7 \
        ARDOUR_CONFIG_PATH=/etc/ardour7 ARDOUR_DLL_PATH="$ardour" LXVST_PATH="$scratch/vst" \
        timeout --kill-after=5 40 "$@"
}

# Runs a step of the Lua script and shows what it found; Ardour's own talk goes into a log.
step()
{
    local name="$1"
    inArdour "$ardour/luasession" "$here/session.lua" "$scratch/session" "$@" \
        > "$scratch/$name.log" 2> "$scratch/$name.err" || fail "$name: exit code $? (see $scratch/$name.err)"
    grep '^quorel-test: ' "$scratch/$name.log" || fail "$name: no result (see $scratch/$name.log)"
    grep -q '^quorel-test: passed$' "$scratch/$name.log" || fail "$name"
}

# The state in the session file, base64 in its one <chunk> element, into a file.
saveChunk()
{
    sed -n 's|.*<chunk program="0">\([^<]*\)</chunk>.*|\1|p' "$scratch/session/session.ardour" | base64 -d > "$1"
}

inArdour "$ardour/ardour-vst-scanner" -f -v "$scratch/vst/Quorel.so" > "$scratch/scan.log" 2>&1 ||
    fail "the scanner (see $scratch/scan.log)"
grep -q 'name="Quorel".*category="Instrument".*n_inputs="2" n_outputs="2" n_midi_inputs="1" n_midi_outputs="0"' \
    "$scratch/scan.log" || fail "the scan found something else (see $scratch/scan.log)"

inArdour "$ardour/ardour-vst3-scanner" -f -v "$HOME/.vst3/Quorel.vst3" > "$scratch/scan3.log" 2>&1 ||
    fail "the scanner of VST3 (see $scratch/scan3.log)"

step create
saveChunk "$scratch/created.qrl"
[[ "$(head -c 4 "$scratch/created.qrl")" == dmtk ]] || fail "the session holds no state of ours"

# awk's substitution takes a file's text, however long.
base64 -w 0 "$scratch/sound.qrl" > "$scratch/sound.base64"
awk -v file="$scratch/sound.base64" '
    BEGIN { getline sound < file }
    match($0, /<chunk program="0">[^<]*/) {
        $0 = substr($0, 1, RSTART - 1) "<chunk program=\"0\">" sound substr($0, RSTART + RLENGTH)
    }
    { print }' "$scratch/session/session.ardour" > "$scratch/changed.ardour"
mv "$scratch/changed.ardour" "$scratch/session/session.ardour"

step play "$masterVolume"
# What the instrument itself had saved came through Ardour and back.
saveChunk "$scratch/played.qrl"
cmp <(tail -c 1000 "$scratch/sound.qrl") <(tail -c 1000 "$scratch/played.qrl") || fail "the saved session lost the layer's state"
step play "$masterVolume"
