# shellcheck shell=bash disable=SC2034,SC2154  # scripts/bench reads and sets the variables
# A silent start that has nothing to do, against a process that ends at once.
title='silent start, empty list'
sides=(vaultwright cmd)
comparisons=('vaultwright cmd 1.3')

make() {
    mkdir "$data/vault"
    writeList "$data/list.vwl" "$data/vault"
}

commandOf() {
    case $1 in
        vaultwright) argv=("$loader" "$program" /B "$(windowsPath "$data/list.vwl")") ;;
        cmd) argv=("$loader" "$cmd" /c exit) ;;
    esac
}

check() { :; }
