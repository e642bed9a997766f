#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# The tests of the build for Windows under Wine, but for those that not-under-wine.txt names, each with its reason: at most
# 5 % of all.
#   test-suite.sh BUILD [CTEST-ARGUMENT...]
set -euo pipefail
build="$1"
shift
list="$(dirname "${BASH_SOURCE[0]}")/not-under-wine.txt"
most=5

mapfile -t left_out < <(sed -n 's/^\([^# ][^ ]*\) .*/\1/p' "$list")
all="$(ctest --test-dir "$build" -N | sed -n 's/^ *Test *#[0-9]*: //p')"
total="$(wc -l <<< "$all")"
failures=0

for name in "${left_out[@]}"; do
    if ! grep -qxF "$name" <<< "$all"; then
        echo "not-under-wine.txt names a test that isn't there: $name" >&2
        failures=1
    fi
done

if grep -nE '^[^# ]+ *$' "$list" >&2; then
    echo "not-under-wine.txt: no reason" >&2
    failures=1
fi

if ((${#left_out[@]} * 100 > total * most)); then
    echo "not-under-wine.txt: more than $most % of $total tests" >&2
    failures=1
fi

((failures == 0)) || exit 1
echo "${#left_out[@]} of $total tests are left out"
pattern="$(printf '%s\n' "${left_out[@]}" | sed 's/[][\\.*^$+?(){}|/]/\\&/g' | paste -sd'|')"
exec ctest --test-dir "$build" --output-on-failure -j"$(nproc)" ${pattern:+-E "^($pattern)\$"} "$@"
