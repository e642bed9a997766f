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
# commands_of [COMMAND]: those of the program, or of one of its commands.
commands_of() { "$program" "$@" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p'; }

# describe COMMAND...: a section with its own help, and those of the commands below it.
describe()
{
    printf '.SS "%s %s"\n.nf\n' "$name" "$*"
    "$program" "$@" --help | sed -n '/^A preset is given/q; s/\\/\\e/g; s/-/\\-/g; s/^[.'"'"']/\\\&&/; p'
    printf '.fi\n'
    for inner in $(commands_of "$@"); do
        describe "$@" "$inner"
    done
}

commands="$(commands_of)"
if [ -n "$commands" ]; then
    printf '\n[COMMANDS]\n' >> "$include"
    for command in $commands; do
        describe "$command"
    done >> "$include"
fi

help2man --no-info --version-string="$version" --include="$include" --output="$output.tmp" "$program"
# The program may have another name here than where it is installed.
sed "s/^\.TH [^ ]*/.TH $(echo "$name" | tr '[:lower:]' '[:upper:]')/; s/^\.B Quorel\$/.B quorel/" "$output.tmp" > "$output"
