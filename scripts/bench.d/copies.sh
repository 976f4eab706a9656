# shellcheck shell=bash disable=SC2034,SC2154  # scripts/bench reads and sets the variables
# The copies of many items listed in the restore view (which "/R" opens and closes unseen), against
# listing the folder of the copies. Five times as many must not take more than six times as long.
copies=$((folders * 20))
title="a destination of $copies copies listed; $((copies * 5)); $((copies / 10))"
sides=(browse browse-five browse-tenth dir)
comparisons=('browse dir 1.5' 'browse-five browse 6.0' 'browse browse-tenth -')

comment=$'Backed Files Date Last Modified:01/02/2024-03:04:05+Original Location:C:\\\\windows\r'

# Windows offer drives: the copies of each side take their turn on one of the prefix.
make() {
    local name count
    "$root/scripts/wine" --prepare
    for name in one five tenth; do
        case $name in
            one) count=$copies ;;
            five) count=$((copies * 5)) ;;
            tenth) count=$((copies / 10)) ;;
        esac
        mkdir -p "$data/$name"
        head -c $((count * 16)) /dev/urandom |
            split -b 16 -a 5 -d --additional-suffix='«0001».txt' - "$data/$name/item"
        seq "$count" | sed "s|.*|$comment|" |
            split -l 1 -a 5 -d --additional-suffix='«0001».txt.vwc' - "$data/$name/item"
    done
    mkdir -p "$data/program"
    cp "$program" "$data/program/Vaultwright.exe"
    printf 'BackupTo: R:\\Backup\r\nBackages: 3\r\n' >"$data/program/FilesList.vwl"
    "$root/scripts/wine" reg.exe add 'HKCU\Software\Tallowmere.Net\Vaultwright' /v BackupTo \
        /d 'R:\Backup' /f >/dev/null
}

reset() {
    local name=one
    [[ $1 != *-five ]] || name=five
    [[ $1 != *-tenth ]] || name=tenth
    rm -f "$VW_PREFIX/drive_r/Backup"
    ln -s "$data/$name" "$VW_PREFIX/drive_r/Backup"
}

commandOf() {
    case $1 in
        browse*) argv=("$loader" "$data/program/Vaultwright.exe" /R "C:\\nothing") ;;
        dir) argv=("$loader" "$cmd" /c dir "$(windowsPath "$data/one")") ;;
    esac
}

check() {
    [[ $1 != dir ]] || says "^ *$((copies * 2)) files"
}

finish() {
    rm -f "$VW_PREFIX/drive_r/Backup"
    "$root/scripts/wine" reg.exe delete 'HKCU\Software\Tallowmere.Net\Vaultwright' /f >/dev/null
}
