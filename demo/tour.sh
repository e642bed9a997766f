#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Renders the tour of the factory presets and says which starts when: tour.sh QUOREL-TOUR PREFIX OUTPUT, the prefix
# being one that quorel-setup has set up.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
exec "$1" --prefix "$2" -o "$3" "$here/tour.txt"
