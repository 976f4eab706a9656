"""Compiles one changed source apart from the build folder and links a test program with it.

The build folder is only read. The changed object comes before the libraries on the command line, so
that the linker takes its functions instead of those of the library's member.
"""
import json
import shlex
import shutil
import subprocess
from pathlib import Path

from mutations import digest


def run(arguments, folder):
    return subprocess.run(arguments, cwd=folder, stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL, check=False).returncode == 0


class Build:
    """What one build folder of the project knows about compiling and linking."""

    def __init__(self, folder):
        self.folder = Path(folder)
        commands = json.loads((self.folder / 'compile_commands.json').read_text())
        self._compile = {}
        for entry in commands:
            arguments = shlex.split(entry['command'])
            if '-o' not in arguments:  # the resources
                continue
            produced = arguments[arguments.index('-o') + 1]
            if 'vw_fuzzed.dir' not in produced:
                self._compile[entry['file']] = (arguments, produced)
        self._links = {}

    def knows(self, source):
        return str(source) in self._compile

    def compile(self, source, changed, produced, root):
        """Compiles `changed`, a variant of `source`, whose folder mirrors `root`."""
        arguments, usual = self._compile[str(source)]
        arguments = ['-o' if a == '-o' else a for a in arguments]
        arguments[arguments.index(usual)] = str(produced)
        arguments[arguments.index(str(source))] = str(changed)
        # A change may leave a variable unused: warnings are not what is looked for.
        arguments += ['-w', '-g0', f'-fmacro-prefix-map={root}/=']
        return run(arguments, self.folder)

    def _linkCommand(self, target):
        if target not in self._links:
            text = subprocess.run(['ninja', '-t', 'commands', target], cwd=self.folder, check=True,
                                  capture_output=True, text=True).stdout.splitlines()[-1]
            parts = shlex.split(text)
            start = parts.index('&&') + 1
            self._links[target] = parts[start:parts.index('&&', start)]
        return self._links[target]

    def link(self, target, source, changedObject, produced):
        """Links `target` with the changed object of `source` instead of its usual one."""
        parts = list(self._linkCommand(target))
        usual = self._compile[str(source)][1]
        output = parts.index('-o') + 1
        parts[output] = str(produced)
        if usual in parts:
            parts[parts.index(usual)] = str(changedObject)
        else:
            parts.insert(output - 1, str(changedObject))
        parts = [p for p in parts if not p.startswith('-Wl,--out-implib')]
        return run(parts, self.folder)


def codeOf(path):
    """The bytes of an object file without the time that its header may carry."""
    data = bytearray(path.read_bytes())
    if data[:2] == b'\x64\x86':
        data[4:8] = b'\0' * 4
    return digest(bytes(data))


class Bench:
    """Where one worker compiles its mutants: build/mutate/<name>."""

    def __init__(self, project, folder, windows, host):
        self.project, self.folder = Path(project), Path(folder)
        self.windows, self.host = windows, host
        self._originals = {}

    def _object(self, file, text, build, suffix):
        changed = self.folder / 'sources' / file
        changed.parent.mkdir(parents=True, exist_ok=True)
        changed.write_text(text)
        produced = self.folder / f'changed.{suffix}'
        if not build.compile(self.project / file, changed, produced, self.folder / 'sources'):
            return None
        return produced

    def windowsObject(self, file, text):
        """The object of a text and the digest of its code, or (None, '') when it does not compile."""
        produced = self._object(file, text, self.windows, 'obj')
        return (produced, codeOf(produced)) if produced else (None, '')

    def originalCode(self, file, text):
        if file not in self._originals:
            produced, code = self.windowsObject(file, text)
            if not produced:
                raise RuntimeError(f'{file} does not compile as it is')
            self._originals[file] = code
        return self._originals[file]

    def windowsProgram(self, target, file, changedObject):
        produced = self.folder / f'{target}.exe'
        linked = self.windows.link(f'{target}', self.project / file, changedObject, produced)
        return produced if linked else None

    def hostProgram(self, file, text):
        """The native tests with this text, or None when it does not compile there."""
        changedObject = self._object(file, text, self.host, 'o')
        produced = self.folder / 'pure_tests'
        if not changedObject:
            return None
        linked = self.host.link('pure_tests', self.project / file, changedObject, produced)
        return produced if linked else None

    def isPure(self, file):
        return self.host is not None and self.host.knows(self.project / file)

    def clear(self):
        shutil.rmtree(self.folder / 'sources', ignore_errors=True)
