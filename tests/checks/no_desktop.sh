#!/usr/bin/env bash
# A silent run on a machine where no window can be made, as in a session that nobody is logged on to:
# it backs up all the same, and its exit codes stay what they are. Only what needs the main window
# fails, in an orderly way.
#
# VW_BUILD=FOLDER   the build folder (default build/release)
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

build=$(readlink -f "${VW_BUILD:-build/release}")
folder=$build/no_desktop
export VW_PREFIX=$build/prefix/no_desktop
readonly build folder files=5000

fail() {
    echo "no_desktop: $1" >&2
    tail -n 5 "$folder/said" >&2
    exit 1
}

# ends CODE ARGUMENTS...: a start of the program; exit codes arrive here modulo 256.
ends() {
    local code=0 wanted=$1
    shift
    # shellcheck disable=SC2154  # set by scripts/wine --environment
    "$wineLoader" "$build/bin/Vaultwright.exe" "$@" >"$folder/said" 2>&1 || code=$?
    [[ $code -eq $((wanted % 256)) ]] || fail "$* ended with $code instead of $wanted"
}

rm -rf "$folder"
mkdir -p "$folder/source" "$folder/vault"
# So many that the run lasts until the icon is due.
for ((number = 0; number < files; number += 100)); do
    mkdir "$folder/source/$number"
    seq 100 | split -l 1 -a 3 -d --additional-suffix=.txt - "$folder/source/$number/file"
done
readonly windowsFolder=Z:${folder//\//\\}
printf 'BackupTo: %s\r\n%s\r\n' "$windowsFolder\\vault" "$windowsFolder\\source\\" >"$folder/list.vwl"

scripts/wine --prepare
trap 'scripts/wine --end' EXIT
eval "$(scripts/wine --environment)"
export DISPLAY=:65000

ends 0 /B "$windowsFolder\\list.vwl"
[[ $(find "$folder/vault" -name 'file*.txt' | wc -l) -eq $files ]] || fail 'the copy is not whole'
! grep -q 'Error' "$folder/said" || fail 'an error was told'
ends 4008 /B "$windowsFolder\\missing.vwl"
grep -q 'Path not found' "$folder/said" || fail 'a missing list was not told'
ends 75 /R "$windowsFolder\\source"
grep -q 'Error 75' "$folder/said" || fail 'a window that cannot be made was not told'
