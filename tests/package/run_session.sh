#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs a program of the package test against the packaged simulator, both under Wine. Prints what the
# program printed, and then each goto that the mount was told.
# Usage: run_session.sh BUILD_FOLDER PROGRAM.exe [ARGUMENT...]
source "$(dirname "${BASH_SOURCE[0]}")/place.sh"
shift
log=$place/simulator.log

code=0
(cd "$place" && "$root/tests/support/with_mount.sh" "$package/bin/velquin-sim.exe" "$log" \
  "$root/scripts/wine-run" "$@") || code=$?
tr -d '\r' <"$log" | grep -o '\$MTTGT=[^ ]*' || true
exit "$code"
