#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds and runs all benchmarks and puts their figures into docs/performance.md. Some minutes on an idle machine. The
# editor's run on an X server of their own.
#   benchmarks/run.sh [BUILD-FOLDER]     an existing build in another place than build/
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build="${1:-build}"
page=docs/performance.md
programs=(quorel_instance_bench quorel_bench quorel_editor_bench)
if [[ $# -eq 0 ]]; then
    packaging/build.sh release "${programs[@]}"
else
    cmake --build "$build" --target "${programs[@]}"
fi

log="$build/benchmarks/benchmarks.log"
: > "$log"
results=()

# measure NAME COMMAND...: one benchmark program, its results into NAME.json
measure() {
    local json="$build/benchmarks/$1.json"
    shift
    "$@" --benchmark_out_format=json --benchmark_out="$json" >> "$log" 2>&1 || { tail "$log"; exit 1; }
    if grep -q '"error_occurred": true' "$json"; then
        grep -B3 -A3 '"error_occurred": true' "$json"
        exit 1
    fi
    results+=("$json")
}

echo "Running; progress in $log"
repeatedly=(--benchmark_min_time=0.1 --benchmark_repetitions=3 --benchmark_enable_random_interleaving=true
            --benchmark_report_aggregates_only=true)
measure instances "$build/benchmarks/quorel_instance_bench"
measure engine "$build/benchmarks/quorel_bench" "${repeatedly[@]}"
measure editor tests/ui/with-display.sh "$build/benchmarks/quorel_editor_bench" "${repeatedly[@]}"

processor="$(sed -n 's/^model name[[:space:]]*: //p' /proc/cpuinfo | sort -u | head -n 1)"
compiler="$(sed -n 's/^CMAKE_CXX_COMPILER:[A-Z]*=//p' "$build/CMakeCache.txt")"
about="$(date +%F), ${processor:-unknown processor}, $(nproc) cores, $("$compiler" --version | head -n 1)"
about+=", load $(cut -d' ' -f1 /proc/loadavg)"

tables="$(mktemp)"
trap 'rm -f "$tables"' EXIT
awk -v about="$about" -f benchmarks/tables.awk "${results[@]}" > "$tables"
awk -v tables="$tables" '
    /<!-- end of figures -->/ { while ((getline line < tables) > 0) print line; hidden = 0 }
    !hidden { print }
    /<!-- figures -->/ { hidden = 1 }' "$page" > "$page.new"
mv "$page.new" "$page"
echo "Wrote $page"
