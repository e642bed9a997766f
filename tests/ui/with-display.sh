#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs a test program on an X server of its own with a window manager, as a user has one: focus and menus depend
# on it.
for argument in "$@"; do
    # Listing the tests needs no display.
    [ "$argument" = --gtest_list_tests ] && exec "$@"
done
exec xvfb-run --auto-servernum --server-args="-screen 0 2400x1800x24" sh -c '
    ready=$(mktemp -u)
    openbox --sm-disable --startup "touch $ready" & manager=$!
    waited=0
    while [ ! -e "$ready" ] && [ "$waited" -lt 200 ]; do
        sleep 0.05
        waited=$((waited + 1))
    done
    rm -f "$ready"
    export QUOREL_TEST_DISPLAY="$DISPLAY"
    "$@"
    result=$?
    kill "$manager"
    exit "$result"' sh "$@"
