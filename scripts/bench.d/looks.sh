# shellcheck shell=bash disable=SC2034,SC2154  # scripts/bench reads and sets the variables
# What looks and copies nothing, against an unchanged run of the same tree: vw preview, vw check and
# an unchanged vw backup.
title="vw preview and vw check, $((folders * 100)) unchanged files in $folders folders"
sides=(preview check vw vaultwright)
comparisons=('preview vaultwright 1.2' 'check vaultwright 2.2' 'vw vaultwright 1.05')
consoleProgram=$(dirname "$program")/vw.exe

make() {
    makeTree "$data/tree" "$folders" 100 64
    mkdir "$data/vault"
    writeList "$data/list.vwl" "$data/vault" "$data/tree"
    once vaultwright
    sameTree "$data/tree" "$(theCopy "$data/vault")"
}

commandOf() {
    local list
    list=$(windowsPath "$data/list.vwl")
    case $1 in
        preview | check) argv=("$loader" "$consoleProgram" "$1" "$list") ;;
        vw) argv=("$loader" "$consoleProgram" backup "$list") ;;
        vaultwright) argv=("$loader" "$program" /B "$list") ;;
    esac
}

check() {
    case $1 in
        preview | vw) says '^unchanged: ' ;;
        check) says '^1 items checked, 0 findings' ;;
    esac
}

# A look that had missed a file would be fast too.
finish() {
    local last
    last=$(find "$data/tree" -type f | sort | tail -n 1)
    echo changed >"$last"
    touch -d '1 minute' "$last"
    once preview
    says '^new copy: '
    once check
    says '^due: '
}
