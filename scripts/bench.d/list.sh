# shellcheck shell=bash disable=SC2034,SC2154  # scripts/bench reads and sets the variables
# A list of many file items: loaded into the window (which "/S" opens and closes unseen), and backed
# up with nothing changed; against listing the folder of those files. A list of a fifth as many shows
# whether the time grows with the number of items or with its square.
items=$((folders * 20))
title="a list of $items file items, loaded; unchanged run of it"
sides=(load load-fifth run run-fifth dir)
comparisons=('load dir 3.0' 'run dir 2.5' 'load load-fifth 6.0' 'run run-fifth 6.0')

# listItems FOLDER NAME: a list of all files of $data/NAME, as the default list of a program's copy.
listItems() {
    mkdir -p "$data/program-$1"
    cp "$program" "$data/program-$1/Vaultwright.exe"
    {
        printf 'BackupTo: %s\r\nBackages: 3\r\n' "$(windowsPath "$data/vault-$1")"
        find "$data/$1" -type f | sort | sed 's|/|\\|g; s|^|Z:|; s|$|\r|'
    } >"$data/program-$1/FilesList.vwl"
}

make() {
    local name
    makeFlat "$data/all" "$items"
    makeFlat "$data/fifth" $((items / 5))
    for name in all fifth; do
        mkdir "$data/vault-$name"
        listItems "$name"
    done
    once run
    once run-fifth
}

# makeFlat FOLDER FILES: files in one folder.
makeFlat() {
    mkdir -p "$1"
    head -c $(($2 * 64)) /dev/urandom |
        split -b 64 -a 5 -d --additional-suffix=.txt - "$1/item"
}

commandOf() {
    local folder=all
    [[ $1 != *-fifth ]] || folder=fifth
    case $1 in
        load*) argv=("$loader" "$data/program-$folder/Vaultwright.exe" /S) ;;
        run*) argv=("$loader" "$data/program-$folder/Vaultwright.exe" /B) ;;
        dir) argv=("$loader" "$cmd" /c dir "$(windowsPath "$data/all")") ;;
    esac
}

check() {
    case $1 in
        run)
            [[ $round == make || $(grep -c 'No change since last backup' "$out") -eq $items ]] ||
                fail 'an item was left out'
            ;;
        dir) says "^ *$items files" ;;
    esac
}
