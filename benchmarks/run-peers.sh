#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs other effects (packaging/peer-packages.txt), times Quorel's effects beside them, and puts the tables into
# docs/performance.md. Five to ten minutes.
#   benchmarks/run-peers.sh [BUILD-FOLDER]     an existing build in another place than build/
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

packaging/install-packages.sh
packaging/install-packages.sh packaging/peer-packages.txt

build="${1:-build}"
page=docs/performance.md
if [[ $# -eq 0 ]]; then
    packaging/build.sh release effects_vs_peers
else
    cmake "$build" > /dev/null
    cmake --build "$build" --target effects_vs_peers
fi

program="$build/benchmarks/peers/effects_vs_peers"
tables="$build/benchmarks/peers/tables.md"
log="$build/benchmarks/peers/peers.log"
echo "Running; progress, and a list of what peers do cheaper, in $log"
"$program" "$tables" > "$log" 2>&1 || { tail "$log"; exit 1; }

processor="$(sed -n 's/^model name[[:space:]]*: //p' /proc/cpuinfo | sort -u | head -n 1)"
section="$(mktemp)"
trap 'rm -f "$section"' EXIT

cat > "$section" <<TEXT
<!-- peers:begin -->
$(date +%F), ${processor:-unknown processor}, $(nproc) cores. Nanoseconds for a stereo frame of white noise at
48 kHz, in blocks of 64 and 128. A peer that "does less" doesn't count as the cheapest.
Each figure is the least of 15 rounds of 0.05 s of processor time, taken in turn with all others of the same job, so
that other work on the machine matters little; threads that an effect starts count. Quorel's parameters are all 0.5,
peers stay at their defaults unless they would do nothing there; peers for one channel run twice ("two"). "Silence"
is the dearest quarter second of 20 seconds of silence after noise, with denormal numbers left on. The ratio is
against the cheapest peer in blocks of 128; that of the reverb is for each comb or all-pass.

$(cat "$tables")

Packages: $(while read -r package; do
    [[ -z "$package" || "$package" == \#* ]] && continue
    dpkg-query -W -f='${Package} ${Version}, ' "$package" 2> /dev/null || printf '%s not installed, ' "$package"
done < packaging/peer-packages.txt)JUCE $(dpkg-query -W -f='${Version}' juce-modules-source 2> /dev/null).
<!-- peers:end -->
TEXT

if [[ ! -f "$page" ]]; then
    printf '# Performance\n' > "$page"
fi
if ! grep -q '<!-- peers:begin -->' "$page"; then
    printf '\n## Against other effects\n\n<!-- peers:begin -->\n<!-- peers:end -->\n' >> "$page"
fi
awk -v section="$section" '
    /<!-- peers:begin -->/ { hidden = 1; while ((getline line < section) > 0) print line }
    !hidden { print }
    /<!-- peers:end -->/ { hidden = 0 }' "$page" > "$page.new"
mv "$page.new" "$page"
echo "Wrote $page"
