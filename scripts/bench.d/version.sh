# shellcheck shell=bash disable=SC2034,SC2154  # scripts/bench reads and sets the variables
# What starting the console program costs, against the shell of the system.
title='vw --version'
sides=(vw cmd)
comparisons=('vw cmd 1.2')
consoleProgram=$(dirname "$program")/vw.exe

make() { :; }

attempts() { echo 5; }

commandOf() {
    case $1 in
        vw) argv=("$loader" "$consoleProgram" --version) ;;
        cmd) argv=("$loader" "$cmd" /c exit) ;;
    esac
}

check() { [[ $1 != vw ]] || says '^vw [0-9]'; }
