# SPDX-License-Identifier: MIT
"""Follows the links of the documentation.

Usage: check_links.py REPOSITORY

Looks at every Markdown file that git tracks or would track. The target of a relative link must be
a file of the repository (or a folder that has some), and the part behind a # must be a heading of
the page, by the name that a heading gets when the page is shown. Links to other places are not
followed, text in code is left alone.

Prints FILE:LINE: what is wrong, a line of figures last, and exits with 1 when there is anything.
"""
import posixpath
import re
import sys
from pathlib import Path
from urllib.parse import unquote

sys.dont_write_bytecode = True  # a check leaves nothing behind in the repository
from check_text import tracked_files  # noqa: E402

INLINE_LINK = re.compile(r"\]\(\s*<?([^()\s<>]+)>?(?:\s+\"[^\"]*\")?\s*\)")
DEFINED_LINK = re.compile(r"^\s{0,3}\[[^\]]+\]:\s*<?([^\s<>]+)>?")
HEADING = re.compile(r"^#{1,6}\s+(.*?)\s*#*$")
FENCE = re.compile(r"^\s*(```|~~~)")
INLINE_CODE = re.compile(r"(`+)(?:(?!\1).)+\1")
ELSEWHERE = re.compile(r"^[a-z][a-z0-9+.-]*:", re.IGNORECASE)


def prose_lines(text):
    """Numbers and lines of all that is not a block of code."""
    fence = None
    for number, line in enumerate(text.splitlines(), 1):
        mark = FENCE.match(line)
        if mark and fence in (None, mark.group(1)):
            fence = None if fence else mark.group(1)
        elif fence is None:
            yield number, line


def links(text):
    for number, line in prose_lines(text):
        line = INLINE_CODE.sub("", line)
        defined = DEFINED_LINK.match(line)
        for target in INLINE_LINK.findall(line) + ([defined.group(1)] if defined else []):
            yield number, target


def heading_names(text):
    """The names of a page's headings: lower case, without signs, blanks as hyphens."""
    names = set()
    count = {}
    for _, line in prose_lines(text):
        heading = HEADING.match(line)
        if not heading:
            continue
        shown = re.sub(r"!?\[([^\]]*)\]\([^)]*\)", r"\1", heading.group(1))
        name = re.sub(r"[^\w\- ]", "", shown.lower()).replace(" ", "-")
        number = count.get(name, 0)
        count[name] = number + 1
        names.add(f"{name}-{number}" if number else name)
    return names


def link_problem(repository, page, target, files, folders):
    """What is wrong with a link of a page; None when it leads somewhere."""
    if ELSEWHERE.match(target) or target.startswith("//"):
        return None
    path, _, anchor = unquote(target).partition("#")
    if path.startswith("/"):
        return f"{target} is not relative to the page"
    place = posixpath.normpath(posixpath.join(posixpath.dirname(page), path)) if path else page
    if place not in files and place not in folders:
        return f"{target} leads to nothing in the repository"
    if not anchor:
        return None
    if not place.endswith(".md"):
        return f"{target} names a heading of a file that has none"
    if anchor not in heading_names((repository / place).read_text(encoding="utf-8")):
        return f"{target} names no heading of {place}"
    return None


def main():
    repository = Path(sys.argv[1]).resolve()
    files = set(tracked_files(repository))
    folders = {str(parent) for name in files for parent in Path(name).parents}
    pages = sorted(name for name in files if name.endswith(".md"))
    followed = 0
    findings = 0
    for page in pages:
        for number, target in links((repository / page).read_text(encoding="utf-8")):
            followed += 1
            problem = link_problem(repository, page, target, files, folders)
            if problem:
                print(f"{page}:{number}: {problem}")
                findings += 1
    print(f"{len(pages)} pages, {followed} links, {findings} findings")
    return 1 if findings or not followed else 0


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    sys.exit(main())
