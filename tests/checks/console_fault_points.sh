#!/usr/bin/env bash
# The console program whose disk fails in the middle of a backup: the same attacks as in fault_points.sh, fewer
# of them, since the engine is the same.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

export VW_ATTACKED=console FAULT_POINTS=${FAULT_POINTS:-4}
exec tests/checks/fault_points.sh
