# shellcheck shell=bash disable=SC2034,SC2154  # scripts/bench reads and sets the variables
# A run that finds nothing changed, against listing the same tree.
title="unchanged run, $((folders * 100)) small files in $folders folders"
sides=(vaultwright walk dir xcopy-d rsync cp-u)
comparisons=('vaultwright walk -' 'walk cp-u -' 'vaultwright dir 0.20' 'vaultwright xcopy-d -' 'vaultwright rsync -' 'vaultwright cp-u 1.5')
bareWalk=$(dirname "$program")/../tools/BareWalk.exe

make() {
    local firstCopy
    makeTree "$data/tree" "$folders" 100 64
    mkdir "$data/vault" "$data/copy"
    writeList "$data/list.vwl" "$data/vault" "$data/tree"
    cp -a "$data/tree" "$data/copy/cp-u"
    cp -a "$data/tree" "$data/copy/rsync"
    cp -a "$data/tree" "$data/copy/xcopy"
    once vaultwright
    firstCopy=$(theCopy "$data/vault")
    sameTree "$data/tree" "$firstCopy"
}

commandOf() {
    case $1 in
        vaultwright) argv=("$loader" "$program" /B "$(windowsPath "$data/list.vwl")") ;;
        walk) argv=("$loader" "$bareWalk" "$(windowsPath "$data/tree")") ;;
        dir) argv=("$loader" "$cmd" /c dir /s "$(windowsPath "$data/tree")") ;;
        xcopy-d)
            argv=("$loader" "$xcopy" /D /E /I /Y "$(windowsPath "$data/tree")"
                "$(windowsPath "$data/copy/xcopy")")
            ;;
        rsync) argv=(rsync -a "$data/tree/" "$data/copy/rsync/") ;;
        cp-u) argv=(cp -au "$data/tree/." "$data/copy/cp-u/") ;;
    esac
}

check() {
    case $1 in
        vaultwright)
            says 'No change since last backup'
            theCopy "$data/vault" >/dev/null
            ;;
        xcopy-d) says '^0 file' ;;
        dir | walk) says "^ *$((folders * 100)) files" ;;
    esac
}

# A run that had not looked at every file would be fast too: the last file has to be noticed.
finish() {
    local last
    last=$(find "$data/tree" -type f | sort | tail -n 1)
    echo changed >"$last"
    touch -d '1 minute' "$last"
    once vaultwright
    says 'Done\.'
    [[ $(find "$data/vault" -mindepth 1 -maxdepth 1 -type d | wc -l) -eq 2 ]] ||
        fail 'a changed file was not noticed'
}
