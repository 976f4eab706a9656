# shellcheck shell=bash disable=SC2034,SC2154  # scripts/bench reads and sets the variables
# Some hundred files of photographs' size, against copying the folder with what the system brings.
files=$((folders * 200 / 500))
title="first backup of $files files of 5 MiB"
sides=(vaultwright cmd-copy xcopy cp)
comparisons=('vaultwright cmd-copy,xcopy 1.10' 'vaultwright cp -')

make() {
    mkdir "$data/tree"
    head -c "$((files * 5))M" /dev/urandom |
        split -b 5M -a 4 -d --additional-suffix=.jpg - "$data/tree/photo"
}

# The copy of the side before makes room: a disk that fills up gets slower.
reset() {
    freshTarget "$data/target" "$1"
    sync
}

# Where the memory for a copy of this size comes from is luck, for every side.
attempts() { echo 3; }

commandOf() {
    local from to
    from=$(windowsPath "$data/tree")
    to=$(windowsPath "$target")
    case $1 in
        vaultwright) argv=("$loader" "$program" /B "$(windowsPath "$data/list.vwl")") ;;
        cmd-copy) argv=("$loader" "$cmd" /c copy "$from\\*" "$to\\") ;;
        xcopy) argv=("$loader" "$xcopy" /E /I "$from" "$to") ;;
        cp) argv=(cp -a "$data/tree/." "$target/") ;;
    esac
}

check() {
    local copy=$target
    [[ $1 != vaultwright ]] || copy=$(theCopy "$target")
    sameCount "$data/tree" "$copy"
    [[ $round -gt 0 ]] || sameTree "$data/tree" "$copy"
}
