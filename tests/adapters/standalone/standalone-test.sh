#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# The standalone program's command line, and what it keeps from one start to the next. Runs on a screen.
#   standalone-test.sh QUOREL SCRATCH-FOLDER
set -euo pipefail

quorel="$1" scratch="$2"

fail()
{
    echo "FAILED: $*" >&2
    exit 1
}

rm -rf "$scratch"
mkdir -p "$scratch/home"
scratch="$(cd "$scratch" && pwd)"
export HOME="$scratch/home" XDG_CONFIG_HOME="$scratch/prefix/config" XDG_DATA_HOME="$scratch/prefix/data"
settings="$XDG_CONFIG_HOME/Ostrand/Quorel.settings"

# refused CODE ARGUMENT...: ends with this exit code and one line, without a window.
refused()
{
    local code="$1" result=0
    shift
    timeout 20 "$quorel" "$@" > "$scratch/out" 2> "$scratch/err" || result=$?
    [[ "$result" == "$code" ]] || fail "$*: exit code $result"
    [[ "$(wc -l < "$scratch/err")" == 1 && ! -s "$scratch/out" ]] || fail "$*: $(cat "$scratch/out" "$scratch/err")"
}

timeout 20 "$quorel" --help | grep -q -- "--preset FOLDER/NAME" || fail "--help"
timeout 20 "$quorel" --version | grep -q "^quorel [0-9.]*$" || fail "--version"
refused 2 --nonsense
refused 2 one surplus
refused 2 --preset
refused 1 --preset "Nowhere/Nothing"
refused 1 "$scratch/nothing.qrl"
refused 1 "$scratch/setup.log"

# plays ARGUMENT...: starts, is ended by the session a little later, and keeps its sound.
plays()
{
    "$quorel" "$@" > "$scratch/run.log" 2>&1 &
    local process=$! waited=0
    # The termination is caught once the window is there.
    while ! grep -q "^SigCgt:.*[4-7c-f][0-9a-f]\{3\}$" "/proc/$process/status" && ((++waited < 200)); do sleep 0.1; done
    sleep 2
    kill -TERM "$process"
    local result=0
    wait "$process" || result=$?
    [[ "$result" == 0 && ! -s "$scratch/run.log" ]] || fail "$*: exit code $result ($(tail -n 3 "$scratch/run.log"))"
    grep -o 'name="filterState" val="[^"]*"' "$settings" || fail "$*: no sound kept"
}

# Nobody has set this user up: the first start does.
fresh="$(plays)"
chosen="$(plays --preset "05 Leads and Basses/Hollow Soloist")"
[[ "$chosen" != "$fresh" ]] || fail "--preset opened nothing"
[[ "$(plays)" == "$chosen" ]] || fail "the next start has another sound"
byFile="$(plays "$XDG_DATA_HOME/Ostrand/Quorel/Banks/01 Keys and Splits/Four Corners.qrl")"
[[ "$byFile" != "$chosen" ]] || fail "a preset's file opened nothing"
echo "passed"
