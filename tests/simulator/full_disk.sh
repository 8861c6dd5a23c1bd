#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Lets velquin-sim write its record into a file that can hold a kilobyte and no more, as on a full
# disk, and goes on asking it for its version. Exit code 0 when every question is answered, one
# line on standard error says that the record has ended, and so does the exit code 3.
#
# Usage: full_disk.sh VELQUIN-SIM ADDRESS PORT
set -u
sim=$1 address=$2 port=$3
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

(
  trap '' XFSZ
  ulimit -f 1
  exec "$sim" --address "$address" --port "$port" --record "$folder/record" --run-for 60
) >"$folder/output" 2>"$folder/errors" &
pid=$!
for ((i = 0; i < 400; ++i)); do
  [[ -s $folder/output ]] && break
  sleep 0.05
done

answers=0
exec 3<>"/dev/udp/$address/$port"
for ((i = 0; i < 20; ++i)); do
  printf '$SYVER?\r\n' >&3
  [[ $(timeout 5 dd bs=1000 count=1 <&3 2>/dev/null) == '$SYVER='* ]] && answers=$((answers + 1))
done
kill "$pid"
code=0
wait "$pid" || code=$?
mapfile errors <"$folder/errors"
printf '%d answers, %d lines on standard error, exit code %d\n' "$answers" "${#errors[@]}" "$code"
cat "$folder/output" "$folder/errors"
((answers == 20 && code == 3 && ${#errors[@]} == 1)) && [[ ${errors[0]} == *"record ends here"* ]]
