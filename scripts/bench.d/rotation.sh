# shellcheck shell=bash disable=SC2034,SC2154  # scripts/bench reads and sets the variables
# A folder copy that takes its place in a full series: the oldest copy goes, the others move up. The
# number of copies of other items in the destination must hardly count.
few=20
many=$((folders * 4))
title="rotation of a folder copy among $many others; $few"
sides=(among-many among-few)
comparisons=('among-many among-few 1.5')

# Every second of the others is a copy 1, with its comment.
makeOthers() {
    head -c $(($2 * 8)) /dev/urandom |
        split -b 16 -a 5 -d --additional-suffix='«0001».txt' - "$1/other"
    head -c $(($2 * 8)) /dev/urandom |
        split -b 16 -a 5 -d --additional-suffix='«0002».txt' - "$1/other"
    head -c $(($2 * 8)) /dev/zero | tr '\0' ' ' |
        split -b 16 -a 5 -d --additional-suffix='«0001».txt.vwc' - "$1/other"
}

make() {
    local name count
    minute=0
    for name in many few; do
        mkdir "$data/vault-$name"
        makeTree "$data/$name" 1 20 4096
        find "$data/$name" -type f -exec touch -d 2023-01-01 {} +
        writeList "$data/$name.vwl" "$data/vault-$name" "$data/$name/folder0001"
        makeOthers "$data/vault-$name" "${!name}"
        side=among-$name
        # As many copies as the list keeps.
        for count in 1 2 3; do
            reset "$side"
            once "$side"
        done
    done
}

# One file is a minute newer than the last time.
reset() {
    minute=$((minute + 1))
    touch -d "@$((1704067200 + minute * 60))" "$data/${1#among-}/folder0001/file01.txt"
    sync
}

commandOf() { argv=("$loader" "$program" /B "$(windowsPath "$data/${1#among-}.vwl")"); }

check() {
    local vault=$data/vault-${1#among-} newest=$data/${1#among-}/folder0001
    says 'Done\.'
    [[ $(find "$vault" -mindepth 1 -maxdepth 1 -type d | wc -l) -eq 3 ]] ||
        fail 'there are not three copies'
    sameTree "$newest" "$vault/folder0001«0001»"
}
