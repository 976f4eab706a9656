# shellcheck shell=bash disable=SC2034,SC2154  # scripts/bench reads and sets the variables
# One large file, against copying it with what the system brings; dd shows what the disk takes.
mebibytes=$((folders * 1024 / 500))
title="first backup of one file of $mebibytes MiB"
sides=(vaultwright cmd-copy xcopy dd)
comparisons=('vaultwright cmd-copy,xcopy 1.10' 'vaultwright dd -')

make() {
    mkdir "$data/source"
    head -c "${mebibytes}M" /dev/urandom >"$data/source/large.bin"
}

# The copy of the side before makes room: a disk that fills up gets slower.
reset() {
    rm -rf "$data/target"
    mkdir "$data/target"
    writeList "$data/list.vwl" "$data/target"
    printf '%s\r\n' "$(windowsPath "$data/source/large.bin")" >>"$data/list.vwl"
    sync
}

# Where the memory for a copy of this size comes from is luck, for every side.
attempts() { echo 3; }

commandOf() {
    local from to
    from=$(windowsPath "$data/source/large.bin")
    to=$(windowsPath "$data/target")
    case $1 in
        vaultwright) argv=("$loader" "$program" /B "$(windowsPath "$data/list.vwl")") ;;
        cmd-copy) argv=("$loader" "$cmd" /c copy "$from" "$to\\large.bin") ;;
        xcopy) argv=("$loader" "$xcopy" "$from" "$to\\") ;;
        dd) argv=(dd "if=$data/source/large.bin" "of=$data/target/large.bin" bs=1M status=none) ;;
    esac
}

check() {
    local copy=$data/target/large.bin
    [[ $1 != vaultwright ]] || copy='*0001*.bin'
    [[ $(find "$data/target" -name "${copy##*/}" -size +$((mebibytes - 1))M | wc -l) -eq 1 ]] ||
        fail 'there is no copy'
    [[ $round -gt 0 ]] || sameFile "$data/source/large.bin" "$data/target/"*.bin
}
