# shellcheck shell=bash disable=SC2034,SC2154  # scripts/bench reads and sets the variables
# A folder copy deleted, against rd.
title="a copy of $((folders * 20)) files in $folders folders deleted"
sides=(delete rd)
comparisons=('delete rd 1.0')
tool=$root/build/release/tools/EngineCall.exe

make() {
    makeTree "$data/tree" "$folders" 20 64
}

reset() {
    mkdir -p "$data/vault"
    cp -a "$data/tree" "$data/vault/tree«0001»"
    sync
}

commandOf() {
    local copy
    copy=$(windowsPath "$data/vault/tree«0001»")
    case $1 in
        delete) argv=("$loader" "$tool" delete "$copy") ;;
        rd) argv=("$loader" "$cmd" /c rd /s /q "$copy") ;;
    esac
}

check() { [[ ! -e $data/vault/tree«0001» ]] || fail 'the copy is still there'; }
