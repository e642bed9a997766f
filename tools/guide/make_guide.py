#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes one HTML page, pictures included, of the user guide.

make_guide.py docs/user-guide.md quorel-user-guide.html
"""
import base64
import html
import pathlib
import re
import sys

import markdown

PAGE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{title}</title>
<style>
:root {{ color-scheme: light dark; --text: #1d1d1f; --back: #fbfaf7; --line: #d9d4c8; --accent: #9a6400; }}
@media (prefers-color-scheme: dark) {{
  :root {{ --text: #dcd8cf; --back: #1a1a1c; --line: #3a3a3e; --accent: #e0a83a; }}
}}
body {{ font: 17px/1.55 "Roboto", "Segoe UI", "Noto Sans", sans-serif; color: var(--text);
       background: var(--back); max-width: 62rem; margin: 2rem auto; padding: 0 1.2rem; }}
h1, h2, h3 {{ line-height: 1.25; }}
h2 {{ margin-top: 3rem; border-bottom: 1px solid var(--line); }}
h1, h2, a {{ color: var(--accent); }}
img {{ max-width: 100%; height: auto; border-radius: 6px; }}
table {{ border-collapse: collapse; width: 100%; }}
td, th {{ text-align: left; vertical-align: top; padding: .35rem .7rem; border-bottom: 1px solid var(--line); }}
td:first-child {{ min-width: 9rem; }}
code {{ font-size: .92em; }}
</style>
</head>
<body>
{body}
</body>
</html>
"""


def with_pictures(body: str, folder: pathlib.Path) -> str:
    """Puts the pictures into the page itself, so that it can be moved about."""

    def inline(match: re.Match) -> str:
        data = (folder / html.unescape(match.group(1))).read_bytes()
        return 'src="data:image/png;base64,' + base64.b64encode(data).decode("ascii") + '"'

    return re.sub(r'src="([^":]+\.png)"', inline, body)


def check_links(body: str) -> None:
    """Stops at a link to a heading that isn't there."""
    anchors = set(re.findall(r'id="([^"]+)"', body))
    missing = [link for link in re.findall(r'href="#([^"]+)"', body) if link not in anchors]
    if missing:
        sys.exit("make_guide.py: links to nowhere: " + ", ".join(missing))


def main() -> None:
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    source, target = map(pathlib.Path, sys.argv[1:])
    text = source.read_text(encoding="utf-8")
    body = markdown.markdown(text, extensions=["tables", "toc", "sane_lists"], output_format="html5")
    check_links(body)
    title = text.splitlines()[0].lstrip("# ")
    target.parent.mkdir(parents=True, exist_ok=True)
    target.write_text(PAGE.format(title=html.escape(title), body=with_pictures(body, source.parent)), encoding="utf-8")


if __name__ == "__main__":
    main()
