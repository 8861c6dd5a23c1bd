# SPDX-License-Identifier: MIT
"""Compares the zip with what it promises.

Usage: contents.py ZIP VERSION REPOSITORY

  - these files and no others, below one folder that is named after the zip
  - all with the time of the last commit, readable by everybody
  - the project's version in all places that tell one
  - no path of the machine that it was made on
  - no link of a page that leads out of it, or to nothing
  - no file, folder or program in a page that only the sources have
  - the sources beside it, and a page that says so
"""
import os
import re
import subprocess
import sys
import time
import zipfile
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "scripts/lint.d"))
from check_links import link_problem, links  # noqa: E402

FILES = """
CHANGELOG.md
LICENSE.txt
README.txt
SHA256SUMS
bin/velquin-sim.exe
bin/velquin.dll
bin/velquinctl.exe
docs/hosts.md
docs/images/below-horizon-english.png
docs/images/below-horizon.png
docs/images/detail-english.png
docs/images/detail.png
docs/images/disabled-english.png
docs/images/disabled.png
docs/images/gallery.png
docs/images/held-english.png
docs/images/held.png
docs/images/idle-english.png
docs/images/idle.png
docs/images/no-response-english.png
docs/images/no-response.png
docs/images/sync-question-english.png
docs/images/sync-question.png
docs/protocol.md
docs/reference.md
docs/troubleshooting.md
docs/velquinctl.md
docs/windows.md
examples/README.md
examples/c/CMakeLists.txt
examples/c/goto.c
examples/cpp/CMakeLists.txt
examples/cpp/goto.cpp
include/telescope_api.h
include/velquin_util.h
lib/cmake/velquin/velquin-config-version.cmake
lib/cmake/velquin/velquin-config.cmake
lib/libvelquin.dll.a
lib/velquin.lib
licenses/CLI11.txt
licenses/mingw-w64.txt
""".split()

problems = []


def expect(condition, text):
    if not condition:
        problems.append(text)


def commit_time(repository):
    seconds = os.environ.get("SOURCE_DATE_EPOCH")
    if not seconds:
        log = subprocess.run(["git", "-C", repository, "log", "-1", "--format=%ct"],
                             capture_output=True, text=True)
        seconds = log.stdout if log.returncode == 0 else 0
    even = int(seconds) // 2 * 2  # a zip counts pairs of seconds
    return max(time.gmtime(even)[:6], (1980, 1, 1, 0, 0, 0))


def check_entries(entries, folder, when):
    names = [entry.filename for entry in entries]
    expect(names == sorted(f"{folder}/{file}" for file in FILES), f"other files or order: {names}")
    for entry in entries:
        mode = entry.external_attr >> 16
        expect(entry.date_time == when, f"{entry.filename}: time {entry.date_time}, not {when}")
        expect(mode & 0o7444 == 0o444, f"{entry.filename}: mode {mode:o}")


def check_version(read, version):
    readme = read("README.txt").decode()
    expect(readme.startswith(f"VELQUIN {version} "), "README.txt: another version")
    expect(readme.count("\n") == readme.count("\r\n") > 0, "README.txt: not Windows' line ends")
    expect(f'set(PACKAGE_VERSION "{version}")' in
           read("lib/cmake/velquin/velquin-config-version.cmake").decode(),
           "the CMake package has another version")
    key = "ProductVersion\0".encode("utf-16-le")
    after = read("bin/velquin.dll").partition(key)[2][:64].decode("utf-16-le", errors="replace")
    expect(after.strip("\0").startswith(version + "\0"), "velquin.dll: another ProductVersion")


def check_paths(read, repository):
    for file in FILES:
        data = read(file)
        for path in (repository, str(Path.home()) + "/"):
            found = path.encode() in data or path.encode("utf-16-le") in data
            expect(path == "/" or not found, f"{file} contains {path}")


class SourceNames:
    """What the sources have and the package has not, by the names that a page could use."""

    def __init__(self, sources):
        packaged = {Path(file).name for file in FILES}
        self.paths = set(sources) - set(FILES)
        self.folders = ({file.split("/")[0] for file in sources if "/" in file} -
                        {file.split("/")[0] for file in FILES})
        self.names = {Path(file).name for file in sources if "." in Path(file).name} - packaged
        # A script without a hyphen is called by a word that a page may need.
        self.programs = {Path(file).name for file in sources
                         if file.startswith("scripts/") and re.fullmatch(r"\w+-\w+", Path(file).name)}

    def has(self, word):
        folder = word.split("/")[0]
        return (word in self.paths or word in self.names or word in self.programs or
                ("/" in word and folder in self.folders) or re.fullmatch(r"\w+_tests", word))


def check_names(read, sources):
    names = SourceNames(sources)
    for file in FILES:
        if not file.endswith((".md", ".txt", ".h", ".c", ".cpp")) or file.startswith("licenses/"):
            continue
        for number, line in enumerate(read(file).decode().splitlines(), 1):
            for word in re.findall(r"[\w./\\-]+", line):
                word = word.replace("\\", "/").strip("./-")
                expect(not names.has(word), f"{file}:{number}: the package has no {word}")


def read_sources(target, version, readme):
    """The names of the files in the zip of the sources, which has to lie beside the package."""
    name = f"velquin-{version}-sources"
    expect(f"{name}.zip" in readme, f"README.txt does not name {name}.zip")
    with zipfile.ZipFile(target.with_name(name + ".zip")) as archive:
        entries = {entry.filename: entry.external_attr >> 16 for entry in archive.infolist()}
    expect(all(entry.startswith(name + "/") for entry in entries), f"{name}.zip: several folders")
    expect(entries.get(f"{name}/CMakeLists.txt", 0) & 0o777 == 0o644, f"{name}: no CMakeLists.txt")
    expect(entries.get(f"{name}/scripts/test", 0) & 0o777 == 0o755, f"{name}: no scripts/test to run")
    return [entry.removeprefix(name + "/") for entry in entries]


def check_links(package):
    folders = {str(parent) for file in FILES for parent in Path(file).parents}
    for page in (file for file in FILES if file.endswith(".md")):
        for number, target in links((package / page).read_text(encoding="utf-8")):
            problem = link_problem(package, page, target, FILES, folders)
            expect(not problem, f"{page}:{number}: {problem}")


def main():
    target, version, repository = sys.argv[1:]
    folder = f"velquin-{version}-win64"
    expect(Path(target).name == folder + ".zip", f"{target} is not named after its version")
    with zipfile.ZipFile(target) as archive:
        check_entries(archive.infolist(), folder, commit_time(repository))
        if not problems:
            read = lambda file: archive.read(f"{folder}/{file}")
            check_version(read, version)
            check_paths(read, repository)
            check_links(zipfile.Path(archive, f"{folder}/"))
            readme = read("README.txt").decode()
            check_names(read, read_sources(Path(target), version, readme))
    print("\n".join(problems) or f"{len(FILES)} files")
    return 1 if problems else 0


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    sys.exit(main())
