# SPDX-License-Identifier: MIT
"""Copies pages of docs/ into the package, with links that lead somewhere there.

Usage: package_pages.py REPOSITORY FOLDER PAGE...

Links to the public headers lead to the package's include/. A link to a file of the repository that
is not in the package becomes its text, followed by where that file is in the sources.
"""
import posixpath
import re
import sys
from pathlib import Path

LINK = re.compile(r"\[([^\[\]]+)\]\(([^()\s]+)\)")
PUBLIC_HEADERS = ("api/telescope_api.h", "util/velquin_util.h")
IN_PACKAGE = ("docs/images/", "examples")


def packaged_link(match, repository, pages):
    text, target = match.groups()
    path, mark, anchor = target.partition("#")
    place = posixpath.normpath(posixpath.join("docs", path))
    if not path or not (repository / place).exists():
        return match.group(0)  # within the page, elsewhere in the world, or no link at all
    if place in PUBLIC_HEADERS:
        return f"[{text}](../include/{posixpath.basename(place)}{mark}{anchor})"
    if place in pages or place.startswith(IN_PACKAGE):
        return match.group(0)
    return f"{text} (`{place}` in the sources)"


def main():
    repository, folder = Path(sys.argv[1]), Path(sys.argv[2])
    pages = {f"docs/{page}" for page in sys.argv[3:]}
    folder.mkdir(parents=True, exist_ok=True)
    for page in sys.argv[3:]:
        text = (repository / "docs" / page).read_text(encoding="utf-8")
        text = LINK.sub(lambda match: packaged_link(match, repository, pages), text)
        (folder / page).write_text(text, encoding="utf-8", newline="\n")


if __name__ == "__main__":
    if len(sys.argv) < 4:
        sys.exit(__doc__)
    main()
