# shellcheck shell=bash disable=SC2034,SC2154  # scripts/bench reads and sets the variables
# All names below a folder changed to lower case, against a loop of ren at the prompt. Wine's ren does
# not change the case of a name alone, so the loop goes by way of another name, as the program does;
# ren-once, which only gives other names, saves one of the two renamings. The bare renaming makes the
# same two and nothing else.
title="$((folders * 20)) files in $folders folders renamed to lower case"
sides=(lower ren ren-once bare-rename)
comparisons=('lower ren 0.5' 'lower ren-once -' 'lower bare-rename -' 'bare-rename ren -')
tool=$root/build/release/tools/EngineCall.exe

make() {
    local number folder
    for ((number = 1; number <= folders; number++)); do
        folder=$(printf '%s/Tree/FOLDER%04d' "$data" "$number")
        mkdir -p "$folder"
        (cd "$folder" && touch FILE{01..20}.TXT)
    done
    renLoop 'file' >"$data/ren.bat"
    renLoop '' >"$data/ren-once.bat"
}

# renLoop NAME: a batch file that renames everything in the folder of its argument to other names in
# lower case, and then, unless NAME is empty, to NAME with the number.
renLoop() {
    local number
    printf '@echo off\r\ncd /d "%%~1"\r\nfor /d %%%%d in (*) do (\r\n'
    for number in {01..20}; do
        printf 'ren %%%%d\\FILE%s.TXT other%s.txt\r\n' "$number" "$number"
        [[ -z $1 ]] || printf 'ren %%%%d\\other%s.txt %s%s.txt\r\n' "$number" "$1" "$number"
    done
    printf ')\r\nfor /l %%%%n in (1,1,%d) do call :folder %%%%n\r\ngoto :eof\r\n' "$folders"
    printf ':folder\r\nset number=000%%1\r\nren FOLDER%%number:~-4%% others%%number:~-4%%\r\n'
    [[ -z $1 ]] || printf 'ren others%%number:~-4%% folder%%number:~-4%%\r\n'
}

reset() {
    rm -rf "$data/work"
    cp -a "$data/Tree" "$data/work"
    sync
}

commandOf() {
    local work
    work=$(windowsPath "$data/work")
    case $1 in
        bare-rename) argv=("$loader" "$root/build/release/tools/BareRename.exe" "$work") ;;
        lower) argv=("$loader" "$tool" lower "$work") ;;
        *) argv=("$loader" "$cmd" /c "$(windowsPath "$data/$1.bat")" "$work") ;;
    esac
}

check() {
    [[ $(find "$data/work" -name '*[A-Z]*' | wc -l) -eq 0 ]] || fail 'a name was left out'
    [[ $(countFiles "$data/work") -eq $((folders * 20)) ]] || fail 'files are missing'
}
