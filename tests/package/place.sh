# SPDX-License-Identifier: MIT
# Where the steps of the package test happen. Sourced, with the build folder as the first argument.
#   $build     the Windows build folder whose files are packed
#   $place     a folder of the test's own, with a blank in its path as users have them
#   $package   the unpacked zip in it
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/lib/common.sh"
build=$1
place="$build/package test"
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
package="$place/unpacked/velquin-$version-win64"

# A user's machine has no such settings of this one.
unset CMAKE_C_COMPILER_LAUNCHER CMAKE_CXX_COMPILER_LAUNCHER CMAKE_PREFIX_PATH CFLAGS CXXFLAGS LDFLAGS

# needs_nothing_else FOLDER: what was built there came from the package and the system alone.
needs_nothing_else() {
  local used
  used=$(cat "$1/build.ninja" <(ninja -C "$1" -t deps) | sed -E "s|$build/package[\\\\\$]? test||g")
  ! grep -F "$root/" <<<"$used" || die "something of the repository was used"
}
