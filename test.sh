#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs the packages, builds everything and runs all tests.
#   ./test.sh            the tests of the release build
#   ./test.sh asan       under AddressSanitizer and UndefinedBehaviorSanitizer
#   ./test.sh tsan       under ThreadSanitizer
#   ./test.sh windows    builds and packs for 64-bit Windows, and runs the tests under Wine; --short: a part of them
#   ./test.sh packages   makes the packages, and installs, upgrades and removes them in a bare Debian; as root
#   ./test.sh style      clang-format and clang-tidy over our own code
# Further arguments go to ctest, as in: ./test.sh release -R Chunk
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")"

kind="${1:-release}"
shift || true

if [[ "$kind" == style ]]; then
    exec packaging/check-style.sh
fi

if [[ "$kind" == windows ]]; then
    exec tests/windows/run-all.sh "$@"
fi

if [[ "$kind" == packages ]]; then
    exec tests/packages/run-all.sh "$@"
fi

if [[ "$kind" != release && "$kind" != dev && "$kind" != asan && "$kind" != tsan ]]; then
    sed -n '/^# Installs/,/^# Further/s/^# //p' test.sh >&2
    exit 2
fi

packaging/install-packages.sh
packaging/build.sh "$kind"
build=build
[[ "$kind" == release ]] || build="build/$kind"

export ASAN_OPTIONS="${ASAN_OPTIONS:-detect_leaks=0:detect_odr_violation=0:alloc_dealloc_mismatch=0}"
export TSAN_OPTIONS="${TSAN_OPTIONS:-second_deadlock_stack=1}"
exec ctest --test-dir "$build" --output-on-failure -j"$(nproc)" "$@"
