# shellcheck shell=bash disable=SC2034,SC2154  # scripts/bench reads and sets the variables
# Comparing bytes: vw check --content against diff -r on the same trees, many small files and one
# large one. The native tool needs no Wine between it and the disk; the bare reading does.
title="vw check --content, $((folders * 20)) files of 4 KiB and one of $((folders * 2)) MiB"
sides=(check bare diff)
comparisons=('check bare -' 'bare diff -' 'check diff 1.2')
bareRead=$(dirname "$program")/../tools/BareRead.exe
consoleProgram=$(dirname "$program")/vw.exe

make() {
    makeTree "$data/tree" "$folders" 20 4096
    head -c $((folders * 2 * 1024 * 1024)) /dev/urandom >"$data/tree/large"
    mkdir "$data/vault"
    writeList "$data/list.vwl" "$data/vault" "$data/tree"
    "$loader" "$program" /B "$(windowsPath "$data/list.vwl")" >/dev/null
    copy=$(theCopy "$data/vault")
    sameTree "$data/tree" "$copy"
}

commandOf() {
    case $1 in
        check) argv=("$loader" "$consoleProgram" check --content "$(windowsPath "$data/list.vwl")") ;;
        bare) argv=("$loader" "$bareRead" "$(windowsPath "$data/tree")" "$(windowsPath "$copy")") ;;
        diff) argv=(diff -r "$data/tree" "$copy") ;;
    esac
}

check() {
    case $1 in
        check) says '^1 items checked, 0 findings' ;;
        bare) says "^$((folders * 40 + 2)) files" ;;
    esac
}

# A comparison that had skipped a byte would be fast too: the last one of the last file.
finish() {
    local last
    last=$(find "$copy" -type f | sort | tail -n 1)
    flipLastByte "$last"
    argv=("$loader" "$consoleProgram" check --content "$(windowsPath "$data/list.vwl")")
    ! "${argv[@]}" >"$out" || fail 'a changed byte was not noticed'
    says '^content: '
}
