#!/usr/bin/env bash
# The task that the help offers: the system's scheduler takes it and keeps the settings that make a
# backup happen: it starts on battery, makes up a missed start, never runs twice and comes to an end.
#
# VW_BUILD=FOLDER   the build folder (default build/release)
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

build=$(readlink -f "${VW_BUILD:-build/release}")
export VW_PREFIX=$build/prefix/scheduled_task
readonly task=Help/backup-task.xml name=vwcheck
readonly kept=$VW_PREFIX/drive_c/windows/system32/tasks/$name

fail() {
    echo "scheduled_task: $1" >&2
    exit 1
}

# create FILE: as the help describes.
create() { scripts/wine schtasks /Create /TN "$name" /XML "Z:${1//\//\\}" >/dev/null 2>&1; }

trap 'scripts/wine --end' EXIT
scripts/wine --prepare
create "$PWD/$task" || fail "the scheduler refuses $task"
[[ -f $kept ]] || fail 'the scheduler keeps no task'
for setting in '<DisallowStartIfOnBatteries>false<' '<StopIfGoingOnBatteries>false<' \
    '<StartWhenAvailable>true<' '<MultipleInstancesPolicy>IgnoreNew<' \
    '<ExecutionTimeLimit>PT12H<' '<Enabled>true<'; do
    grep -qF "$setting" "$task" || fail "the file lacks $setting"
    grep -qF "$setting" "$kept" || fail "the scheduler does not keep $setting"
done
grep -qF '<Command>%LOCALAPPDATA%\Programs\Vaultwright\Vaultwright.exe<' "$task" || fail 'the command'
grep -qF '<Arguments>/B<' "$task" || fail 'the arguments'

scripts/wine schtasks /Delete /TN "$name" /F >/dev/null 2>&1
[[ ! -f $kept ]] || fail 'the task was not deleted'
# The scheduler reads what it is given: a damaged file is refused.
damaged=$build/prefix/damaged-task.xml
sed 's|</Settings>||' "$task" >"$damaged"
! create "$damaged" || fail 'a damaged file is taken'
rm "$damaged"
