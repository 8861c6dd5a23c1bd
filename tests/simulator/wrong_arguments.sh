#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs velquin-sim with everything that one can get wrong: nothing on standard output, one line on
# standard error, exit code 2. Prints what did otherwise; exit code 0 when nothing did.
#
# Usage: wrong_arguments.sh VELQUIN-SIM
set -u
sim=$1
runs=0
failures=0
errors=$(mktemp)
trap 'rm -f "$errors"' EXIT

# refuses ARGUMENT...: the program runs for a moment at most, in case that it takes them.
refuses() {
  local output code=0 arguments=("$@")
  [[ " $* " == *--run-for* ]] || arguments=(--run-for 0.01 "$@")
  output=$(timeout 20 "$sim" "${arguments[@]}" 2>"$errors") || code=$?
  runs=$((runs + 1))
  if ((code != 2)) || [[ -n $output || $(wc -l <"$errors") != 1 || $(wc -c <"$errors") -gt 400 ||
    $(head -c 12 "$errors") != "velquin-sim:" ]]; then
    failures=$((failures + 1))
    printf 'exit code %d for: %s\n%s\n%s\n' "$code" "$(printf '%.60q ' "$@")" "$output" \
      "$(head -c 500 "$errors")"
  fi
}

long=$(printf 'x%.0s' {1..10000})
digits=$(printf '9%.0s' {1..400})
never=("" " " nan -nan inf -inf 1e5 0x10 1,5 "1 2" +1 1.5.2 -1e308 99999999999999999999 "$long"
  "$digits" %s%n $'\n' $'a\nb' $'\e[31m' --bogus --port @file / - --)
options=(--address --port --time-scale --clock --run-for --top-rate --acceleration --latitude
  --longitude --zone)
for option in "${options[@]}"; do
  refuses "$option"
  for value in "${never[@]}"; do refuses "$option=$value"; done
  for value in "" --bogus "$long"; do refuses "$option" "$value"; done
  refuses "$option" 5 "$option" 5
done

for value in localhost 1.2.3 1.2.3.4.5 256.1.1.1 -1.1.1.1 127.0.0.01 127.0.0.1. 127.0.0.1:60023 \
  " 127.0.0.1" "127.0.0.1 " ::1; do
  refuses --address "$value"
done
for value in 0 -1 65536 1.5; do refuses --port "$value"; done
for value in 0 0.0009 1000.1 -1; do refuses --time-scale "$value"; done
for value in -0.1 10000001; do refuses --run-for "$value"; done
for value in 0 50.1 -4; do refuses --top-rate "$value"; done
for value in 0 100.1 -4; do refuses --acceleration "$value"; done
for value in 90.1 -90.1; do refuses --latitude "$value"; done
for value in 180.1 -180.1; do refuses --longitude "$value"; done
for value in 15 -13 1.5; do refuses --zone "$value"; done
for value in yesterday 2024-01-15 2024-13-01T00:00:00 2024-01-15T24:00:00 1899-12-31T00:00:00; do
  refuses --clock "$value"
done
for words in word -x -1 --verbose=maybe "--verbose word" --PORT --por /port:1 "-- word" --config; do
  # shellcheck disable=SC2086 # two words each
  refuses $words
done

echo "$runs wrong command lines, $failures not refused"
((failures == 0))
