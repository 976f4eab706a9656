#!/usr/bin/env bash
# The console program killed in the middle of a backup: the same tests as in kill_points.sh, fewer
# of them, since the engine is the same.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

export VW_TESTED=console KILL_POINTS=${KILL_POINTS:-9}
exec tests/checks/kill_points.sh
