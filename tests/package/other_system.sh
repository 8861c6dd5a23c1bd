#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# On another system than Windows find_package() must fail and say why.
# Usage: other_system.sh BUILD_FOLDER
source "$(dirname "${BASH_SOURCE[0]}")/place.sh"

rm -rf "$place/build-other"
if cmake -G Ninja -S "$package/examples/cpp" -B "$place/build-other" >"$place/other.log" 2>&1; then
  die "the package was found on $(uname -s)"
fi
# CMake breaks the line where it likes.
tr -s ' \n' ' ' <"$place/other.log" | grep -o 'velquin\.dll is a library for Windows, not Linux'
