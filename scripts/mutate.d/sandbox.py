"""Keeps mutants from doing harm: a mutant may delete whatever it can reach.

They run with their own process numbers, so that none outlives the script, and with every disk
read-only but build/mutate and an empty /tmp.
"""
import os
import sys

INSIDE = 'VW_MUTATE_INSIDE'

SETUP = r'''
set -eu
home=$1
shift
mount --make-rprivate /
mount --bind "$home" "$home"
mount -t tmpfs tmpfs /tmp
findmnt -rno TARGET,FSTYPE | tac | while read -r target type; do
    case $target in
        /proc | /proc/* | /sys | /sys/* | /dev | /dev/* | /tmp | "$home") ;;
        *) mount -o remount,bind,ro "$target" ;;
    esac
done
if (: >/mutate-probe) 2>/dev/null || (: >"$home/../mutate-probe") 2>/dev/null; then
    echo "scripts/mutate: the disk could not be made read-only" >&2
    exit 1
fi
"$@"
exit "$?"
'''


def isInside():
    return os.environ.get(INSIDE) == '1'


def enter(home, arguments):
    """Starts this script again inside; gives no answer. `home` is the folder that stays writable."""
    if str(home).startswith('/tmp/'):
        sys.exit('scripts/mutate: not from a checkout in /tmp, which the mutants get empty')
    os.environ[INSIDE] = '1'
    user = [] if os.geteuid() == 0 else ['--map-root-user']
    os.execvp('unshare', ['unshare', *user, '--mount', '--pid', '--fork', '--kill-child',
                          '--mount-proc', 'bash', '-c', SETUP, 'mutate', str(home),
                          sys.executable, *arguments])
