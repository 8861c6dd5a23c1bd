#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Unpacks the zip into an empty folder and compares all checksums; every file must have one.
# Usage: unpack.sh BUILD_FOLDER
source "$(dirname "${BASH_SOURCE[0]}")/place.sh"

(cd "$place/first" && sha256sum --strict --check --quiet ./*.zip.sha256)
rm -rf "$place/unpacked"
mkdir "$place/unpacked"
unzip -q "$place/first/velquin-$version-win64.zip" -d "$place/unpacked"
cd "$package"
sha256sum --strict --check --quiet SHA256SUMS
diff <(cut -c 67- SHA256SUMS) <(find . -type f ! -name SHA256SUMS -printf '%P\n' | LC_ALL=C sort)
