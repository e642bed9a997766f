#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# From a bare Debian 12 to sound: installs the packages, builds, and renders the demo song through four layered
# instruments and four effects. Everything it makes lies below build/.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

packaging/install-packages.sh
packaging/build.sh release products

dist="$PWD/build/dist"
prefix="$PWD/build/prefix"
wav="$PWD/build/quorel-demo.wav"

"$dist/quorel-setup" --prefix "$prefix"
demo/render.sh "$dist/quorel-render" "$prefix" "$wav"

cat <<TEXT

The demo song is in
    $wav

To use Quorel for yourself:
    $dist/quorel-setup                    set up your own folders and instruments, once
    mkdir -p ~/.vst && cp $dist/Quorel.so ~/.vst/
                                          then let your DAW scan its VST2 (LXVST) folder
    $dist/Quorel                          the standalone, with your audio and MIDI devices
TEXT
