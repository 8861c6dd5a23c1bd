#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs velquin-sim with everything that one can get wrong: nothing on standard output, one line on
# standard error, exit code 2. What is right for an option is taken, or its refusals would say
# nothing. Prints what did otherwise; exit code 0 when nothing did.
#
# Usage: wrong_arguments.sh VELQUIN-SIM
set -u
sim=$(realpath "$1")
runs=0
failures=0
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder" || exit 1 # what is wrongly taken for the name of a record lands here

# run ARGUMENT...: for a moment at most, in case that it takes them; what it prints goes to
# $output and, each line with its end, to ${errors[@]}, its exit code to $code.
run() {
  local arguments=("$@")
  [[ " $* " == *--run-for* ]] || arguments=(--run-for 0.01 "$@")
  code=0
  timeout 20 "$sim" "${arguments[@]}" >"$folder/output" 2>"$folder/errors" || code=$?
  mapfile output <"$folder/output"
  mapfile errors <"$folder/errors"
}

# complain ARGUMENT...: about what run saw.
complain() {
  failures=$((failures + 1))
  printf 'exit code %d for: %s\n' "$code" "$(printf '%.60q ' "$@")"
  printf '%.500s' "${output[@]}" "${errors[@]}"
}

# takes TEXT ARGUMENT...: it listens, and its line has this text.
takes() {
  local text=$1
  shift
  run "$@"
  if ((code != 0 || ${#output[@]} != 1 || ${#errors[@]} != 0)) ||
    [[ ${output[0]} != *"$text"* ]]; then
    complain "$@"
  fi
}

# refuses ARGUMENT...
refuses() {
  runs=$((runs + 1))
  run "$@"
  if ((code != 2 || ${#output[@]} != 0 || ${#errors[@]} != 1 || ${#errors[0]} > 400)) ||
    [[ ${errors[0]} != "velquin-sim: "*$'\n' ]]; then
    complain "$@"
  fi
}

long=$(printf 'x%.0s' {1..10000})
digits=$(printf '9%.0s' {1..400})
never=("" " " nan -nan inf -inf 1e5 0x10 1,5 "1 2" +1 1.5.2 -1e308 99999999999999999999 "$long"
  "$digits" %s%n $'\n' $'a\nb' $'\e[31m' --bogus --port @file / - --)
# The options that take a value, with a right one.
declare -A right=(
  [--address]=127.0.67.1 [--port]=60023 [--time-scale]=5 [--clock]=now [--run-for]=0.01
  [--top-rate]=5 [--acceleration]=5 [--latitude]=5 [--longitude]=5 [--zone]=5
  [--loss]=5% [--delay]=5..6ms [--duplicate]=5% [--reorder]=5% [--truncate]=5% [--garble]=5%
  [--empty]=5% [--foreign]=5% [--split]=5% [--silence-after]=5 [--seed]=5
  [--record]="$folder/record" [--replay]="$folder/replay")
printf '%s\n' "# velquin-sim record 1: milliseconds, exchange, direction, host, faults, bytes" \
  "0 1 in x delay=5" >"$folder/replay"
# On an address that nobody else listens on.
here=(--address 127.0.67.1)
for option in "${!right[@]}"; do
  value=${right[$option]}
  if [[ $option == --address ]]; then
    takes 127.0.67.1:60023 "$option" "$value"
  else
    takes 127.0.67.1:60023 "${here[@]}" "$option" "$value"
  fi
  refuses "$option" "$value" "$option" "$value"
  # A --split needs no value; any text is the name of a file.
  [[ $option == --split ]] || refuses "$option"
  for value in "${never[@]}"; do
    [[ $option == --re[cp]* && $value != "" && $value != -* ]] || refuses "$option=$value"
  done
  for value in "" --bogus "$long"; do refuses "$option" "$value"; done
done

# Numbers are decimal, whatever they begin with.
takes 127.0.67.1:10 "${here[@]}" --port 010
takes 127.0.67.1:60023 "${here[@]}" --port 0060023
takes 127.0.67.1:60023 "${here[@]}" --zone 014
refuses --zone 015
refuses --zone=-013
refuses --port 0x7f
for option in --loss --duplicate --reorder --truncate --garble --empty --foreign --split; do
  for value in 5 100.1% -1% % 5%% 0x5% nan% 1e1% 5%..6%; do refuses "$option=$value"; done
done
for value in 5 ms 5s 6..5ms 5..ms ..5ms -1ms 60001ms 5..60001ms 5..6..7ms 5ms..6ms 0x5ms 1.5ms; do
  refuses --delay "$value"
done
for value in -1 1.5 2147483648 5%; do refuses --silence-after "$value"; done
for value in -1 1.5 18446744073709551616 0x5; do refuses --seed "$value"; done
for name in "$folder" "$folder/missing/record" /dev/full; do refuses --record "$name"; done
for name in "$folder" "$folder/missing" /dev/zero /dev/null "$sim"; do refuses --replay "$name"; done
ln "$folder/replay" "$folder/linked"
for name in replay ./replay linked; do
  refuses --record "$folder/$name" --replay "$folder/replay"
done
for option in --loss=5% --split --delay=5ms --silence-after=5 --seed=5; do
  refuses --replay "$folder/replay" "$option"
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
for words in word -x -1 --verbose= --verbose=010 --help= --version=1 --verbose=maybe "--verbose word" --PORT --por /port:1 "-- word" --config; do
  # shellcheck disable=SC2086 # two words each
  refuses $words
done

echo "$runs wrong command lines, $failures not refused"
((failures == 0))
