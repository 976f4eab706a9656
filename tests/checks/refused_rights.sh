#!/usr/bin/env bash
# Backups of a user who may not read everything, run after run: what is refused is reported with its
# path, everything else is backed up, and no copy is lost, also when the destination takes nothing.
#
# Root may read everything, so the runs are those of a user made for it, in a Wine prefix of its own.
# Who is not root cannot become another user: then this check says so and passes.
#
# VW_BUILD=FOLDER   the build folder (default build/release)
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

readonly user=61234 kept=2
build=$(readlink -f "${VW_BUILD:-build/release}")
runs=0

if [[ $(id -u) -ne 0 ]]; then
    echo 'skipped: only root can run as another user'
    exit 0
fi

export VW_PREFIX=$build/prefix/refused_rights
scripts/wine --prepare
eval "$(scripts/wine --environment | sed 's/^declare /declare -g /')"
wineServer=$(dirname "${wineLoader:?}")/wineserver
[[ -x $wineServer ]] || wineServer=$(command -v wineserver)

# Where every user may go, whatever the rights of this checkout are.
folder=$(mktemp -d)
readonly folder home=$folder/home vault=$folder/vault
asUser() {
    setpriv --reuid "$user" --regid "$user" --clear-groups \
        env HOME="$folder" TMPDIR="$folder" WINEPREFIX="$folder/prefix" "$@"
}

fail() {
    echo "refused_rights: $1" >&2
    exit 1
}

finish() {
    asUser "$wineServer" -k || true
    asUser "$wineServer" -w || true
    scripts/wine --end
    rm -rf "$folder"
}
trap finish EXIT

cp -r build/wine-template "$folder/prefix"
ln -sfn "$folder" "$folder/prefix/dosdevices/k:"
cp "$build/bin/Vaultwright.exe" "$build/tests/kill_point.exe" "$folder/"
mkdir -p "$home/Docs" "$home/Closed" "$vault"
printf '%s\r\n' 'BackupTo: K:\vault' "Backages: $kept" 'K:\home\secret.txt' 'K:\home\Closed\' \
    'K:\home\Docs\' 'K:\home\open.txt' >"$folder/List.vwl"

# change STATE: new bytes and a new date for all sources.
change() {
    local file
    for file in "$home"/{secret.txt,open.txt,Docs/a.txt,Docs/secret.txt,Closed/c.txt}; do
        echo "$1" >"$file"
    done
    find "$home" -type f -exec touch -d "2024-01-0$1 12:00" {} +
}

# rights MODE: what all others may do with the files and the folder that are not for everybody.
rights() {
    chmod "o=$1" "$home/secret.txt" "$home/Docs/secret.txt" "$home/Closed"
}

# backUp: a run; sets exitCode and leaves its reports of errors in "reports".
backUp() {
    exitCode=0
    runs=$((runs + 1))
    asUser "$wineLoader" 'K:\kill_point.exe' run 'K:\reports' 'K:\Vaultwright.exe' \
        '/B K:\List.vwl' </dev/null >/dev/null 2>&1 || exitCode=$?
}

# told PATH: the last run told that this was refused.
told() {
    grep -qF "$1" "$folder/reports" || fail "run $runs does not name $1: $(<"$folder/reports")"
}

# holds COPY STATE
holds() {
    [[ $(cat "$vault/$1" 2>/dev/null) == "$2" ]] || fail "run $runs: $1 is not state $2"
}

chown -R "$user:$user" "$folder"
chown -R root:root "$home"
asUser "$wineServer" -p60
for state in 1 2; do
    change "$state"
    rights rX
    backUp
    [[ $exitCode -eq 0 ]] || fail "run $runs: exit code $exitCode: $(<"$folder/reports")"
done
for ((state = 3; state <= kept + 4; state++)); do
    change "$state"
    rights ''
    backUp
    [[ $exitCode -eq 70 ]] || fail "run $runs: exit code $exitCode: $(<"$folder/reports")"
    told 'K:\home\secret.txt'
    told 'K:\home\Docs\secret.txt'
    told 'K:\home\Closed'
    holds 'secret«0001».txt' 2
    holds 'secret«0002».txt' 1
    holds 'Closed«0001»/c.txt' 2
    holds 'Closed«0002»/c.txt' 1
    holds 'open«0001».txt' "$state"
    holds 'Docs«0001»/a.txt' "$state"
done

# A destination that takes nothing.
before=$(find "$vault" -type f -exec md5sum {} + | sort)
change 7
rights rX
chmod 555 "$vault"
for ((i = 0; i < kept + 2; i++)); do
    backUp
    [[ $exitCode -ne 0 ]] || fail "run $runs: exit code 0"
    told 'K:\home\secret.txt'
    told 'K:\home\open.txt'
    [[ $(find "$vault" -type f -exec md5sum {} + | sort) == "$before" ]] ||
        fail "run $runs changed the copies"
done
chmod 755 "$vault"
backUp
[[ $exitCode -eq 0 ]] || fail "run $runs: exit code $exitCode: $(<"$folder/reports")"
holds 'secret«0001».txt' 7
holds 'secret«0002».txt' 2
holds 'open«0002».txt' "$((kept + 4))"
echo "$runs runs without rights"
