#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# From a bare Debian 12 to an installer for 64-bit Windows: installs the packages, builds what the cross build needs of this
# system, the libraries and the products, and packs them.
#   packaging/windows/build.sh            build/windows/dist, and installer and zip in build/packages/
#   packaging/windows/build.sh products   build/windows/dist alone
# What stands and is up to date isn't made again.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

packaging/install-packages.sh
packaging/install-packages.sh packaging/windows/debian-packages.txt

# The factory presets, banks and the artwork are the same for every system: this one's tools make them.
packaging/build.sh release products quorel-artwork
packaging/windows/build-libraries.sh build/windows-libraries
packaging/build.sh windows products

[[ "${1:-}" == products ]] && exit 0
exec packaging/windows/pack.sh
