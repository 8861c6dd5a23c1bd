# SPDX-License-Identifier: MIT
"""Rules for the text of the sources that no compiler knows.

Usage: check_text.py REPOSITORY

Looks at every file that git tracks or would track:
  - an #include may point only down (the table below; docs and README tell why)
  - a header is guarded, and every source, script and CMake file has its SPDX line on top
  - only the folders of the operating-system seam include its headers
  - a lock names what it guards, and nothing is taken from the thread-safety analysis without a
    comment that says why, on the line or above it
  - text stands on its own: it refers to no paper or folder outside the repository

Then at the lists of scripts/mutate: every entry has the lines that it changes.

Prints FILE:LINE: what is wrong, a line of figures last, and exits with 1 when there is anything.
"""
import re
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "lib"))
import mutations

# What each folder may include besides itself. tests/ and bench/ are free. res/ holds numbers and
# texts only, which everybody may name.
BASE = {"framework/base", "res"}
CORE = {"core/protocol", "core/net", "core/log", "core/util"}
MAY_INCLUDE = {
    "platform": {"res"},
    "framework/base": {"platform", "res"},
    "framework/win": {"framework/base", "platform", "res"},
    "core/util": BASE | {"include"},
    "core/log": {"platform"},
    "core/net": BASE | {"core/util", "platform", "include"},
    "core/protocol": BASE | {"core/net", "core/log", "core/util", "include"},
    "library/engine": BASE | CORE | {"platform", "include"},
    "library/ui": BASE | {"library/engine", "framework/win", "include"},
    "library/api": BASE | CORE | {"library/ui", "library/engine", "framework/win", "platform", "include"},
    "gateways/mount": BASE | CORE | {"platform", "include"},
    "simulator": {"platform"},
    "console": {"include"},
    "include": set(),
    "res": set(),
}
FREE_FOLDERS = {"tests", "bench"}

# Where headers of the operating system may be included; elsewhere the platform seam is to be used.
SYSTEM_FOLDERS = ("platform/", "framework/win/", "library/ui/", "console/", "tests/", "bench/", "examples/")
SYSTEM_FILES = ("library/api/dll_main.cpp", "library/api/module_frame.cpp")
SYSTEM_HEADER = re.compile(
    r"(windows|winsock2?|ws2tcpip|shlobj|shellapi|commctrl|tlhelp32|unistd|pthread|"
    r"sys/[a-z_]+|netinet/[a-z_]+|arpa/[a-z_]+|netdb|poll|dlfcn)\.h",
    re.IGNORECASE,
)

NEEDS_LICENCE = {".h", ".cpp", ".c", ".inc", ".rc", ".def", ".py", ".cmake", ".sh"}
SPDX = "SPDX-License-Identifier: MIT"

# Written with brackets, so that this file itself does not match.
FOREIGN_TEXT = [
    re.compile(r"\bsp[e]c(s|ification|ifications)?\b", re.IGNORECASE),
    re.compile(r"\bas speci[f]ied\b", re.IGNORECASE),
    re.compile(r"\b[P]art \d+\.\d+"),
    re.compile(r"\.\./share[d]\b|/wor[k]/"),
]
# What keeps clang's thread-safety analysis from looking, and a lock that it is to look at.
UNCHECKED = re.compile(r"no_thread_[s]afety_analysis|[w]no-thread-safety|ignored.*[-]Wthread-safety",
                       re.IGNORECASE)
LOCK_FIELD = re.compile(r"\s*(?:mutable )?CCriticalSection (\w+);")
MUTATION_LISTS = ("named.txt", "equivalent.txt")
INCLUDE = re.compile(r'\s*#\s*include\s*([<"])([^>"]+)[>"]')


def tracked_files(repository):
    listing = subprocess.run(
        ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
        cwd=repository, capture_output=True, text=True, check=True,
    ).stdout
    return [name for name in listing.split("\0") if name and (repository / name).is_file()]


def folder_of(name):
    parts = name.split("/")
    if parts[0] in ("framework", "core", "library", "gateways") and len(parts) > 2:
        return "/".join(parts[:2])
    return parts[0]


def include_problem(name, repository, bracket, header):
    """Why a file may not include a header; None when it may."""
    folder = folder_of(name)
    if bracket == "<" and (repository / header).is_file():
        return f"<{header}> is a file of the repository, which is included in quotes"
    if bracket == "<":
        free = name.startswith(SYSTEM_FOLDERS) or name in SYSTEM_FILES
        if SYSTEM_HEADER.fullmatch(header) and not free:
            return f"system header <{header}> outside of the platform seam"
        return None
    if not (repository / header).is_file():
        return f'"{header}" is not the path of a file from the repository root'
    if folder in FREE_FOLDERS or folder_of(header) == folder:
        return None
    allowed = MAY_INCLUDE.get(folder)
    if allowed is None:
        return f"folder {folder} is not in the table of check_text.py"
    if folder_of(header) in allowed:
        return None
    return f'{folder} must not include "{header}"'


def is_script(name, lines):
    return bool(lines) and lines[0].startswith("#!")


def whole_file_problems(name, lines):
    suffix = Path(name).suffix
    if suffix in NEEDS_LICENCE or Path(name).name == "CMakeLists.txt" or is_script(name, lines):
        if not any(SPDX in line for line in lines[:2]):
            yield 1, f"no '{SPDX}' on top"
    if suffix == ".h":
        text = "\n".join(lines)
        if "#pragma once" not in text and not re.search(r"#ifndef (\w+_H)\n#define \1\b", text):
            yield 1, "header without #pragma once or guard"


def says_why(lines, number):
    """Whether a comment of at least four words stands on a line or ends right above it."""
    above = lines[number - 2].strip() if number > 1 else ""
    beside = re.split(r"//|#\s", lines[number - 1], maxsplit=1)[1:]
    comments = beside + ([above] if above.startswith(("//", "# ")) else [])
    reasons = [comment for comment in comments if SPDX not in comment]
    return any(len(re.findall(r"[A-Za-z]{2,}", reason)) >= 4 for reason in reasons)


def lock_problems(name, lines):
    """What is wrong about locks and their analysis."""
    text = "\n".join(lines)
    for number, line in enumerate(lines, 1):
        if UNCHECKED.search(line) and not says_why(lines, number):
            yield number, "taken from the thread-safety analysis without a comment that says why"
        field = LOCK_FIELD.match(line) if name.endswith(".h") else None
        if field and not re.search(rf"(GUARDED_BY|REQUIRES)\({field.group(1)}\)", text):
            yield number, f"nothing is GUARDED_BY({field.group(1)})"


def problems(repository, name):
    for pattern in FOREIGN_TEXT:
        if pattern.search(name):
            yield 0, "file name refers to something outside the repository"
    data = (repository / name).read_bytes()
    if b"\0" in data:
        return  # an image
    lines = data.decode("utf-8", errors="replace").splitlines()
    yield from whole_file_problems(name, lines)
    yield from lock_problems(name, lines)
    source = Path(name).suffix in (".h", ".cpp", ".c", ".inc")
    for number, line in enumerate(lines, 1):
        for pattern in FOREIGN_TEXT:
            if pattern.search(line):
                yield number, f"refers to something outside the repository: {line.strip()[:80]}"
        include = INCLUDE.match(line) if source else None
        if include:
            problem = include_problem(name, repository, include.group(1), include.group(2))
            if problem:
                yield number, problem


def main():
    repository = Path(sys.argv[1]).resolve()
    files = tracked_files(repository)
    count = 0
    for name in files:
        for number, problem in problems(repository, name):
            print(f"{name}:{number}: {problem}")
            count += 1
    for name in MUTATION_LISTS:
        for problem in mutations.misfits(repository, repository / "scripts/mutate.d" / name):
            print(f"scripts/mutate.d/{problem}")
            count += 1
    print(f"{len(files)} files, {count} findings")
    return 1 if count or not files else 0


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    sys.exit(main())
