# shellcheck shell=bash disable=SC2034,SC2154  # variables go to and come from the scripts that source it
# Shared by the checks that test a run of the program and look at its world afterwards
# (tests/system/CrashScenario.h). To be sourced from the project's root, with `checkName` set to that of
# the check. The world lies in a folder of the build, which the program sees as drive K:.
#
# With VW_TESTED=console the tested runs are those of vw.exe. The next ones, which complete what
# an test has left, are always made by the program with windows.

build=$(readlink -f "${VW_BUILD:-build/release}")
readonly program='K:\Vaultwright.exe' list='K:\world\List.vwl'
tested=("$program" /B "$list")
if [[ ${VW_TESTED:-} == console ]]; then
    tested=('K:\vw.exe' backup --as-window "$list")
    checkName=console_$checkName
fi
readonly tested
readonly build folder=$build/$checkName
readonly listMark='/world/List.vwl'
readonly mostFailures=3
export VW_PREFIX=$build/prefix/$checkName
failures=0

fail() {
    echo "$checkName: $1" >&2
    exit 1
}

# prepareFolder: the program and the tool that looks, in a prefix that shows them as drive K:.
prepareFolder() {
    rm -rf "$folder"
    mkdir -p "$folder"
    cp "$build/bin/Vaultwright.exe" "$build/tests/kill_point.exe" "$folder/"
    [[ ${VW_TESTED:-} != console ]] || cp "$build/bin/vw.exe" "$folder/"
    scripts/wine --prepare
    ln -sfn "$folder" "$VW_PREFIX/dosdevices/k:"
}

# look ARGUMENTS: the tool that looks at the world, and the run that ends it. It always tells why it
# fails; a failure without a word is that of a busy Wine, which now and then does not start a
# program at all. Then it is asked again.
look() {
    local code try
    for try in 1 2 3; do
        code=0
        scripts/wine 'K:\kill_point.exe' "$@" >"$folder/said" 2>&1 || code=$?
        [[ $code -ne 0 && ! -s $folder/said ]] || break
        echo "$checkName: attempt $try did not start" >&2
    done
    cat "$folder/said"
    return "$code"
}

# run ARGUMENTS [PROGRAM]: a run of the program to its end, its boxes answered. Sets exitCode; what it reports
# of errors is in the file "reports".
run() {
    exitCode=0
    scripts/wine 'K:\kill_point.exe' run 'K:\reports' "${2:-$program}" "$1" || exitCode=$?
}

# What the program runs in when strace starts it; the display may be another one after a while.
takeEnvironment() {
    eval "$(scripts/wine --environment | sed 's/^declare /declare -g /')"
}

# judge WHAT HISTORY NUMBER LOOK...: looks at the world after what was done to it (kill_point LOOK);
# after every third time the sources change before the next run.
judge() {
    local what=$1 history=$2 code=0
    local -a changed=()
    (($3 % 3)) || changed=(changed)
    shift 3
    takeEnvironment
    look "$1" 'K:\world' "$history" "$program" "${@:2}" "${changed[@]}" >"$folder/report" 2>&1 ||
        code=$?
    [[ $code -ne 0 ]] || return 0
    echo "$what (history: $history${changed:+, then changed}), code $code:"
    sed 's/^/    /' "$folder/report"
    cp -a "$folder/world" "$folder/failed$((++failures))"
    [[ $failures -lt $mostFailures ]] || fail "enough failures; their worlds are in $folder"
    look prepare 'K:\world' "$history"
}
