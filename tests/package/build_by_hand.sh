#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds both examples with the command lines of their README, in a copy of the unpacked zip.
# Usage: build_by_hand.sh BUILD_FOLDER
source "$(dirname "${BASH_SOURCE[0]}")/place.sh"

rm -rf "$place/by hand"
cp -r "$package" "$place/by hand"
cd "$place/by hand"
mapfile -t lines < <(grep -E '^(gcc|g\+\+) ' examples/README.md)
((${#lines[@]} == 2)) || die "examples/README.md tells ${#lines[@]} command lines, not 2"
for line in "${lines[@]}"; do
  read -r -a command <<<"$line"
  "x86_64-w64-mingw32-${command[0]}-posix" -Wextra -Wpedantic -Werror "${command[@]:1}"
done
cp bin/velquin.dll .
