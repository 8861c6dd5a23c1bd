# SPDX-License-Identifier: MIT
"""Packs a folder into a zip whose bytes depend on nothing but the files' names and contents.

Usage: make_zip.py FOLDER ZIP SECONDS

Entries are sorted and begin with the folder's name. All have one time, SECONDS since 1970 shown as
universal time, and fixed permissions: programs (.exe, .dll, and what its owner may run) may be run,
everything may be read.
"""
import sys
import time
import zipfile
from pathlib import Path

UNIX = 3  # the system whose permissions an entry carries
PROGRAMS = {".exe", ".dll"}
EARLIEST = (1980, 1, 1, 0, 0, 0)  # a zip knows no older time


def entry_of(name, file, when):
    entry = zipfile.ZipInfo(name, date_time=when)
    entry.create_system = UNIX
    program = file.suffix in PROGRAMS or file.stat().st_mode & 0o100
    mode = 0o755 if program else 0o644
    entry.external_attr = (0o100000 | mode) << 16
    entry.compress_type = zipfile.ZIP_DEFLATED
    return entry


def pack(folder, target, seconds):
    when = max(time.gmtime(seconds)[:6], EARLIEST)
    files = {f"{folder.name}/{file.relative_to(folder).as_posix()}": file
             for file in folder.rglob("*") if file.is_file()}
    with zipfile.ZipFile(target, "w") as archive:
        for name in sorted(files):
            archive.writestr(entry_of(name, files[name], when), files[name].read_bytes(), compresslevel=9)


def main():
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    pack(Path(sys.argv[1]).resolve(), Path(sys.argv[2]), int(sys.argv[3]))


if __name__ == "__main__":
    main()
