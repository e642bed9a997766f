#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Configures and builds one CMake preset (release by default): packaging/build.sh [PRESET [TARGET...]]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

preset="${1:-release}"
shift || true
export CCACHE_SLOPPINESS=time_macros
log="$(mktemp)"
cmake --preset "$preset" > "$log" || { cat "$log"; rm -f "$log"; exit 1; }
rm -f "$log"
targets=()
[[ $# -gt 0 ]] && targets=(--target "$@")
cmake --build --preset "$preset" "${targets[@]}"
