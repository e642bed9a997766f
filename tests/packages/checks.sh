# SPDX-License-Identifier: GPL-3.0-or-later
# What the tests of packages share: checks that say their verdict, a line each. For bash.
failures=0
said="$(mktemp)"
trap 'rm -f "$said"' EXIT

# check WHAT COMMAND...: the command's exit code is the verdict.
check()
{
    if "${@:2}" > "$said" 2>&1; then
        echo "ok      $1"
    else
        echo "FAILED  $1"
        head -n 40 "$said" | sed 's/^/        /'
        failures=$((failures + 1))
    fi
}

not() { ! "$@"; }
is_same() { diff <(echo "$1") <(echo "$2"); }
says() { "${@:2}" > "$said.out" 2>&1; grep -F -e "$1" "$said.out" || { cat "$said.out"; return 1; }; }

# The end of a test.
verdict()
{
    rm -f "$said.out"
    [[ "$failures" == 0 ]] && echo "All is well." && exit 0
    echo "$failures checks failed."
    exit 1
}
