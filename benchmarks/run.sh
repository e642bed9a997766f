#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds and runs all benchmarks and puts their figures into docs/performance.md. A few minutes on an idle machine.
#   benchmarks/run.sh [BUILD-FOLDER]     an existing build of another place than build/
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build="${1:-build}"
page=docs/performance.md
if [[ $# -eq 0 ]]; then
    packaging/build.sh release quorel_bench
else
    cmake --build "$build" --target quorel_bench
fi

results="$build/benchmarks/results.json"
log="$build/benchmarks/benchmarks.log"
echo "Running; progress in $log"
"$build/benchmarks/quorel_bench" --benchmark_min_time=0.1 --benchmark_repetitions=3 \
    --benchmark_enable_random_interleaving=true --benchmark_report_aggregates_only=true \
    --benchmark_out_format=json --benchmark_out="$results" > "$log" 2>&1 || { tail "$log"; exit 1; }
if grep -q '"error_occurred": true' "$results"; then
    grep -B3 -A3 '"error_occurred": true' "$results"
    exit 1
fi

processor="$(sed -n 's/^model name[[:space:]]*: //p' /proc/cpuinfo | sort -u | head -n 1)"
compiler="$(sed -n 's/^CMAKE_CXX_COMPILER:[A-Z]*=//p' "$build/CMakeCache.txt")"
about="$(date +%F), ${processor:-unknown processor}, $(nproc) cores, $("$compiler" --version | head -n 1)"
about+=", load $(cut -d' ' -f1 /proc/loadavg)"

tables="$(mktemp)"
trap 'rm -f "$tables"' EXIT
awk -v about="$about" -f benchmarks/tables.awk "$results" > "$tables"
awk -v tables="$tables" '
    /<!-- end of figures -->/ { while ((getline line < tables) > 0) print line; hidden = 0 }
    !hidden { print }
    /<!-- figures -->/ { hidden = 1 }' "$page" > "$page.new"
mv "$page.new" "$page"
echo "Wrote $page"
