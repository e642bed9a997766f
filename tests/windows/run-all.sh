#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds for Windows, packs, and tests under Wine what was built:
#   run-all.sh [CTEST-ARGUMENT...]
#   run-all.sh --short    the products and a part of the tests, without packages
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

build=build/windows
short=
[[ "${1:-}" == --short ]] && short=--short && shift

step()
{
    echo
    echo "== $1"
}

step "Building for Windows"
if [[ -n "$short" ]]; then
    packaging/windows/build.sh products
    packaging/build.sh windows effects_tests platform_tests midi_tests presets_tests vst2-host
else
    packaging/windows/build.sh
    packaging/build.sh windows
fi

step "What the binaries need and offer"
tests/windows/check-binaries.sh "$build/dist"

step "The test suite under Wine"
if [[ -n "$short" ]]; then
    ctest --test-dir "$build/tests" --output-on-failure -j"$(nproc)" -R '^(EqLanes|LayerEq|Math|FileOperations|UserStore|PresetFile)'
else
    tests/windows/test-suite.sh "$build" "$@"
fi

step "The same sound as on Linux"
tests/windows/same-sound.py $short build/dist "$build/dist"

step "The same files as on Linux"
tests/windows/same-state.py $short build/dist "$build/dist"

[[ -z "$short" ]] || exit 0

step "Installer and zip"
tests/windows/installer-test.sh
