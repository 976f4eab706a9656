#!/usr/bin/env bash
# The clock is set back or forward, daylight saving time begins and ends, between one run and the
# next: nothing has changed, so no copy is made. Another time zone shows every date anew: that makes
# one copy of each item, and no more.
#
# Only the program's own clock and zone are changed (faketime and TZ), never the machine's.
#
# VW_BUILD=FOLDER   the build folder (default build/release)
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

checkName=time_changes
source tests/checks/support/crash_scenario.bash
readonly home=$folder/home vault=$folder/vault
runs=0

finish() { scripts/wine --end; }

# at ZONE TIME COMMAND...: a command with another zone and, from this time of UTC on, another clock.
at() {
    takeEnvironment
    TZ=$1 FAKETIME_FMT=%s DONT_FAKE_MONOTONIC=1 NO_FAKE_STAT=1 \
        faketime -f "@$(date -u -d "$2" +%s)" \
        "${wineLoader:?}" "${@:3}" </dev/null
}

# backUp ZONE TIME COPIES: a run then; every item has so many copies afterwards.
backUp() {
    local code=0 item count
    runs=$((runs + 1))
    at "$1" "$2" "$program" /B 'K:\List.vwl' >"$folder/output" 2>&1 || code=$?
    [[ $code -eq 0 ]] || fail "$1 $2: exit code $code: $(<"$folder/output")"
    for item in winter summer change Docs Rule; do
        count=$(find "$vault" -maxdepth 1 -name "$item«*" ! -name '*.vwc' | wc -l)
        [[ $count -eq $3 ]] || fail "$1 $2: $count copies of $item instead of $3"
    done
}

# file NAME TIME
file() {
    mkdir -p "$(dirname "$home/$1")"
    echo "$1" >"$home/$1"
    TZ=Europe/Berlin touch -d "$2" "$home/$1"
}

prepareFolder
trap finish EXIT
mkdir -p "$vault"
file winter.txt '2023-01-15 12:00'
file summer.txt '2023-07-15 12:00'
# An hour that comes twice.
file change.txt '2023-10-29 02:30'
file Docs/winter.txt '2023-01-15 12:00'
file Docs/Sub/summer.txt '2023-07-15 12:00'
file Rule/summer.txt '2023-07-15 12:00'
printf '%s\r\n' 'BackupTo: K:\vault' 'Backages: 9' 'K:\home\winter.txt' 'K:\home\summer.txt' \
    'K:\home\change.txt' 'K:\home\Docs\' 'K:\home\Rule\*' >"$folder/List.vwl"

# Without these two, nothing below would prove anything.
[[ $(at Europe/Berlin '1999-03-02 12:00:00' cmd /c 'echo %DATE%') == *1999* ]] ||
    fail 'the clock of a program cannot be changed here'
[[ $(at Europe/Berlin '2024-01-15 12:00:00' cmd /c 'echo %TIME%') != \
$(at Asia/Tokyo '2024-01-15 12:00:00' cmd /c 'echo %TIME%') ]] || fail 'nor its zone'

backUp Europe/Berlin '2024-01-15 12:00:00' 1
backUp Europe/Berlin '2024-07-15 12:00:00' 1
backUp Europe/Berlin '2024-03-31 02:59:58' 1
backUp Europe/Berlin '2024-10-27 02:30:00' 1
backUp Europe/Berlin '1999-12-31 23:59:59' 1
backUp Europe/Berlin '2037-02-03 04:05:06' 1
backUp America/New_York '2024-07-15 12:00:00' 2
backUp America/New_York '2024-12-15 12:00:00' 2
backUp America/New_York '2001-01-01 00:00:00' 2
backUp Europe/Berlin '2024-08-15 12:00:00' 3
backUp Europe/Berlin '2025-01-15 12:00:00' 3
echo "$runs runs at other times"
