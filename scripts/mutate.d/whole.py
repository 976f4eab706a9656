"""Judges mutants with the tests that drive the whole program as another process.

The rules of the start, of the menus and of the process itself are held by these tests. They run with
a program that has all mutants of the layer in it, one start for each mutant.
"""
import json
import re
import shutil

from mutations import digest
from running import FAILED, PASSED
from schemata import SchemaProgram

# The quick ones. What kills the program or works for minutes is left out.
DRIVERS = {
    'system_tests': '*Switch*:Start*:LanguageAtStart.*:Outcome.*:Console.*:ExitCode.*:Output.*',
    'windows_tests': 'Opening.*:Interface.*:Commands*:StartFolder.*:Destination.*:LeavingLists.*:'
                     'Editing.*:Keyboard*:Restoring*',
}
STAGE_MILLISECONDS = 6000  # of the tests that one start runs
LISTED = re.compile(r'^(\S+)\.$|^  (\S+)', re.M)


class WholeProgram:
    """The program with the mutants of a layer, and which tests reach which of its functions."""

    def __init__(self, project, folder, build, numbered, texts):
        self._folder = folder / 'whole'
        self._bin = project / 'build/release/bin'
        self._drivers = {project / f'build/release/tests/{name}.exe': tests
                         for name, tests in DRIVERS.items()}
        self._schema = SchemaProgram(project, folder, build, 'Vaultwright', 'obj', numbered, texts)
        self._times = {}  # (driver, test): milliseconds
        self._reached = {}  # number of a function: [(driver, test)]

    @property
    def driversDigest(self):
        return digest(b''.join(path.read_bytes() for path in self._drivers))

    def make(self, jobs):
        """Makes the program, with the files that lie beside it; false when it cannot be linked."""
        if not self._schema.make(jobs):
            return False
        if not self._folder.is_dir():
            shutil.copytree(self._bin, self._folder)
        shutil.copy2(self._schema.path, self._folder / 'Vaultwright.exe')
        return True

    def learn(self, runner, store):
        """Runs each test once without a mutant, and notes its time and what it reaches."""
        program = digest((self._folder / 'Vaultwright.exe').read_bytes())
        kept = store / f'baseline-whole-{program}-{self.driversDigest}.json'
        if not kept.exists():
            facts = [fact for driver, tests in self._drivers.items()
                     for fact in self._factsOf(runner, driver, tests)]
            kept.write_text(json.dumps(facts))
        for driver, test, milliseconds, functions in json.loads(kept.read_text()):
            path = next(p for p in self._drivers if p.stem == driver)
            self._times[path, test] = milliseconds
            for function in functions:
                self._reached.setdefault(function, []).append((path, test))

    def _factsOf(self, runner, driver, tests):
        suite = ''
        for begun, name in LISTED.findall(runner.list(driver, tests)):
            if begun:
                suite = begun
                continue
            reached = self._folder / 'reached.txt'
            reached.unlink(missing_ok=True)
            text = runner.text(driver, f'{suite}.{name}', 300,
                               {**self._environment, 'VW_REACHED': 'Z:' + str(reached)})
            passed = PASSED.findall(text)
            if FAILED.findall(text) or not passed:
                print(f'{suite}.{name} fails without a mutant: left out', flush=True)
                continue
            functions = {int(n) for n in reached.read_text().split()} if reached.exists() else set()
            yield driver.stem, f'{suite}.{name}', int(passed[0][1]), sorted(functions)

    @property
    def _environment(self):
        program = str(self._folder / 'Vaultwright.exe').replace('/', '\\')
        return {'VW_PROGRAM': f'Z:{program}'}

    def kill(self, runner, number, killers):
        """The outcome of the test that kills a mutant, or None when all survive it. `killers` are
        tests that killed others, which go first."""
        function = self._schema.functions.get(number)
        if function is None or number in self._schema.broken:
            return None
        for driver, tests, seconds in self._stages(function, killers):
            patience = 15 + 3 * seconds
            outcome = runner.run(driver, ':'.join(tests), patience, [number], self._environment)[-1]
            if not outcome.passed:
                outcome = self._proved(runner, driver, outcome, ':'.join(tests), patience, number)
                if outcome:
                    return outcome
        return None

    def _proved(self, runner, driver, outcome, tests, patience, number):
        """The outcome, if its test passes without the mutant and fails with it again."""
        probe = outcome.test or tests
        for _ in range(2):
            if runner.run(driver, probe, patience, (), self._environment)[-1].passed:
                if outcome.how == 'hung':
                    return outcome
                again = runner.run(driver, probe, patience, [number], self._environment)[-1]
                return None if again.passed else again
            runner.refresh()
        return None

    def _stages(self, function, killers):
        """The tests that reach a function, a few at a time: (driver, names, seconds)."""
        order = sorted(self._reached.get(function, ()),
                       key=lambda t: (t[1] not in killers, self._times[t]))
        for driver in self._drivers:
            some, milliseconds = [], 0
            for test in (t for t in order if t[0] == driver):
                some.append(test[1])
                milliseconds += self._times[test]
                if milliseconds >= STAGE_MILLISECONDS:
                    yield driver, some, milliseconds / 1000
                    some, milliseconds = [], 0
            if some:
                yield driver, some, milliseconds / 1000
