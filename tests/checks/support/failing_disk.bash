# shellcheck shell=bash disable=SC2154  # variables go to and come from the scripts that source it
# Shared by the checks in which calls on the disk fail (fail_call.c). To be sourced behind
# crash_scenario.bash.

# takeDiskCalls MARKS: from now on the programs of the prefix, and its server, can be made to fail at
# a call on a path that holds one of these texts, parted by "|".
takeDiskCalls() {
    mkdir -p "$folder"
    clang -shared -fPIC -O1 -o "$folder.so" tests/checks/support/fail_call.c -ldl
    export LD_PRELOAD=$folder.so VW_FAIL_MARKS=$1
    export VW_FAIL_CONTROL=$folder.control VW_FAIL_LOG=$folder.log
    rm -f "$VW_FAIL_CONTROL"
    # The server has to be one that the calls can be taken from.
    scripts/wine --end
    trap 'scripts/wine --end' EXIT
}
