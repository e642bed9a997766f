#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# From a bare Debian 12 to sound: installs the packages, builds, renders the demo song through four layered instruments
# and four effects, and takes a tour through the factory presets. Everything it makes lies below build/.
# With --gui it opens the standalone on the demo's sound instead; with --package it makes the Debian packages and the tarball,
# in build/packages/.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")"

case "$*" in
    "" | --gui) ;;
    --package) exec packaging/package.sh ;;
    *)
        echo "usage: ./run.sh [--gui | --package]" >&2
        exit 2 ;;
esac

packaging/install-packages.sh
packaging/build.sh release products

dist="$PWD/build/dist"
prefix="$PWD/build/prefix"
wav="$PWD/build/quorel-demo.wav"
tour="$PWD/build/quorel-tour.wav"

"$dist/quorel-setup" --prefix "$prefix"

if [[ "${1:-}" == --gui ]]; then
    folder="$prefix/data/Ostrand/Quorel/Banks/Demo"
    mkdir -p "$folder"
    "$dist/quorel-render" --prefix "$prefix" --save-preset "$folder/Quorel Demo.qrl" @demo/demo-render.args
    XDG_CONFIG_HOME="$prefix/config" XDG_DATA_HOME="$prefix/data" exec "$dist/Quorel" --preset "Demo/Quorel Demo"
fi

demo/render.sh "$dist/quorel-render" "$prefix" "$wav"
echo
echo "A tour through the factory presets:"
demo/tour.sh "$PWD/build/tools/tour/quorel-tour" "$prefix" "$tour"

cat <<TEXT

The demo song is in
    $wav
and the tour in
    $tour

To use Quorel for yourself:
    $dist/quorel-setup --link             link the plug-ins (VST3, LV2, VST2) into your own folders, ~/.vst3 and so on;
                                          then let your DAW search them
    ./run.sh --gui                        the standalone on the demo's sound, with folders of its own
    $dist/Quorel                          the standalone, with your audio and MIDI devices
TEXT
