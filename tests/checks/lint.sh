#!/usr/bin/env bash
# Static checks of the scripts and of the sources find nothing. What has not changed since the last
# run is not read again; scripts/lint without --quick reads the rest as well.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

# One at a time: other tests run meanwhile.
VW_JOBS=1 exec scripts/lint --quick
