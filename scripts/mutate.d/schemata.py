"""Puts all mutants of a file into one program, which carries out the one that VW_MUTANT names.

Each function gets its body once for every mutant in it, as the cases of a switch, and the body as it
is as the default. So a file is compiled once and a test program linked once, not once per mutant.
Mutants outside functions, in constants and tables, are not among them.
"""
import json
import re
from concurrent.futures import ThreadPoolExecutor

from mutations import BLOCK_BEFORE, SCOPE, closing, digest, masked

CONSTANT = re.compile(r'\b(?:constexpr|consteval)\b')
MUTANT = re.compile(r'vw-mutant-(\d+)')
DECLARATIONS = '''\
extern "C" int vwMutant;
extern "C" unsigned char vwReached[];
extern "C" void vwReach(int function);
[[maybe_unused]] static int vwSelect(int function, int first, int count) {
    if (vwReached[function] == 0) vwReach(function);
    return vwMutant >= first && vwMutant < first + count ? vwMutant - first : -1;
}
'''


def bodies(code):
    """What the braces of the functions of a file hold: (start, end, where its constexpr is)."""
    position = start = 0
    while position < len(code):
        c = code[position]
        if c == '{':
            before = code[start:position].strip()
            if SCOPE.match(before) and '(' not in before:
                start = position + 1
            elif BLOCK_BEFORE.search(before) or (before.endswith('}') and ') :' in before):
                end = closing(code, position)
                isConstant = CONSTANT.search(before) is not None
                if not (isConstant and ' = ' in before):
                    yield position + 1, end, start + code[start:].index('constexpr') \
                        if isConstant else None
                position = start = end + 1
                continue
            else:  # braces of an expression
                position = closing(code, position)
        elif c in '([':
            position = closing(code, position)
        elif c in ';}':
            start = position + 1
        position += 1


class Schema:
    """The text of a file with its mutants in it; `numbered` has them with their numbers, which
    follow each other. Functions are numbered from `function` on."""

    def __init__(self, file, text, numbered, function, constants=True):
        """`constants`: with the functions that may be called while compiling."""
        self.file, self.text, self._numbered = file, text, numbered
        self._function = function
        self.constants = []  # where such functions say so
        self.functions = {}  # number of a mutant: number of its function
        self.parts = []  # (start, end, number of the function, its mutants)
        for start, end, constant in bodies(masked(text)):
            if constant is not None and not constants:
                continue
            inside = [(n, m) for n, m in numbered if start <= m.start and m.end <= end]
            if inside:
                self.functions.update((n, function) for n, _ in inside)
                self.parts.append((start, end, function, inside))
                self.constants += [] if constant is None else [constant]
                function += 1
        self.nextFunction = function

    def withoutConstants(self):
        return Schema(self.file, self.text, self._numbered, self._function, False)

    def source(self, without):
        """The text, without the mutants whose numbers are given."""
        result, position = [DECLARATIONS, f'#line 1 "{self.file}"\n'], 0
        for start, end, function, inside in self.parts:
            result.append(self._plain(position, start))
            line = self.text.count('\n', 0, start) + 1
            first = inside[0][0]
            result.append(f'\nswitch (vwSelect({function}, {first}, {inside[-1][0] - first + 1})) {{')
            for number, mutant in inside:
                if number not in without:
                    body = (self.text[start:mutant.start] + mutant.replacement +
                            self.text[mutant.end:end])
                    result.append(f'\ncase {number - first}: {{\n'
                                  f'#line {line} "vw-mutant-{number}"\n{body}\n}} break;')
            result.append(f'\ndefault: {{\n#line {line} "{self.file}"\n{self.text[start:end]}\n}}\n}}'
                          f'\n#line {self.text.count(chr(10), 0, end) + 1} "{self.file}"\n')
            position = end
        result.append(self._plain(position, len(self.text)))
        return ''.join(result)

    def _plain(self, start, end):
        """What is between two functions: those with mutants are not evaluated while compiling."""
        text = self.text[start:end]
        for constant in self.constants:
            if start <= constant < end:
                at = constant - start
                text = text[:at] + 'inline   ' + text[at + len('constexpr'):]
        return text


class SchemaProgram:
    """A test program, or the program itself, with all mutants of some files in it."""

    def __init__(self, project, folder, build, target, suffix, numbered, texts):
        """`numbered` has for each file its (number, mutant); `texts` has the files' texts."""
        self.project, self.folder, self.build = project, folder, build
        self.target, self.suffix = target, suffix
        self.folder.mkdir(parents=True, exist_ok=True)
        self.path = folder / (target + ('.exe' if suffix == 'obj' else ''))
        self.functions, self.broken = {}, set()
        self._numbered, self._texts = numbered, texts
        headers = sorted(p for p in project.rglob('*.h') if not {'build', 'tests'} & set(p.parts))
        self._headers = digest(b''.join(p.read_bytes() for p in headers))

    def make(self, jobs):
        """Compiles and links; false when the program cannot be linked."""
        schemas, function = [], 0
        for file, numbered in self._numbered.items():
            schemas.append(Schema(file, self._texts[file], numbered, function))
            function = schemas[-1].nextFunction
        with ThreadPoolExecutor(jobs) as pool:
            objects = dict(pool.map(self._compile, schemas))
        compiled = {file: path for file, path in objects.items() if path}
        isTests = self.target.endswith('_tests')
        source = 'Selector.cpp' if isTests else 'ProgramSelector.cpp'
        selector = self.folder / f'{source}.{self.suffix}'
        return (self.build.compileLike(self.target, self.project / 'scripts/mutate.d' / source,
                                       selector) and
                self.build.linkMany(self.target, compiled, [selector], self.path, self.project))

    def _compile(self, schema):
        """Compiles without the mutants that do not compile: (file, object or None)."""
        source = self.folder / 'sources' / schema.file
        source.parent.mkdir(parents=True, exist_ok=True)
        known = source.with_suffix(f'.{self.suffix}.json')
        produced = source.with_suffix(f'.{self.suffix}')
        name = digest(schema.source(set()) + self._headers)
        entry = json.loads(known.read_text()) if known.exists() else {}
        broken = set(entry.get('broken', []))
        if entry.get('name') != name or not produced.exists():
            broken = set()
            while True:
                source.write_text(schema.source(broken))
                errors = self.build.errorsOf(self.project / schema.file, source, produced)
                if errors is None:
                    break
                found = {int(n) for n in MUTANT.findall(errors)} - broken
                if not found and schema.constants:
                    return self._compile(schema.withoutConstants())
                if not found:
                    print(f'{schema.file}: one mutant at a time', flush=True)
                    return schema.file, None
                broken |= found
            known.write_text(json.dumps({'name': name, 'broken': sorted(broken)}))
        self.functions.update(schema.functions)
        self.broken |= broken
        return schema.file, produced
