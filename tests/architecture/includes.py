#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Holds the includes to the table of folders in docs/architecture.md.

    includes.py ROOT              lists each include that the table doesn't allow, as file:line; exit status 1
    includes.py --self-test ROOT  the same, of a copy with one wrong include in every folder that could have one

A row of the table is `| `src/midi` | what it holds | `platform`, `effects` |`: its last cell names all folders that
the first one may include. A folder may always include itself.
"""
import pathlib
import re
import shutil
import sys
import tempfile

ROW = re.compile(r"^\| `([\w/]+)` \|.*\|([^|]*)\|$")
INCLUDE = re.compile(r'^\s*#\s*include\s*"(\w+)/')


def read_table(root):
    """{'src/midi': {'platform', ...}} from the architecture page."""
    table = {}
    for line in (root / "docs/architecture.md").read_text(encoding="utf-8").splitlines():
        if row := ROW.match(line):
            table[row[1]] = set(re.findall(r"`(?:src/)?(\w+)`", row[2]))
    return table


def wrong_includes(root, table):
    folders = {path.name for path in (root / "src").iterdir() if path.is_dir()}
    missing = sorted(folders - {row.removeprefix("src/") for row in table})
    problems = [f"docs/architecture.md: no row for src/{folder}" for folder in missing]
    for row, allowed in sorted(table.items()):
        own = row.removeprefix("src/")
        for path in sorted((root / row).rglob("*")):
            if path.suffix not in (".h", ".cpp"):
                continue
            for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
                include = INCLUDE.match(line)
                if include and include[1] in folders and include[1] not in allowed | {own}:
                    problems.append(f"{path.relative_to(root)}:{number}: {own} may not include {include[1]}")
    return problems


def self_test(root, table):
    """Each folder that may not include every other one has to be caught at one that it may not."""
    everything = {row.removeprefix("src/") for row in table if row.startswith("src/")}
    expected = []
    with tempfile.TemporaryDirectory() as scratch:
        copy = pathlib.Path(scratch)
        shutil.copytree(root / "docs", copy / "docs")
        for row in table:
            (copy / row).mkdir(parents=True, exist_ok=True)
            for forbidden in sorted(everything - table[row] - {row.removeprefix("src/")})[:1]:
                (copy / row / "Wrong.h").write_text(f'// a line above\n#include "{forbidden}/Any.h"\n')
                expected.append(f"{row}/Wrong.h:2: {row.removeprefix('src/')} may not include {forbidden}")
        found = wrong_includes(copy, table)
    if sorted(found) != sorted(expected) or len(expected) < 8:
        sys.exit("\n".join(["Expected:", *expected, "Found:", *found]))


def main():
    root = pathlib.Path(sys.argv[-1])
    table = read_table(root)
    if sys.argv[1] == "--self-test":
        self_test(root, table)
    elif problems := wrong_includes(root, table):
        sys.exit("\n".join(problems))


main()
