#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds a host in the way of Microsoft's compiler: clang for its target, a linker that reads what
# Microsoft's reads, and the CMake package, which must choose velquin.lib by itself.
# Usage: build_microsoft_host.sh BUILD_FOLDER
source "$(dirname "${BASH_SOURCE[0]}")/place.sh"
sources="$place/microsoft_host source"
target="$place/build-microsoft"

rm -rf "$sources" "$target"
cp -r "$root/tests/package/microsoft_host" "$sources"
cmake -G Ninja -S "$sources" -B "$target" "-DCMAKE_PREFIX_PATH=$package" \
  -DCMAKE_BUILD_TYPE=Release -DCMAKE_SYSTEM_NAME=Windows -DCMAKE_C_COMPILER=clang \
  -DCMAKE_C_COMPILER_TARGET=x86_64-pc-windows-msvc \
  -DCMAKE_TRY_COMPILE_TARGET_TYPE=STATIC_LIBRARY -DCMAKE_C_STANDARD_LIBRARIES= \
  "-DKERNEL32=$(x86_64-w64-mingw32-gcc-posix -print-file-name=libkernel32.a)"
cmake --build "$target"
needs_nothing_else "$target"
grep -q 'lib/velquin\.lib' "$target/build.ninja" || die "velquin.lib was not linked"
