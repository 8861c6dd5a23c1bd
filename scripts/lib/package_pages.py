# SPDX-License-Identifier: MIT
"""Copies pages into the package, without what only the repository has.

Usage: package_pages.py REPOSITORY FOLDER PAGE...
  PAGE  a file of the repository; FOLDER gets it under its name alone

Left out is what stands between <!-- sources --> and <!-- /sources -->, and every other comment. The
marks stand on lines of their own or within a line: one that begins with a comment is no Markdown.
Links to the public headers lead to the package's include/. A link to another file of the repository
that is not in the package becomes its text.
"""
import posixpath
import re
import sys
from pathlib import Path

LINK = re.compile(r"\[([^\[\]]+)\]\(([^()\s]+)\)")
PUBLIC_HEADERS = ("include/telescope_api.h", "include/velquin_util.h")
IN_PACKAGE = ("docs/images/", "examples")
SOURCES_ONLY = re.compile(r"^<!-- sources -->\n.*?^<!-- /sources -->\n\n?"
                          r"| <!-- sources -->.*?<!-- /sources -->", re.DOTALL | re.MULTILINE)
COMMENT = re.compile(r"<!--.*?-->\n?", re.DOTALL)


def packaged_link(match, page, repository, pages):
    text, target = match.groups()
    path, mark, anchor = target.partition("#")
    place = posixpath.normpath(posixpath.join(posixpath.dirname(page), path))
    if not path or not (repository / place).exists():
        return match.group(0)  # within the page, elsewhere in the world, or no link at all
    if place in PUBLIC_HEADERS:
        return f"[{text}](../include/{posixpath.basename(place)}{mark}{anchor})"
    if place in pages or place.startswith(IN_PACKAGE):
        return match.group(0)
    return text


def packaged_page(page, repository, pages):
    text = (repository / page).read_text(encoding="utf-8")
    text = COMMENT.sub("", SOURCES_ONLY.sub("", text))
    return LINK.sub(lambda match: packaged_link(match, page, repository, pages), text)


def main():
    repository, folder = Path(sys.argv[1]), Path(sys.argv[2])
    pages = set(sys.argv[3:])
    folder.mkdir(parents=True, exist_ok=True)
    for page in sorted(pages):
        text = packaged_page(page, repository, pages)
        (folder / posixpath.basename(page)).write_text(text, encoding="utf-8", newline="\n")


if __name__ == "__main__":
    if len(sys.argv) < 4:
        sys.exit(__doc__)
    main()
