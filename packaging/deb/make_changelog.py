#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Prints what CHANGELOG.md says of one version as a package's changelog.

make_changelog.py CHANGELOG.md VERSION MAINTAINER SECONDS

SECONDS since 1970 are the time that the entry gets.
"""
import datetime
import email.utils
import re
import sys
import textwrap

path, version, maintainer, seconds = sys.argv[1:]
text = open(path, encoding="utf-8").read()
section = re.search(rf"^## {re.escape(version)}\n(.*?)(?=^## |\Z)", text, re.MULTILINE | re.DOTALL)

if not section:
    sys.exit(f"{path} says nothing of {version}")

# A blank line or the next bullet ends a point.
points = [" ".join(point.split()) for point in re.split(r"\n\s*\n|^- ", section[1], flags=re.MULTILINE)]

print(f"quorel ({version}) unstable; urgency=medium\n")
for point in filter(None, points):
    print(textwrap.fill(point.replace("`", ""), width=78, initial_indent="  * ", subsequent_indent="    ",
                        break_on_hyphens=False))
when = datetime.datetime.fromtimestamp(int(seconds), datetime.timezone.utc)
print(f"\n -- {maintainer}  {email.utils.format_datetime(when)}")
