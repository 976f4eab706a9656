#!/usr/bin/env bash
# A real disk that is too small, run after run: every run reports that the disk is full, and with what,
# and the copies that are there stay as they are, however often it is tried. The small item behind
# the large one is backed up all the same. With room on the disk the next run does everything.
#
# And a list on a disk that has no room at all, edited in the window: each save reports that the disk is
# full and leaves the old list, and with room the edits are saved.
#
# Only root can make a small disk; for others this check says so and passes.
#
# VW_BUILD=FOLDER   the build folder (default build/release)
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

checkName=full_disk
source tests/checks/support/crash_scenario.bash
source tests/checks/support/driven_window.bash
readonly disk=$folder/disk home=$folder/home
readonly kept=2 block=4096
runs=0

removeDisk() {
    mountpoint -q "$disk" && umount -l "$disk"
    return 0
}

finish() {
    endWindow
    scripts/wine --end
    removeDisk
}

# change STATE: new bytes and a new date for all sources.
change() {
    local file
    mkdir -p "$home/Large/Sub"
    for file in "$home"/Large/Sub/{a,b}.bin; do
        yes "${file##*/} $1" | head -c 30M >"$file" || true
    done
    echo "$1" >"$home/Large/note.txt"
    echo "$1" >"$home/small.txt"
    find "$home" -type f -exec touch -d "2024-01-0$1 12:00" {} +
}

# same COPY STATE: whether a copy of the large item is whole, with the bytes of this state.
same() {
    local file
    [[ $(<"$disk/Large«000$1»/note.txt") == "$2" ]] || fail "copy $1 is not state $2"
    for file in a b; do
        cmp -s <(yes "$file.bin $2" | head -c 30M) "$disk/Large«000$1»/Sub/$file.bin" ||
            fail "copy $1 is not whole"
    done
}

# backUp CODE: a run that ends with this exit code.
backUp() {
    runs=$((runs + 1))
    run '/B K:\List.vwl'
    [[ $exitCode -eq $1 ]] || fail "run $runs: exit code $exitCode instead of $1: $(<"$folder/reports")"
    [[ -z $(find "$disk" -name '*.vw*-*') ]] || fail "run $runs left working entries"
}

# saveList: edits the list that lies on the disk, which is filled to its last block meanwhile. Then
# there is room for the first file of a save only, not for the one that takes the list's place.
saveList() {
    local edit filler=$disk/filler
    readonly edits=3
    prepareWindow disk/app
    listOf 1 >"$listFile"
    openWindow
    head -c 1G /dev/zero 2>/dev/null >"$filler" || true
    [[ $(df --output=avail "$disk" | tail -n 1) -eq 0 ]] || fail 'the disk is not full'
    for ((edit = 1; edit <= edits; edit++)); do
        ((edit < edits)) || truncate -s -"$block" "$filler"
        tell delete held
        tell error 61
        tell wait ready
        cmp -s "$listFile" <(listOf 1) || fail "edit $edit on a full disk: the old list is lost"
    done
    rm "$filler"
    closeWindow
    cmp -s "$listFile" <(listOf $((edits + 1))) || fail 'with room: the edits are not saved'
    [[ $(ls "$disk/app") == $'FilesList.vwl\nVaultwright.exe' ]] || fail "left: $(ls "$disk/app")"
    rm -r "$disk/app"
}

if [[ $(id -u) -ne 0 ]]; then
    echo 'skipped: only root can mount a small disk'
    exit 0
fi
removeDisk
prepareFolder
trap finish EXIT
mkdir -p "$disk"
if ! mount -t tmpfs -o size=178m tmpfs "$disk" 2>/dev/null; then
    echo 'skipped: this machine mounts no small disk'
    exit 0
fi
# The large item's own files lie in a folder of it: only those directly in it are counted before.
printf '%s\r\n' 'BackupTo: K:\disk' "Backages: $kept" 'K:\home\Large\' 'K:\home\small.txt' \
    >"$folder/List.vwl"

for state in 1 2; do
    change "$state"
    backUp 0
done
for ((state = 3; state <= kept + 4; state++)); do
    change "$state"
    backUp 61
    grep -q '^Error 61 in line ' "$folder/reports" || fail "run $runs: no report of a full disk"
    grep -q 'K:\\home\\Large\\Sub\\' "$folder/reports" || fail "run $runs: no path in the report"
    same 1 2
    same 2 1
    [[ $(<"$disk/small«0001».txt") == "$state" && $(<"$disk/small«0002».txt") == $((state - 1)) ]] ||
        fail "run $runs: the small item was not backed up"
done
mount -o remount,size=400m "$disk"
backUp 0
same 1 $((kept + 4))
same 2 2
[[ $(<"$disk/small«0001».txt") == $((kept + 4)) ]] || fail 'the small item was lost'
[[ $(find "$disk" -mindepth 1 -maxdepth 1 | wc -l) -eq 6 ]] || fail "unexplained: $(ls "$disk")"
saveList
echo "$((kept + 2)) runs on a full disk, $runs in all; $edits saves of a list"
