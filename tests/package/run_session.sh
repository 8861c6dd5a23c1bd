#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs a program of the package test against the packaged simulator, both under Wine. Prints what the
# program printed, and then each goto that the mount was told.
# Usage: run_session.sh BUILD_FOLDER PROGRAM.exe [ARGUMENT...]
source "$(dirname "${BASH_SOURCE[0]}")/place.sh"
source "$root/scripts/lib/wine.sh"
wine_ready
shift
log=$place/simulator.log

# Twenty times as fast, and so far north that what the tests look at never sets.
: >"$log"
"${wine_env[@]}" timeout 90 "$wine_loader" "$package/bin/velquin-sim.exe" --run-for 80 --verbose \
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

code=0
(cd "$place" && "$root/scripts/wine-run" "$@") || code=$?
tr -d '\r' <"$log" | grep -o '\$MTTGT=[^ ]*' || true
exit "$code"
