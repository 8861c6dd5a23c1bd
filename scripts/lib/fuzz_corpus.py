# SPDX-License-Identifier: MIT
"""The kept inputs of a fuzz target: many small files for libFuzzer, one text file in the repository.

In the text file a line is an input; everything but printable ASCII, and the backslash, is written
as "\\xNN". tests/fuzz/corpus_file.cpp reads the same.
"""
import hashlib
import re


def escaped(data):
    return "".join(
        chr(byte) if 0x20 <= byte < 0x7F and byte != 0x5C else f"\\x{byte:02x}" for byte in data
    )


def unescaped(line):
    parts = re.split(r"\\x([0-9a-f]{2})", line)
    return b"".join(
        bytes([int(part, 16)]) if index % 2 else part.encode("ascii")
        for index, part in enumerate(parts)
    )


def unpack(file, folder):
    """Writes each input of a text file into a file of its own."""
    folder.mkdir(parents=True, exist_ok=True)
    for line in file.read_text(encoding="ascii").splitlines():
        data = unescaped(line)
        (folder / hashlib.sha1(data).hexdigest()).write_bytes(data)


def pack(folder, file):
    """Writes a folder's inputs into a text file, the shortest first. Returns how many."""
    inputs = {path.read_bytes() for path in folder.iterdir()}
    lines = [escaped(data) for data in sorted(inputs, key=lambda data: (len(data), data))]
    file.write_text("".join(line + "\n" for line in lines), encoding="ascii")
    return len(lines)
