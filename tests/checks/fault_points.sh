#!/usr/bin/env bash
# The disk fails in the middle of a backup, at many different calls: it is full (ENOSPC) or broken
# (EIO). The run must go on to its end, report the failure with a path and an exit code, and lose
# neither another item nor an old copy; the next run must make everything as if nothing had happened
# (tests/system/CrashScenario.h says it exactly).
#
# The calls are those of Wine and its server on the files of a run: reads, writes, and whatever opens,
# makes, renames or removes something (tests/checks/support/fail_call.c intercepts them).
#
# FAULT_POINTS=n    how many points are tried in all (default 10)
# FAULT_SEED=n      another choice of points (default 1)
# VW_TESTED=console  lets runs of vw.exe fail instead (console_fault_points.sh)
# VW_BUILD=FOLDER   the build folder (default build/release)
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

readonly points=${FAULT_POINTS:-10}
RANDOM=${FAULT_SEED:-1}
checkName=fault_points
source tests/checks/support/crash_scenario.bash
source tests/checks/support/failing_disk.bash
readonly noSpace=28 broken=5
failed=0

# backUp NUMBER ERROR: a backup whose call of this number fails; the calls are in the log.
backUp() {
    rm -f "$VW_FAIL_LOG"
    printf '%8d %4d\n' "$1" "$2" >"$VW_FAIL_CONTROL"
    run "${tested[*]:1}" "${tested[0]}"
    rm -f "$VW_FAIL_CONTROL"
}

# failCalls HISTORY COUNT: spreads the points evenly over the calls of a run, with some chance.
failCalls() {
    local i call error last
    look prepare 'K:\world' "$1"
    backUp 0 0
    [[ $exitCode -eq 0 ]] || fail 'a run without a fault failed'
    last=$(wc -l <"$VW_FAIL_LOG")
    [[ $last -gt 100 ]] || fail 'the calls of a run were not found'
    look prepare 'K:\world' "$1"
    for ((i = 0; i < $2; i++)); do
        call=$(((i * 1000 + RANDOM % 1000) * last / ($2 * 1000) + 1))
        error=$broken
        ((RANDOM % 2)) || error=$noSpace
        backUp "$call" "$error"
        grep '^failed' "$VW_FAIL_LOG" >"$folder/call" || {
            look prepare 'K:\world' "$1"
            continue
        }
        ((failed += 1))
        # A source folder that cannot be listed while the newest date is looked for is passed over:
        # its copy looks older than it is, and is made once more by the next run.
        if [[ $exitCode -eq 0 && $(<"$folder/call") == *"open "*/world/Home/*/ ]]; then
            look prepare 'K:\world' "$1"
            continue
        fi
        judge "error $error of: $(<"$folder/call")" "$1" "$i" fault "$exitCode" 'K:\reports'
    done
}

takeDiskCalls /world/
prepareFolder
failCalls none $((points / 3))
failCalls incomplete $((points / 4))
failCalls full $((points - points / 3 - points / 4))

echo "$points points tried, $failed calls failed (FAULT_SEED=${FAULT_SEED:-1}), $failures failures"
[[ $failures -eq 0 && $failed -gt $((points / 2)) ]]
