# shellcheck shell=bash disable=SC2034,SC2154  # scripts/bench reads and sets the variables
# The same runs in the window, with the busy dialog shown and its report kept, against the silent run:
# what the windows cost. In the window the time runs from the command until the report is complete,
# silently from the start of the process to its end.
title="in the window: $((folders * 20)) files copied; $((folders * 100)) unchanged"
sides=(first-window first-silent unchanged-window unchanged-silent)
comparisons=('first-window first-silent 1.15' 'unchanged-window unchanged-silent 1.15')
windowRun=$(dirname "$program")/../tools/WindowRun.exe

make() {
    [[ -f $windowRun ]] || fail 'WindowRun.exe is missing: run scripts/build'
    makeTree "$data/first" "$folders" 20 4096
    makeTree "$data/unchanged" "$folders" 100 64
    mkdir "$data/vault"
    side=unchanged-silent
    reset "$side"
    once "$side"
    # Otherwise the question about the language comes before the window.
    "$loader" reg add "HKCU\\Software\\Tallowmere.Net\\$(basename "$program" .exe)" \
        /v Arabic /d 0 /f >/dev/null
}

# Every first backup gets a new place, as in the row of first backups.
reset() {
    if [[ $1 == first-* ]]; then
        target=$data/$round-$1
        mkdir "$target"
        writeList "$data/list.vwl" "$target" "$data/first"
    else
        writeList "$data/list.vwl" "$data/vault" "$data/unchanged"
    fi
    sync
}

attempts() { [[ $1 == unchanged-* ]] && echo 3 || echo 1; }

commandOf() {
    local run list
    run=$(windowsPath "$program")
    list=$(windowsPath "$data/list.vwl")
    case $1 in
        *-window) argv=("$loader" "$(windowsPath "$windowRun")" "$run" "$list") ;;
        *-silent) argv=("$loader" "$run" /B "$list") ;;
    esac
}

measured() {
    [[ $1 != *-window ]] || read -r took peak < <(tr -d "\r" <"$out")
}

check() {
    if [[ $1 == first-* ]]; then
        sameCount "$data/first" "$(theCopy "$target")"
    else
        theCopy "$data/vault" >/dev/null
    fi
}
