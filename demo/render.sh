#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Renders the demo song: render.sh QUOREL-RENDER PREFIX OUTPUT, the prefix being one that quorel-setup has set up.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
exec "$1" --prefix "$2" -o "$3" "@$here/demo-render.args" "$here/quorel-demo.mid"
