#!/usr/bin/env bash
# The console program whose disk fails in the middle of a backup: the same tests as in fault_points.sh, fewer
# of them, since the engine is the same.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

export VW_TESTED=console FAULT_POINTS=${FAULT_POINTS:-4}
exec tests/checks/fault_points.sh
