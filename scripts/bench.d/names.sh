# shellcheck shell=bash disable=SC2034,SC2154  # scripts/bench reads and sets the variables
# All names below a folder changed to lower case, against a loop of ren at the prompt. Wine's ren takes
# a name that differs in case only for an existing file, so it is given names that are others too, and
# saves the second renaming that a change of case needs.
title="$((folders * 20)) files in $folders folders renamed to lower case"
sides=(lower ren)
comparisons=('lower ren 0.5')
tool=$root/build/release/tools/EngineCall.exe

make() {
    local number folder
    for ((number = 1; number <= folders; number++)); do
        folder=$(printf '%s/Tree/FOLDER%04d' "$data" "$number")
        mkdir -p "$folder"
        (cd "$folder" && touch FILE{01..20}.TXT)
    done
    {
        printf '@echo off\r\ncd /d "%%~1"\r\n'
        printf 'for /d %%%%d in (*) do (\r\n'
        for number in {01..20}; do printf 'ren %%%%d\\FILE%s.TXT name%s.txt\r\n' "$number" "$number"; done
        printf ')\r\nfor /l %%%%n in (1,1,%d) do call :folder %%%%n\r\ngoto :eof\r\n' "$folders"
        printf ':folder\r\nset number=000%%1\r\n'
        printf 'ren FOLDER%%number:~-4%% names%%number:~-4%%\r\n'
    } >"$data/lower.bat"
}

reset() {
    rm -rf "$data/work"
    cp -a "$data/Tree" "$data/work"
    sync
}

commandOf() {
    case $1 in
        lower) argv=("$loader" "$tool" lower "$(windowsPath "$data/work")") ;;
        ren)
            argv=("$loader" "$cmd" /c "$(windowsPath "$data/lower.bat")" "$(windowsPath "$data/work")")
            ;;
    esac
}

check() {
    [[ $(find "$data/work" -name '*[A-Z]*' -not -name work | wc -l) -eq 0 ]] ||
        fail 'a name was left out'
    [[ $(countFiles "$data/work") -eq $((folders * 20)) ]] || fail 'files are missing'
}
