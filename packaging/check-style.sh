#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Checks .clang-format and .clang-tidy over our own code. Takes over an hour: clang-tidy looks at every file.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

packaging/install-packages.sh
packaging/install-packages.sh packaging/style-packages.txt
# For the compile commands.
packaging/build.sh release quorel_juce

mapfile -t files < <(git ls-files 'src/*.h' 'src/*.cpp' 'instruments/*.h' 'instruments/*.cpp' 'tools/*.h' 'tools/*.cpp' \
                                  'tests/*.h' 'tests/*.cpp' 'benchmarks/*.h' 'benchmarks/*.cpp')
clang-format --dry-run --Werror "${files[@]}"

# The compile commands name warnings that only GCC knows; clang is told not to mind.
git ls-files 'src/*.cpp' 'instruments/*.cpp' 'tools/*.cpp' |
    xargs -P "$(nproc)" -n 4 clang-tidy -p build --quiet --extra-arg=-Wno-unknown-warning-option
