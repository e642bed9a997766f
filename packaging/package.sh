#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes the packages for this system in build/packages/: quorel_<version>_<architecture>.deb with quorel-data_..., and the
# tarball quorel-<version>-linux-<processor>.tar.gz. What they hold is built first where it isn't up to date.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

packaging/deb/build.sh
(cd build && cpack)
