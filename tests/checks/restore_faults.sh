#!/usr/bin/env bash
# The disk fails in the middle of a restore, at many different calls: it is full (ENOSPC) or broken
# (EIO). What must hold then is described in tests/windows/faults/FailedRestoreTest.cpp.
#
# VW_HISTORIES=n    how many points are tried in all (default 5)
# VW_FIRST_SEED=n   another choice of points (default 1)
# VW_BUILD=FOLDER   the build folder (default build/release)
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

checkName=restore_faults
source tests/checks/support/crash_scenario.bash
source tests/checks/support/failing_disk.bash
VW_PROGRAM=Z:$(tr / '\\' <<<"$build/bin/Vaultwright.exe")
export VW_PROGRAM

# The drive of the copies, as the calls name it by its letter and by its folder.
takeDiskCalls '/r:/|/drive_r/'
scripts/wine "$build/tests/restore_faults.exe"
