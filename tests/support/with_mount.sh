#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs a command beside a simulated mount of a Windows build, and ends with its exit code. The mount
# is twenty times as fast as a real one, and so far north that what the tests look at never sets.
# Usage: with_mount.sh VELQUIN-SIM.exe LOG COMMAND [ARGUMENT...]
#   LOG  the file that the mount writes its commands and answers to
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/lib/common.sh"
source "$root/scripts/lib/wine.sh"
wine_ready
sim=$1
log=$2
shift 2

: >"$log"
"${wine_env[@]}" timeout 90 "$wine_loader" "$sim" --run-for 80 --verbose \
  --time-scale 20 --latitude 69.65 --longitude 18.96 --zone 1 --clock 2026-01-15T18:00:00 \
  </dev/null >"$log" 2>&1 &
simulator=$!
# Interrupted it closes its socket. Wine's server may keep the socket of a program that is ended in the
# middle of a `select`, and its port with it.
trap 'kill -INT "$simulator" 2>/dev/null || true; wait "$simulator" 2>/dev/null || true' EXIT
deadline=$((SECONDS + 30))
until grep -q 'listening on' "$log"; do
  kill -0 "$simulator" 2>/dev/null && ((SECONDS < deadline)) || {
    cat "$log"
    die "the simulated mount did not start"
  }
  sleep 0.05
done
"$@"
