# SPDX-License-Identifier: MIT
# What every script needs: where the repository is, and how to stop with a message.
# Sourced, never run.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)

# say TEXT...: a line that tells a person what goes on.
say() { printf '== %s\n' "$*"; }

# die TEXT...: the reason on standard error, then the end.
die() {
  printf '%s: %s\n' "$(basename "$0")" "$*" >&2
  exit 1
}

# wrong_usage TEXT...: like die, for a command line that cannot be understood.
wrong_usage() {
  printf '%s: %s (try --help)\n' "$(basename "$0")" "$*" >&2
  exit 2
}

# print_help: the comment block at the head of the calling script, without its comment signs.
print_help() {
  awk 'NR > 2 && !/^#/ { exit } NR > 2 { sub(/^# ?/, ""); print }' "$0"
}

# build_jobs: how many compilers at once; JOBS overrides.
build_jobs() { printf '%s\n' "${JOBS:-$(nproc)}"; }

# build_preset PRESET [TARGET...]: configures when that was never done or the cache is stale, and
# builds; without targets all of it.
build_preset() {
  local preset=$1
  shift
  local targets=()
  if (($# > 0)); then targets=(--target "$@"); fi
  if [[ ! -f $root/build/$preset/build.ninja ]]; then
    (cd "$root" && cmake --preset "$preset")
  fi
  cmake --build "$root/build/$preset" -j "$(build_jobs)" "${targets[@]}"
}
