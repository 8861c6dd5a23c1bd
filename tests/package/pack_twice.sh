#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Packs twice, the second time in other surroundings, and compares the bytes.
# Usage: pack_twice.sh BUILD_FOLDER
source "$(dirname "${BASH_SOURCE[0]}")/place.sh"

rm -rf "$place"
mkdir -p "$place/other temporary folder"
"$root/scripts/package" --no-setup --build "$build" --to "$place/first"
(
  cd /
  umask 077
  export TZ=Pacific/Auckland LC_ALL=C TMPDIR="$place/other temporary folder"
  "$root/scripts/package" --no-setup --build "$build" --to "$place/second"
)
for zip in "velquin-$version-win64.zip" "velquin-$version-sources.zip"; do
  cmp "$place/first/$zip" "$place/second/$zip"
done
