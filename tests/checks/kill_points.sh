#!/usr/bin/env bash
# The program is killed in the middle of a backup, at many different points: no copy that is not
# whole may pass for one, no old copy may be gone before the new one is whole, and the next run must
# make everything as if nothing had happened (tests/system/CrashScenario.h says it exactly).
#
# Every call that a Windows program makes to its system goes through a write to Wine's server, so
# killing it before its k-th write, for any k, reaches every step of a run; the bytes of copies pass
# such writes too. Most points lie where something changes on the disk. Others kill the server itself
# before it renames, makes or deletes something: all programs end at once, as when the machine does.
#
# KILL_POINTS=n     how many points are tried in all (default 45)
# KILL_SEED=n       another choice of points (default 1)
# VW_TESTED=console  kills runs of vw.exe instead (console_kill_points.sh)
# VW_BUILD=FOLDER   the build folder (default build/release)
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

readonly points=${KILL_POINTS:-45}
readonly serverPoints=$(((points + 5) / 9))
RANDOM=${KILL_SEED:-1}

checkName=kill_points
source tests/checks/support/crash_scenario.bash
readonly writeCalls='write,writev' serverCalls='rename,mkdir,unlink,rmdir'
readonly serverPrefix=$build/prefix/${checkName}_server
killed=0
server=

serverRuns() {
    [[ -d /proc/$server ]] && ! grep -sq '^State:[[:space:]]*[XZ]' "/proc/$server/status"
}

# Its programs do not notice that it is gone, so they are ended too.
endServer() {
    [[ -z $server ]] || kill -KILL "$server" 2>/dev/null || true
    while [[ -n $server ]] && serverRuns; do sleep 0.01; done
    server=
    VW_PREFIX=$serverPrefix scripts/wine --end
}

finish() {
    endServer
    scripts/wine --end
}

prepare() {
    local file
    prepareFolder
    trap finish EXIT
    rm -rf "$serverPrefix"
    cp -al build/wine-template "$serverPrefix"
    for file in "$serverPrefix"/*.reg; do
        rm "$file"
        cp -p "build/wine-template/${file##*/}" "$file"
    done
    ln -sfn "$folder" "$serverPrefix/dosdevices/k:"
    takeEnvironment
    wineServer=$(dirname "${wineLoader:?}")/wineserver
    [[ -x $wineServer ]] || wineServer=$(command -v wineserver)
}

# backUp [CALL NUMBER]: a backup under strace, killed before the program's call of that name and
# number. Fails when it was killed. Updates firstCall, since how many calls the start of a program
# takes grows a little from one to the next. (With strace's --seccomp-bpf nothing would be killed.)
declare -A firstCall=() lastCall=()
listWasOpened=false

backUp() {
    local code=0 name first last inject=()
    [[ $# -eq 0 ]] || inject=(-e "inject=$1:signal=SIGKILL:when=$2")
    { strace -f -qq -s 300 -o "$folder/trace" -e "trace=$writeCalls" "${inject[@]}" \
        "$wineLoader" "${tested[@]}"; } </dev/null >/dev/null 2>&1 || code=1
    listWasOpened=false
    while read -r name first last; do
        firstCall[$name]=$first lastCall[$name]=$last listWasOpened=true
    done < <(awk -v mark="$listMark" '
        { sub(/\(.*/, "", $2); count[$2]++ }
        !found && index($0, mark) { for (name in count) start[name] = count[name]; found = 1 }
        END { if (found) for (name in start) print name, start[name], count[name] }' "$folder/trace")
    return "$code"
}

# startServer: a server of the other prefix, with its services running, so that what it does from
# now on is done for the backup.
startServer() {
    local try
    for ((try = 0; try < 5; try++)); do
        WINEPREFIX=$serverPrefix "$wineServer" -f -p </dev/null >/dev/null 2>&1 &
        server=$!
        disown "$server"
        WINEPREFIX=$serverPrefix "$wineLoader" cmd /c exit </dev/null >/dev/null 2>&1
        # A program that starts before the server is ready starts another one, and this one ends.
        ! serverRuns || return 0
        endServer
    done
    fail 'the server of the other prefix did not start'
}

# runWatchedServer STRACE_ARGUMENTS...: a backup in the other prefix, its server under strace.
# Fails when the server was killed.
runWatchedServer() {
    local watcher try code=0
    strace -f -qq "$@" -p "$server" </dev/null >/dev/null 2>"$folder/strace" &
    watcher=$!
    for ((try = 0; try < 500; try++)); do
        ! grep -q '^TracerPid:[[:space:]]*[1-9]' "/proc/$server/status" || break
        [[ -d /proc/$watcher ]] || fail "strace: $(cat "$folder/strace")"
        sleep 0.01
    done
    WINEPREFIX=$serverPrefix "$wineLoader" "${tested[@]}" </dev/null >/dev/null 2>&1 || true
    serverRuns || code=1
    endServer
    wait "$watcher" 2>/dev/null || true
    return "$code"
}

# measureServer HISTORY: the calls of the server that change something in the vault, one on a line:
# its name and its number among the calls of this name.
measureServer() {
    look prepare 'K:\world' "$1"
    startServer
    runWatchedServer -s 400 -o "$folder/trace" -e "trace=$serverCalls"
    awk '{ name = $2; sub(/\(.*/, "", name); count[name]++ }
         /Vault\// && !/\) += -/ { print name, count[name] }' "$folder/trace"
}

# changesOfRun: the calls of the last backup that may have changed something on the disk, one on a
# line: name, and number since the list was opened. They name a path in the vault, or write a file.
changesOfRun() {
    awk -v mark="$listMark" '
        { name = file = $2; sub(/\(.*/, "", name); gsub(/^[a-z]+\(|,.*/, "", file); count[name]++ }
        !found && index($0, mark) {
            found = 1; server = file
            for (i in count) start[i] = count[i]
            next
        }
        found && (file != server || name == "writev" && /\/Vault\//) {
            print name, count[name] - start[name]
        }' "$folder/trace"
}

# killPrograms HISTORY COUNT: spreads the points evenly over the changes of a run, with some chance.
# At every fourth point the next run is killed too, at any of its calls.
killPrograms() {
    local i call where
    local -a changes
    look prepare 'K:\world' "$1"
    backUp || fail 'a run under strace did not end'
    mapfile -t changes < <(changesOfRun)
    [[ $listWasOpened == true && ${#changes[@]} -gt 20 ]] || fail 'the calls of a run were not found'
    local writes=$((lastCall[write] - firstCall[write]))
    look prepare 'K:\world' "$1"
    for ((i = 0; i < $2; i++)); do
        call=${changes[(i * 1000 + RANDOM % 1000) * ${#changes[@]} / ($2 * 1000)]}
        killProgram "${call% *}" "${call#* }"
        where=$call
        if ((i % 4 == 3)); then
            call=$((RANDOM % writes + 1))
            killProgram write "$call"
            where+=", then write $call"
        fi
        judge "killed before $where" "$1" "$i" check
    done
}

# killProgram CALL NUMBER: kills a backup before its call of this number.
killProgram() {
    if ! backUp "$1" $((firstCall[$1] + $2)) && [[ $listWasOpened == true ]]; then
        ((killed += 1))
    fi
}

# killServers HISTORY COUNT
killServers() {
    local i call
    local -a calls
    mapfile -t calls < <(measureServer "$1")
    [[ ${#calls[@]} -gt 10 ]] || fail 'the changes of a run were not found'
    look prepare 'K:\world' "$1"
    for ((i = 0; i < $2; i++)); do
        call=${calls[(i * 1000 + RANDOM % 1000) * ${#calls[@]} / ($2 * 1000)]}
        startServer
        runWatchedServer -o /dev/null -e "trace=${call% *}" \
            -e "inject=${call% *}:signal=SIGKILL:when=${call#* }" || ((killed += 1))
        judge "killed before the server's $call" "$1" "$i" check
    done
}

prepare
serverFirst=$((serverPoints / 3))
killServers none "$serverFirst"
serverCompletions=$((serverPoints / 4))
killServers incomplete "$serverCompletions"
killServers full "$((serverPoints - serverFirst - serverCompletions))"
programFirst=$(((points - serverPoints) / 3))
killPrograms none "$programFirst"
completions=$(((points - serverPoints) / 4))
killPrograms incomplete "$completions"
killPrograms full "$((points - serverPoints - programFirst - completions))"

echo "$points points tried, $killed kills (KILL_SEED=${KILL_SEED:-1}), $failures failures"
[[ $failures -eq 0 && $killed -gt $((points / 2)) ]]
