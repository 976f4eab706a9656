# shellcheck shell=bash disable=SC2034,SC2154  # variables go to and come from the scripts that source it
# Shared by the checks that work the main window of the program with tests/windows/tools/SavePoint.cpp.
# To be sourced behind crash_scenario.bash. The program stands in an "app" folder, with its default list.

readonly items=12
process=

# prepareWindow APP: the program in this folder of drive K:, items for its list, and the hand that
# works its window. Sets window and listFile.
prepareWindow() {
    local i
    readonly window="K:\\$1\\Vaultwright.exe" listFile=$folder/$1/FilesList.vwl
    mkdir -p "$folder/$1" "$folder/home"
    mv "$folder/Vaultwright.exe" "$folder/$1/"
    cp "$build/tests/save_point.exe" "$folder/"
    for ((i = 1; i <= items; i++)); do echo "$i" >"$folder/home/file$i.txt"; done
    scripts/wine reg.exe add 'HKCU\Software\Tallowmere.Net\Vaultwright' /v Arabic /d 0 /f >/dev/null
    takeEnvironment
    coproc hand {
        exec "$wineLoader" 'K:\save_point.exe' "K:\\$1\\FilesList.vwl" 2>/dev/null
    }
}

# endWindow: ends what prepareWindow and openWindow have started.
endWindow() {
    [[ -z ${hand_PID:-} ]] || kill "$hand_PID" 2>/dev/null || true
    [[ -z $process ]] || kill -KILL "$process" 2>/dev/null || true
}

# tell COMMAND ANSWER...: one of these answers has to come. Sets answer.
tell() {
    local command=$1
    shift
    echo "$command" >&"${hand[1]}"
    read -r -t 60 answer <&"${hand[0]}" || fail "no answer to \"$command\""
    answer=${answer%$'\r'}
    [[ " $* " == *" $answer "* ]] || fail "\"$command\" was answered with \"$answer\""
}

# listOf FIRST [GONE]: a list of the items from this one on.
listOf() {
    local i
    printf '%s\r\n' 'BackupTo: K:\Vault' 'Backages: 3'
    [[ $# -eq 1 ]] || printf '%s\r\n' 'K:\home\gone.txt'
    for ((i = $1; i <= items; i++)); do printf 'K:\\home\\file%s.txt\r\n' "$i"; done
}

openWindow() {
    "$wineLoader" "$window" </dev/null >/dev/null 2>&1 &
    process=$!
    disown "$process"
    tell wait ready
}

closeWindow() {
    tell close gone
    process=
}
