# shellcheck shell=bash disable=SC2034,SC2154  # scripts/bench reads and sets the variables
# A folder copy put back to a new place, and over itself, against xcopy doing the same. A restored
# file is written beside its place and renamed; xcopy writes into the place itself. The bare restore
# writes beside the place and renames, and nothing else.
title="a copy of $((folders * 20)) files of 4 KiB in $folders folders restored"
sides=(new over bare-over xcopy-new xcopy-over)
comparisons=('new xcopy-new 0.9' 'over xcopy-over 1.1' 'over bare-over -' 'bare-over xcopy-over -')
tool=$root/build/release/tools/EngineCall.exe

make() {
    makeTree "$data/tree" "$folders" 20 4096
    mkdir "$data/vault" "$data/over" "$data/bare-over" "$data/xcopy-over"
    writeList "$data/list.vwl" "$data/vault" "$data/tree"
    "$loader" "$program" /B "$(windowsPath "$data/list.vwl")" >/dev/null
    copy=$(theCopy "$data/vault")
    sameTree "$data/tree" "$copy"
    cp -a "$data/tree" "$data/over/tree"
    cp -a "$data/tree" "$data/bare-over/tree"
    cp -a "$data/tree" "$data/xcopy-over/tree"
}

# Every round restores to a place that was never there: where files were deleted shortly before, the
# disk takes longer to make others.
reset() {
    target=$data/$1
    if [[ $1 == *new ]]; then
        target+=-$round
        mkdir "$target"
    fi
    sync
}

commandOf() {
    local place
    place=$(windowsPath "$target")
    case $1 in
        bare-over)
            argv=("$loader" "$root/build/release/tools/BareRestore.exe" "$(windowsPath "$copy")"
                "$place\\tree")
            ;;
        xcopy*) argv=("$loader" "$xcopy" "$(windowsPath "$copy")" "$place\\tree" /Y /E /I /Q) ;;
        *) argv=("$loader" "$tool" restore "$(windowsPath "$copy")" "$place") ;;
    esac
}

check() {
    sameCount "$copy" "$target/tree"
    [[ $round -gt 0 ]] || sameTree "$copy" "$target/tree"
}
