# SPDX-License-Identifier: MIT
"""Rewrites CMake's compile databases for clang's tools and cppcheck.

Usage: databases.py REPOSITORY OUTPUT_FOLDER

Reads build/native and build/windows-x64, writes OUTPUT_FOLDER/native/ and OUTPUT_FOLDER/windows/.
A source that both have is kept in the native one; windows/ has what only Windows compiles, and
windows-all/ everything. Foreign sources are left out. Cross-compiled files get mingw's headers
without this machine's. What neither build compiles (the examples, hosts in other compilers' ways) is
added from a table.

CMake's precompiled headers are in GCC's own format. Where it uses one, which is in the tests, clang
gets one of its own: without, it would read little else than GoogleTest, again for every file.

A source of the repository that ends up in no database would never be checked: the script stops with
its name.
"""
import json
import os
import shlex
import subprocess
import sys
from pathlib import Path


# What tests/support/CMakeLists.txt has precompiled for the tests.
TEST_HEADERS = "#include <gmock/gmock.h>\n#include <gtest/gtest.h>\n"

PRECOMPILED = "<precompiled>"  # stands for it until it is known which build it is for

WARNINGS = ["-Wall", "-Wextra"]
MICROSOFT = ["--target=x86_64-pc-windows-msvc", "-ffreestanding", "-nostdlibinc"]

# Sources (or folders of them) that CMake's builds above know nothing of, because a test builds them
# in its own way. For each the database and what matters of the flags that the test gives it.
BUILT_ELSEWHERE = {
    "examples/c": ("windows", ["-std=c11", "-Iinclude"]),
    "examples/cpp": ("windows", ["-std=c++17", "-Iinclude"]),
    "tests/library/dll/string_sep_host": (
        "microsoft",
        ["-std=c++20", "-fno-exceptions", "-fno-rtti", "-fno-threadsafe-statics", "-I."],
    ),
    "tests/fuzz/libfuzzer_entry.cpp": (
        "native",
        ["-std=c++20", "-DFUZZ_TARGET=FuzzStatus", "-I."],
    ),
    "tests/package/microsoft_host": ("microsoft", ["-std=c11", "-Iinclude"]),
}


def clang_arguments(command, source):
    """GCC's command line without what clang does not know and without output files."""
    kept = []
    arguments = iter(shlex.split(command)[1:])
    for argument in arguments:
        if argument in ("-o", "-MT", "-MF"):
            next(arguments)
        elif argument == "-include":
            header = next(arguments)
            precompiled = header.endswith("cmake_pch.hxx")
            kept += [PRECOMPILED] if precompiled else ["-include", header]
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
        if foreign or source.relative_to(repository).parts[0] == "build":
            continue
        if source.suffix in (".cpp", ".c") and source not in entries:
            entries[source] = clang_entry(source, entry["directory"],
                                          clang_arguments(entry["command"], entry["file"]))
    return entries


def clang_entry(source, folder, arguments):
    """How clang compiles a source in a folder, without what it has to know of the machine."""
    compiler = "clang" if source.suffix == ".c" else "clang++"
    return {"folder": str(folder), "compiler": compiler, "arguments": arguments}


def built_elsewhere(repository):
    """The sources of the table: for each kind of build their entries."""
    entries = {"native": {}, "windows": {}, "microsoft": {}}
    for place, (kind, arguments) in BUILT_ELSEWHERE.items():
        path = repository / place
        for source in [path] if path.is_file() else sorted(path.glob("*.c*")):
            if source.suffix in (".cpp", ".c"):
                entries[kind][source] = clang_entry(source, repository, arguments + WARNINGS)
    return entries


def sources(repository):
    listing = subprocess.run(
        ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard", "*.cpp", "*.c"],
        cwd=repository, capture_output=True, text=True, check=True,
    ).stdout
    paths = [repository / name for name in listing.split("\0") if name]
    return {path for path in paths if path.is_file()}


def quoted(argument):
    """For a command line in the only way of quoting that all of the readers understand."""
    return argument.replace("\\", "\\\\").replace('"', '\\"').replace(" ", "\\ ")


def with_machine(entries, machine):
    return {
        source: {**entry, "arguments": machine + entry["arguments"]}
        for source, entry in entries.items()
    }


def with_test_headers(folder, entries):
    """Precompiles GoogleTest's headers, with the flags of the tests, for the entries that use them."""
    users = [entry for entry in entries.values() if PRECOMPILED in entry["arguments"]]
    if not users:
        sys.exit("no test uses the precompiled headers of GoogleTest")
    header, result = folder / "tests.h", folder / "tests.pch"
    header.write_text(TEST_HEADERS)
    arguments = [argument for argument in users[0]["arguments"] if argument != PRECOMPILED]
    # With its instances of templates, which each test would make again: a third of its time.
    arguments += ["-fpch-instantiate-templates", "-xc++-header"]
    subprocess.run(
        [users[0]["compiler"], *arguments, str(header), "-o", str(result)],
        cwd=users[0]["folder"], check=True,
    )
    for entry in users:
        place = entry["arguments"].index(PRECOMPILED)
        entry["arguments"][place : place + 1] = ["-include-pch", str(result)]


def write(folder, entries):
    database = []
    for source, entry in sorted(entries.items()):
        command = [entry["compiler"], *entry["arguments"], "-c", str(source)]
        database.append(
            {
                "directory": entry["folder"],
                "file": str(source),
                "command": " ".join(map(quoted, command)),
            }
        )
    text = json.dumps(database, indent=1)
    path = folder / "compile_commands.json"
    if not path.exists() or path.read_text() != text:
        path.write_text(text)


def main():
    repository, output = Path(sys.argv[1]).resolve(), Path(sys.argv[2])
    cross = ["--target=x86_64-w64-mingw32", "-nostdinc"]
    for folder in mingw_include_folders("x86_64-w64-mingw32-g++-posix"):
        cross += ["-isystem", folder]
    elsewhere = built_elsewhere(repository)
    native = read(repository, "native") | elsewhere["native"]
    windows = with_machine(read(repository, "windows-x64") | elsewhere["windows"], cross)
    windows |= with_machine(elsewhere["microsoft"], MICROSOFT)

    forgotten = sources(repository) - native.keys() - windows.keys()
    if forgotten:
        names = sorted(str(path.relative_to(repository)) for path in forgotten)
        sys.exit("compiled by nothing that the checks know of: " + ", ".join(names))
    for folder, entries in (("native", native), ("windows-all", windows)):
        (output / folder).mkdir(parents=True, exist_ok=True)
        with_test_headers((output / folder).resolve(), entries)
    (output / "windows").mkdir(exist_ok=True)
    write(output / "native", native)
    write(output / "windows-all", windows)
    write(output / "windows", {s: e for s, e in windows.items() if s not in native})


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main()
