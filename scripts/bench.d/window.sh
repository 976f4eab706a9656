# shellcheck shell=bash disable=SC2034,SC2154  # scripts/bench reads and sets the variables
# From the start to the painted main window, with a list of twenty items, against the system's editor
# of texts, which has next to nothing to show, and a bare window with the same controls behind a bare
# opening screen. All are ended as soon as their window is there.
title='start to the painted window, 20 items'
sides=(vaultwright bare notepad none)
comparisons=('vaultwright notepad 1.6' 'vaultwright bare -' 'bare notepad -' 'vaultwright none -')
untilShown=$(dirname "$program")/../tools/UntilShown.exe
readonly notepad='C:\windows\notepad.exe'

make() {
    local number
    [[ -f $untilShown ]] || fail 'UntilShown.exe is missing: run scripts/build'
    mkdir "$data/vault" "$data/files"
    for ((number = 1; number <= 20; number++)); do echo "$number" >"$data/files/$number.txt"; done
    {
        printf 'BackupTo: %s\r\n' "$(windowsPath "$data/vault")"
        for ((number = 1; number <= 20; number++)); do
            printf '%s\r\n' "$(windowsPath "$data/files/$number.txt")"
        done
    } >"$data/list.vwl"
    # Otherwise the question about the language comes before the window.
    "$loader" reg add "HKCU\\Software\\Tallowmere.Net\\$(basename "$program" .exe)" \
        /v Arabic /d 0 /f >/dev/null
}

attempts() { echo 3; }

commandOf() {
    local -a tool=("$loader" "$(windowsPath "$untilShown")")
    case $1 in
        vaultwright)
            argv=("${tool[@]}" frmMainEn "$(windowsPath "$program")" "$(windowsPath "$data/list.vwl")")
            ;;
        bare) argv=("${tool[@]}" BareWindow "$(windowsPath "$(dirname "$untilShown")/BareWindow.exe")") ;;
        notepad) argv=("${tool[@]}" Notepad "$notepad" "$(windowsPath "$data/files/1.txt")") ;;
        # What starting a process costs that shows nothing.
        none) argv=("$loader" "$cmd" /c exit) ;;
    esac
}

check() { :; }
