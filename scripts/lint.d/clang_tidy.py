#!/usr/bin/env python3
"""clang_tidy.py BUILD_FOLDER FILE...: runs clang-tidy on the files that have changed since it last
found nothing in them. A file counts as changed when it, a header of ours that it includes (directly
or not), its compile command, the configuration or clang-tidy itself is another.

What was clean is remembered in build/lint. Exit code 0 when all files are clean.
"""
import hashlib
import json
import os
import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

INCLUDE = re.compile(rb'^\s*#\s*include\s*"([^"]+)"', re.M)
CROSS = 'x86_64-w64-mingw32'
STORE = Path('build/lint')


def output(*command):
    return subprocess.run(command, check=True, text=True, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL).stdout


def withoutPrecompiled(command):
    """A compile command that reads every header itself, so that a file which includes too little is
    found, and clang is not given the precompiled headers of another compiler."""
    return re.sub(r' -include \S+/cmake_pch\.hxx', '', command)


def ownCommands(build):
    """Writes the compile commands for clang-tidy into build/lint; gives the command of each file."""
    commands = json.loads(Path(build, 'compile_commands.json').read_text())
    for entry in commands:
        entry['command'] = withoutPrecompiled(entry['command'])
    (STORE / 'compile_commands.json').write_text(json.dumps(commands))
    return {entry['file']: entry['command'] for entry in commands}


def tidyArguments():
    """clang-tidy reads the C++ headers of the cross compiler; the C ones it finds by the target."""
    searched = output(f'{CROSS}-g++-posix', '-xc++', '-E', '-v', '/dev/null')
    folders = re.search(r'^#include <.*?\n(.*?)^End', searched, re.M | re.S).group(1).split()
    own = [f for f in folders if not re.search(r'/include(-fixed)?$', f)]
    return ['clang-tidy', '--quiet', '-p', STORE, f'--extra-arg-before=--target={CROSS}',
            # Not as an error of the compiler: that one could not be allowed anywhere.
            '--extra-arg=-Wreserved-identifier', '--extra-arg=-Wno-error=reserved-identifier',
            *[f'--extra-arg=-isystem{folder}' for folder in own]]


class Digests:
    """What a file's findings depend on, as one number."""

    def __init__(self, commands, arguments):
        self._commands = commands
        self._common = '\n'.join([output('clang-tidy', '--version'), Path('.clang-tidy').read_text(),
                                  output(f'{CROSS}-g++-posix', '--version'), *arguments])
        self._includes = {}

    def _includesOf(self, path):
        if path not in self._includes:
            content = path.read_bytes() if path.is_file() else b''
            # Ours are named from the root of the project; others belong to installed packages.
            found = {Path(os.fsdecode(name)) for name in INCLUDE.findall(content)}
            self._includes[path] = (content, {name for name in found if name.is_file()})
        return self._includes[path]

    def of(self, file):
        # Sorted, and without the project's own folder: a moved checkout is the same.
        here = str(Path.cwd())
        digest = hashlib.sha256(self._common.replace(here, '').encode())
        command = self._commands.get(str(Path(here, file)), '')
        digest.update(command.replace(here, '').encode())
        seen, waiting = set(), [Path(file)]
        while waiting:
            path = waiting.pop()
            if path not in seen:
                seen.add(path)
                waiting += self._includesOf(path)[1]
        for path in sorted(seen):
            digest.update(str(path).encode() + b'\0' + self._includesOf(path)[0])
        return digest.hexdigest()


def main():
    build, files = sys.argv[1], sys.argv[2:]
    STORE.mkdir(parents=True, exist_ok=True)
    arguments = tidyArguments()
    digests = Digests(ownCommands(build), [str(argument) for argument in arguments])

    def check(file):
        clean = STORE / digests.of(file)
        if clean.exists():
            return True, ''
        ended = subprocess.run([*arguments, file], text=True, stdout=subprocess.PIPE,
                               stderr=subprocess.PIPE, stdin=subprocess.DEVNULL, check=False)
        if ended.returncode == 0:
            clean.touch()
        found = ended.stdout or ended.stderr
        return ended.returncode == 0, found if ended.returncode else ''

    failed = 0
    with ThreadPoolExecutor(int(os.environ.get('VW_JOBS', os.cpu_count()))) as workers:
        for isClean, found in workers.map(check, files):
            failed += not isClean
            sys.stdout.write(found)
            sys.stdout.flush()
    print(f'clang-tidy: {len(files)} files, {failed} with findings')
    return 1 if failed else 0


if __name__ == '__main__':
    sys.exit(main())
