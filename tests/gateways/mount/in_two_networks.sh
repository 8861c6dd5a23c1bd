#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs a test program in a network of its own that a cable joins to a second one, where the simulated
# mount is. The kernel drops 5 % of the packets each way. Root may make networks, and so may others
# where the system allows user namespaces.
#
# Usage: in_two_networks.sh VELQUIN_SIM TEST [ARGUMENT...]
# The test gets in its environment:
#   MOUNT_ADDRESS  where the simulated mount is
#   CABLE          the name of its own end of the cable
set -euo pipefail

if [[ $1 != --inside ]]; then
  way=(--net)
  unshare "${way[@]}" true 2>/dev/null || way=(--map-root-user --net)
  exec unshare "${way[@]}" "$0" --inside "$@"
fi
shift
simulator=$1
shift

ip link set lo up
# Says when it has left this network, and then keeps the other one.
exec {left}< <(exec unshare --net sh -c 'echo $$; exec sleep 1000')
read -r other <&"$left"
trap 'kill "$other" ${mount:-} 2>/dev/null || true' EXIT
there=(nsenter -t "$other" -n)

ip link add cable type veth peer name far netns "$other"
ip addr add 10.77.0.1/24 dev cable
ip link set cable up
"${there[@]}" ip link set lo up
"${there[@]}" ip addr add 10.77.0.2/24 dev far
"${there[@]}" ip link set far up

# drop_some COMMAND...: of what comes in, where the command leads to.
drop_some() {
  "$@" nft add table ip bad
  "$@" nft 'add chain ip bad incoming { type filter hook input priority 0; }'
  "$@" nft 'add rule ip bad incoming udp dport 1-65535 numgen random mod 100 < 5 counter drop'
}
drop_some env
drop_some "${there[@]}"

"${there[@]}" "$simulator" --address 10.77.0.2 --top-rate 50 --acceleration 50 \
  --delay 1..30ms >/dev/null &
mount=$!

MOUNT_ADDRESS=10.77.0.2 CABLE=cable "$@"
