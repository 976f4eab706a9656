# shellcheck shell=bash disable=SC2034,SC2154  # scripts/bench reads and sets the variables
# vw backup against the silent run of the window program: a first backup of small files.
title="vw backup, first run, $((folders * 20)) files of 4 KiB in $folders folders"
sides=(vw vaultwright)
comparisons=('vw vaultwright 1.05')
consoleProgram=$(dirname "$program")/vw.exe

make() { makeTree "$data/tree" "$folders" 20 4096; }

reset() {
    freshTarget "$data/$round-$1" "$1"
    sync
}

commandOf() {
    local list
    list=$(windowsPath "$data/list.vwl")
    case $1 in
        vw) argv=("$loader" "$consoleProgram" backup "$list") ;;
        vaultwright) argv=("$loader" "$program" /B "$list") ;;
    esac
}

check() {
    local copy
    copy=$(theCopy "$target")
    sameCount "$data/tree" "$copy"
    [[ $round -gt 0 ]] || sameTree "$data/tree" "$copy"
}
