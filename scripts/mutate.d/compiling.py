"""Compiles one changed source apart from the build folder and links a test program with it.

The build folder is only read. The changed object comes before the libraries on the command line, so
that the linker takes its functions instead of those of the library's member.
"""
import json
import shlex
import subprocess
from pathlib import Path

from mutations import digest


# What a mutant reads from nowhere shows as a crash, not by luck as the right result.
SCHEMA_OPTIONS = ['-w', '-g0', '-O1', '-D_GLIBCXX_ASSERTIONS', '-fmax-errors=0',
                  '-fdiagnostics-color=never']


# Native programs that compile sources of the native tests once more.
BESIDE_TESTS = ('vw_fuzzed', 'display_marks')


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
            if not any(f'{other}.dir' in produced for other in BESIDE_TESTS):
                self._compile[entry['file']] = (arguments, produced)
        self._links = {}

    def knows(self, source):
        return str(source) in self._compile

    def compile(self, source, changed, produced, root):
        """Compiles `changed`, a variant of `source`, whose folder mirrors `root`."""
        arguments = self._argumentsFor(source, changed, produced)
        # A change may leave a variable unused: warnings are not what is looked for.
        arguments += ['-w', '-g0', f'-fmacro-prefix-map={root}/=']
        return run(arguments, self.folder)

    def errorsOf(self, source, changed, produced):
        """Compiles `changed` in place of `source`, quickly; the errors or, without any, None."""
        arguments = self._argumentsFor(source, changed, produced) + SCHEMA_OPTIONS
        done = subprocess.run(arguments, cwd=self.folder, stdout=subprocess.DEVNULL,
                              stderr=subprocess.PIPE, text=True, errors='replace', check=False)
        return None if done.returncode == 0 else done.stderr

    def compileLike(self, target, source, produced):
        """Compiles a source that is not of the build, as those of a program are compiled."""
        like = next(s for s, (_, usual) in self._compile.items()
                    if f'/{target}.dir/tests/' in usual or f'/{target}.dir/app/' in usual)
        return run(self._argumentsFor(like, source, produced) + SCHEMA_OPTIONS, self.folder)

    def _argumentsFor(self, source, changed, produced):
        arguments, usual = self._compile[str(source)]
        return [str(produced) if a == usual else str(changed) if a == str(source) else a
                for a in arguments]

    def linkMany(self, target, changedObjects, further, produced, project):
        """Links `target` with the objects of several sources instead of their usual ones."""
        parts = list(self._linkCommand(target))
        output = parts.index('-o') + 1
        parts[output] = str(produced)
        for file, changedObject in changedObjects.items():
            usual = self._compile[str(project / file)][1]
            if usual in parts:
                parts[parts.index(usual)] = str(changedObject)
            else:
                further = [*further, changedObject]
        parts[output - 1:output - 1] = [str(f) for f in further]
        return run([p for p in parts if not p.startswith('-Wl,--out-implib')], self.folder)

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

    def __init__(self, project, folder, windows):
        self.project, self.folder, self.windows = Path(project), Path(folder), windows
        self._originals = {}

    def windowsObject(self, file, text):
        """The object of a text and the digest of its code, or (None, '') when it does not compile."""
        root, produced = self.folder / 'sources', self.folder / 'changed.obj'
        changed = root / file
        changed.parent.mkdir(parents=True, exist_ok=True)
        changed.write_text(text)
        if not self.windows.compile(self.project / file, changed, produced, root):
            return None, ''
        return produced, codeOf(produced)

    def originalCode(self, file, text):
        """The digest of the code of the file as it is. Overwrites what windowsObject made before."""
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
