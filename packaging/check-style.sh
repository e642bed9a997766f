#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Checks .clang-format and .clang-tidy over our own code. Wants clang-format and clang-tidy 14, and a configured build.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

mapfile -t files < <(git ls-files 'src/*.h' 'src/*.cpp' 'instruments/*.h' 'instruments/*.cpp' 'tools/*.h' 'tools/*.cpp' \
                                  'tests/*.h' 'tests/*.cpp' 'benchmarks/*.h' 'benchmarks/*.cpp')
clang-format --dry-run --Werror "${files[@]}"

# The warnings that only GCC knows stand in the compile commands: clang passes them over.
git ls-files 'src/*.cpp' 'instruments/*.cpp' 'tools/*.cpp' |
    xargs -P "$(nproc)" -n 4 clang-tidy -p build --quiet --extra-arg=-Wno-unknown-warning-option
