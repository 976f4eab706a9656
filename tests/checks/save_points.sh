#!/usr/bin/env bash
# The program is killed while it saves the list after an edit in its window, at many different
# points: the file is the old list or the new one, whole, and as soon as it is the new one the old
# list, which had an item that is gone, is beside it. What the kill left is no obstacle to the
# next save.
#
# Every call that a Windows program makes to its system goes through a write to Wine's server, and
# so do the bytes of files: killing it before its k-th write, for any k, reaches every step of a
# save. The points lie from the first mention of the temporary file to the last.
#
# SAVE_POINTS=n     how many points are tried (default 9; 0 for all)
# SAVE_SEED=n       another choice of points (default 1)
# VW_BUILD=FOLDER   the build folder (default build/release)
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

points=${SAVE_POINTS:-9}
RANDOM=${SAVE_SEED:-1}

checkName=save_points
source tests/checks/support/crash_scenario.bash
source tests/checks/support/driven_window.bash
readonly calls='write,writev,pwrite64,fsync,fdatasync'
killed=0 old=0 saves=0

finish() {
    endWindow
    scripts/wine --end
}

# saveUnderStrace [NAME NUMBER]: the first item is taken off the list, and the program killed before
# its call of that name and number, counted from the moment when the file's turn has come. What it
# does then is in the file "trace".
saveUnderStrace() {
    local watcher try inject=()
    [[ $# -eq 0 ]] || inject=(-e "inject=$1:signal=SIGKILL:when=$2")
    tell delete held
    strace -f -qq -s 300 -o "$folder/trace" -e "trace=$calls" "${inject[@]}" -p "$process" \
        </dev/null >/dev/null 2>"$folder/strace" &
    watcher=$!
    for ((try = 0; try < 500; try++)); do
        ! grep -q '^TracerPid:[[:space:]]*[1-9]' "/proc/$process/status" || break
        [[ -d /proc/$watcher ]] || fail "strace: $(<"$folder/strace")"
        sleep 0.01
    done
    tell save "done" gone
    [[ $answer == gone ]] || kill "$watcher" 2>/dev/null || true
    wait "$watcher" 2>/dev/null || true
}

# stepsOfSave: the calls of the program's window in a save, one on a line: name, and number among the
# calls of this name.
stepsOfSave() {
    awk -v process="$process" '
        $1 == process {
            name = $2; sub(/\(.*/, "", name); count[name]++
            if (index($0, "FilesList.vwl")) { if (!first) first = NR; last = NR }
            line[NR] = name " " count[name]
        }
        END { for (i = first; first && i <= last + 3; i++) if (i in line) print line[i] }' \
        "$folder/trace"
}

# lookAt POINT: what the kill left; every third time the next save too.
lookAt() {
    local first=1
    if cmp -s "$listFile" "$folder/new"; then
        first=2
        cmp -s "$listFile.old" "$folder/old" || fail "killed before $1: the old list is lost"
    else
        cmp -s "$listFile" "$folder/old" || fail "killed before $1: half a list in $listFile"
        ((old += 1))
    fi
    ((++saves % 3 == 0)) || return 0
    openWindow
    tell delete held
    tell save "done"
    closeWindow
    cmp -s "$listFile" <(listOf $((first + 1))) || fail "after $1: the next save is not whole"
    [[ -z $(find "$folder/app" -name '*.tmp' -o -name '*.new') ]] || fail "after $1: left-overs"
}

prepareFolder
trap finish EXIT
prepareWindow app
listOf 1 gone >"$folder/old"
listOf 2 >"$folder/new"
cp "$folder/old" "$listFile"
openWindow
saveUnderStrace
[[ $answer == 'done' ]] || fail 'the program ended in a save that nobody disturbed'
mapfile -t steps < <(stepsOfSave)
closeWindow
lookAt 'nothing'
[[ $old -eq 0 && ${#steps[@]} -gt 10 ]] || fail "the steps of a save were not found: ${#steps[@]}"

[[ $points -gt 0 ]] || points=${#steps[@]}
for ((i = 0; i < points; i++)); do
    step=${steps[(i * 1000 + (points < ${#steps[@]} ? RANDOM % 1000 : 0)) * ${#steps[@]} / (points * 1000)]}
    rm -f "$listFile".*
    cp "$folder/old" "$listFile"
    openWindow
    # shellcheck disable=SC2086 # a name and a number
    saveUnderStrace $step
    if [[ $answer == gone ]]; then
        ((killed += 1))
        process=
    else
        closeWindow
    fi
    lookAt "$step"
done

echo "$points of ${#steps[@]} points tried, $killed kills, $old left the old list" \
    "(SAVE_SEED=${SAVE_SEED:-1})"
[[ $killed -gt $((points / 2)) ]]
