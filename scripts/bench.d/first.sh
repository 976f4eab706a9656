# shellcheck shell=bash disable=SC2034,SC2154  # scripts/bench reads and sets the variables
# The first backup of many small files, against copying the same tree into an empty folder. Our run
# reports each file on its standard output, as xcopy does without /Q.
#
# Every run gets a new place, and nothing is deleted before the last round: for some minutes ext4
# keeps the inodes of deleted files from being used again and steps over each of them whenever a file
# is made. After the removal of some ten thousand files that search takes most of the time.
title="first backup, $((folders * 20)) files of 4 KiB in $folders folders"
sides=(vaultwright xcopy xcopy-q cp rsync)
comparisons=('vaultwright xcopy 0.95' 'vaultwright xcopy-q 0.95' 'vaultwright cp -' 'vaultwright rsync -')

# Native programs that keep versions, into a fresh store of theirs; with their defaults, but without
# a key, since a copy of ours has none either (restic cannot do without).
for peer in restic borg; do
    if command -v "$peer" >/dev/null; then
        sides+=("$peer")
        comparisons+=("vaultwright $peer -")
    else
        echo "scripts/bench: $peer is left out (Debian package ${peer/%borg/borgbackup})" >&2
    fi
done
export RESTIC_PASSWORD=bench BORG_BASE_DIR=$data/borg RESTIC_CACHE_DIR=$data/restic-cache

make() {
    makeTree "$data/tree" "$folders" 20 4096
}

reset() {
    freshTarget "$data/$round-$1" "$1"
    case $1 in
        restic) restic init --quiet --repo "$target" >&2 ;;
        borg) borg init --encryption none "$target" >&2 ;;
    esac
    sync
}

commandOf() {
    local from to
    from=$(windowsPath "$data/tree")
    to=$(windowsPath "$target")
    case $1 in
        vaultwright) argv=("$loader" "$program" /B "$(windowsPath "$data/list.vwl")") ;;
        xcopy) argv=("$loader" "$xcopy" /E /I "$from" "$to") ;;
        xcopy-q) argv=("$loader" "$xcopy" /E /I /Q "$from" "$to") ;;
        cp) argv=(cp -a "$data/tree/." "$target/") ;;
        rsync) argv=(rsync -a "$data/tree/" "$target/") ;;
        restic) argv=(restic backup --quiet --repo "$target" "$data/tree") ;;
        borg) argv=(borg create "$target::copy" "$data/tree") ;;
    esac
}

check() {
    local copy=$target
    case $1 in
        vaultwright)
            says 'Done\.'
            copy=$(theCopy "$target")
            ;;
        restic)
            [[ $(restic ls --repo "$target" latest | grep -c '\.txt$') -eq $((folders * 20)) ]] ||
                fail 'files are missing'
            return
            ;;
        borg)
            [[ $(borg list --short "$target::copy" | grep -c '\.txt$') -eq $((folders * 20)) ]] ||
                fail 'files are missing'
            return
            ;;
        xcopy*) says "^$((folders * 20)) file" ;;
    esac
    sameCount "$data/tree" "$copy"
    [[ $round -gt 0 ]] || sameTree "$data/tree" "$copy"
}
