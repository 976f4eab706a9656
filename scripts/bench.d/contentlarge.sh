# shellcheck shell=bash disable=SC2034,SC2154  # scripts/bench reads and sets the variables
# Comparing the bytes of one large file: vw check --content against cmp.
title="vw check --content, one file of $((folders * 2)) MiB"
sides=(check cmp)
comparisons=('check cmp 1.2')
consoleProgram=$(dirname "$program")/vw.exe

make() {
    mkdir "$data/tree" "$data/vault"
    head -c $((folders * 2 * 1024 * 1024)) /dev/urandom >"$data/tree/large"
    writeList "$data/list.vwl" "$data/vault" "$data/tree"
    "$loader" "$program" /B "$(windowsPath "$data/list.vwl")" >/dev/null
    copy=$(theCopy "$data/vault")
    sameTree "$data/tree" "$copy"
}

attempts() { echo 3; }

commandOf() {
    case $1 in
        check) argv=("$loader" "$consoleProgram" check --content "$(windowsPath "$data/list.vwl")") ;;
        cmp) argv=(cmp "$data/tree/large" "$copy/large") ;;
    esac
}

check() {
    [[ $1 != check ]] || says '^1 items checked, 0 findings'
}

# A comparison that had skipped the last byte would be fast too.
finish() {
    flipLastByte "$copy/large"
    argv=("$loader" "$consoleProgram" check --content "$(windowsPath "$data/list.vwl")")
    ! "${argv[@]}" >"$out" || fail 'a changed byte was not noticed'
    says '^content: '
}
