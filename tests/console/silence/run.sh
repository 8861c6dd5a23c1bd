#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs silence_table.py with the programs of a Windows build, under Wine.
# Usage: run.sh BUILD_FOLDER [ARGUMENT...]
#   ARGUMENT  of silence_table.py, for example --seeds 1-10
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/../../../scripts/lib/common.sh"
source "$root/scripts/lib/wine.sh"
wine_ready
bin=$1/bin
shift
exec python3 "$root/tests/console/silence/silence_table.py" "$bin" "$root/scripts" "$@"
