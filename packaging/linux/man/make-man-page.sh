#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes a program's manual page of what --help prints: make-man-page.sh PROGRAM NAME VERSION OUTPUT
# NAME.h2m beside this script has the one-line description and what else the page says.
set -eu
program="$1" name="$2" version="$3" output="$4"
here="$(cd "$(dirname "$0")" && pwd)"
include="$output.h2m"
trap 'rm -f "$include" "$output.tmp"' EXIT

cp "$here/$name.h2m" "$include"
# The commands that a program has, each with its own help.
commands="$("$program" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p')"
if [ -n "$commands" ]; then
    printf '\n[COMMANDS]\n' >> "$include"
    for command in $commands; do
        printf '.SS "%s %s"\n.nf\n' "$name" "$command"
        "$program" "$command" --help | sed -n '/^A preset is given/q; s/\\/\\e/g; s/-/\\-/g; s/^[.'"'"']/\\\&&/; p'
        printf '.fi\n'
    done >> "$include"
fi

help2man --no-info --version-string="$version" --include="$include" --output="$output.tmp" "$program"
# The program may have another name here than where it is installed.
sed "s/^\.TH [^ ]*/.TH $(echo "$name" | tr '[:lower:]' '[:upper:]')/; s/^\.B Quorel\$/.B quorel/" "$output.tmp" > "$output"
