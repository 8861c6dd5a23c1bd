#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs velquinctl through scripts/wine-live as a person does: in a terminal the progress of a goto is
# one line that is redrawn, in a pipe it is a line a second. When the terminal goes away, the mount is
# stopped. Says what is otherwise.
# Usage: live_progress.sh FOLDER   the folder of velquinctl.exe and velquin-sim.exe
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/lib/common.sh"
folder=$(realpath "$1")

if [[ ${2:-} != --inside ]]; then
  work=$(mktemp -d)
  trap 'rm -rf "$work"' EXIT
  "$root/tests/support/with_mount.sh" "$folder/velquin-sim.exe" "$work/mount.log" \
    "$0" "$folder" --inside "$work"
  exit
fi

work=$3
live=("$root/scripts/wine-live" "$folder/velquinctl.exe" goto 127.0.0.1 --timeout 30)
# fail WHERE TEXT: shows what came there.
fail() {
  cat -v "$work/$1"
  die "in a $1: $2"
}

# Both targets are near the pole, which is always above the horizon. Nobody sits before this terminal;
# what would be seen there goes to a file.
script --quiet --return --command "${live[*]@Q} 5h +80d" "$work/terminal" </dev/null >/dev/null
"${live[@]}" 17h +80d >"$work/pipe" </dev/null

bars='\[[= >]*\]'
redrawn=$(tr -cd '\r' <"$work/terminal" | wc -c)
lines=$(grep -c "$bars" "$work/terminal" || true)
((lines == 1)) || fail terminal "$lines lines of progress instead of one"
((redrawn >= 10)) || fail terminal "the line was redrawn $redrawn times only"
grep -q '^reached' "$work/terminal" || fail terminal "the result has no line"
lines=$(grep -c "^$bars" "$work/pipe" || true)
((lines >= 2)) || fail pipe "$lines lines of progress"

# The terminal goes away on the way.
"${live[@]}" 5h +60d >"$work/hangup" 2>&1 </dev/null &
slew=$!
for ((i = 0; i < 200; ++i)); do
  if grep -q "^$bars" "$work/hangup"; then break; fi
  sleep 0.05
done
kill -HUP "$slew"
code=0
wait "$slew" || code=$?
((code == 130)) || fail hangup "exit code $code"
grep -q 'the controller acknowledged the stop' "$work/hangup" || fail hangup "the mount was not stopped"
