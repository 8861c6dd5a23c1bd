# SPDX-License-Identifier: MIT
"""Rewrites CMake's compile databases for clang's tools and cppcheck.

Usage: databases.py REPOSITORY OUTPUT_FOLDER

Reads build/native and build/windows-x64, writes OUTPUT_FOLDER/native/ and OUTPUT_FOLDER/windows/.
A source that both have is kept in the native one; windows/ has what only Windows compiles, and
windows-all/ everything. The tests are left out: GoogleTest's macros would be most of what the
checkers read, and the compiler that builds them warns as much. So are foreign sources and
precompiled headers, which are in GCC's own format. Cross-compiled files get mingw's headers without this machine's.
"""
import json
import os
import shlex
import subprocess
import sys
from pathlib import Path


def clang_arguments(command, source):
    """GCC's command line without what clang does not know and without output files."""
    kept = []
    arguments = iter(shlex.split(command)[1:])
    for argument in arguments:
        if argument in ("-o", "-MT", "-MF"):
            next(arguments)
        elif argument == "-include":
            header = next(arguments)
            if not header.endswith("cmake_pch.hxx"):
                kept += ["-include", header]
        elif argument in ("-Winvalid-pch", "-MD", "-c", "-Werror", source):
            pass
        else:
            kept.append(argument)
    return kept


def mingw_include_folders(compiler):
    """The folders that the cross compiler searches, as it says itself, with clang's own builtins."""
    listing = subprocess.run(
        [compiler, "-xc++", "-E", "-v", "-"], input="", capture_output=True, text=True, check=True
    ).stderr.splitlines()
    start = listing.index("#include <...> search starts here:") + 1
    end = listing.index("End of search list.")
    folders = [os.path.normpath(line.strip()) for line in listing[start:end]]
    # GCC's builtins (intrinsics, stddef) are written for GCC: clang's take their place.
    own = [f for f in folders if not f.endswith(("/include-fixed", "-posix/include"))]
    builtin = subprocess.run(
        ["clang++", "-print-resource-dir"], capture_output=True, text=True, check=True
    ).stdout.strip()
    cxx = [f for f in own if "/c++" in f]
    system = [f for f in own if "/c++" not in f]
    return cxx + [f"{builtin}/include"] + system


def read(repository, preset):
    entries = {}
    for entry in json.loads((repository / "build" / preset / "compile_commands.json").read_text()):
        source = Path(entry["file"])
        foreign = not source.is_relative_to(repository)
        if foreign or source.relative_to(repository).parts[0] in ("build", "tests"):
            continue
        if source.suffix in (".cpp", ".cc", ".c") and source not in entries:
            entries[source] = entry
    return entries


def quoted(argument):
    """For a command line in the only way of quoting that all of the readers understand."""
    return argument.replace("\\", "\\\\").replace('"', '\\"').replace(" ", "\\ ")


def write(folder, entries, prefix):
    folder.mkdir(parents=True, exist_ok=True)
    database = []
    for source, entry in sorted(entries.items()):
        compiler = "clang" if source.suffix == ".c" else "clang++"
        arguments = [compiler, *prefix, *clang_arguments(entry["command"], entry["file"])]
        database.append(
            {
                "directory": entry["directory"],
                "file": str(source),
                "command": " ".join(map(quoted, [*arguments, "-c", str(source)])),
            }
        )
    text = json.dumps(database, indent=1)
    path = folder / "compile_commands.json"
    if not path.exists() or path.read_text() != text:
        path.write_text(text)


def main():
    repository, output = Path(sys.argv[1]).resolve(), Path(sys.argv[2])
    native = read(repository, "native")
    windows = read(repository, "windows-x64")
    cross = ["--target=x86_64-w64-mingw32", "-nostdinc"]
    for folder in mingw_include_folders("x86_64-w64-mingw32-g++-posix"):
        cross += ["-isystem", folder]
    write(output / "native", native, [])
    write(output / "windows-all", windows, cross)
    write(output / "windows", {s: e for s, e in windows.items() if s not in native}, cross)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main()
