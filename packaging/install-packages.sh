#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs what a list names and isn't there yet. Needs root, or sudo.
#   packaging/install-packages.sh [LIST]     packaging/debian-packages.txt unless another list is given
set -euo pipefail

list="${1:-$(dirname "${BASH_SOURCE[0]}")/debian-packages.txt}"
missing=()

while read -r package; do
    [[ -z "$package" || "$package" == \#* ]] && continue
    [[ "$(dpkg-query -W -f='${db:Status-Abbrev}' "$package" 2>/dev/null)" == ii* ]] || missing+=("$package")
done < "$list"

[[ ${#missing[@]} -eq 0 ]] && exit 0

echo "Installing packages: ${missing[*]}"
as_root=()

if [[ $EUID -ne 0 ]]; then
    command -v sudo > /dev/null || { echo "Please install these as root: apt-get install ${missing[*]}" >&2; exit 1; }
    as_root=(sudo)
fi

"${as_root[@]}" apt-get update -q
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}"
