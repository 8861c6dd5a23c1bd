#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds an example where it lies in the unpacked zip, with CMake and mingw, as its README says.
# Usage: build_example.sh BUILD_FOLDER c|cpp
source "$(dirname "${BASH_SOURCE[0]}")/place.sh"
language=$2

mapfile -t options < <(grep '^-D' "$package/examples/README.md" | tr ' ' '\n')
((${#options[@]} >= 3)) || die "examples/README.md tells no options for a cross build"
warnings="-Wall -Wextra -Wpedantic -Werror"
rm -rf "$place/build-$language"
cmake -G Ninja --no-warn-unused-cli -S "$package/examples/$language" -B "$place/build-$language" \
  "${options[@]}" "-DCMAKE_C_FLAGS=$warnings" "-DCMAKE_CXX_FLAGS=$warnings"
cmake --build "$place/build-$language"
needs_nothing_else "$place/build-$language"
cmp "$package/bin/velquin.dll" "$place/build-$language/velquin.dll"
