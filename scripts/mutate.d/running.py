"""Runs a test program, natively or under Wine, and says how it ended."""
import fnmatch
import json
import os
import re
import shutil
import signal
import subprocess
import time
from dataclasses import dataclass
from pathlib import Path

from mutations import digest

BEGUN = re.compile(r'^\[ RUN      \] (\S+)', re.M)
FAILED = re.compile(r'^\[  FAILED  \] (\S+?)[, ]', re.M)
PASSED = re.compile(r'^\[       OK \] (\S+) \((\d+) ms\)', re.M)
REPETITION = re.compile(r'^Repeating all tests \(iteration \d+\).*$', re.M)
SLOW_MILLISECONDS = 700
BEST_KILLERS = 5
FIRST_TESTS = 12  # a run of them costs little more than the start of the program


@dataclass(frozen=True)
class Outcome:
    """How a run ended: passed, failed, crashed or hung; and the test in which it did."""
    how: str
    test: str = ''

    @property
    def passed(self):
        return self.how == 'passed'


class Runner:
    """Runs test programs of one worker, in a folder and a Wine prefix of its own."""

    def __init__(self, project, folder, cleanPrefix, without=''):
        """`without` names tests to leave out, as GoogleTest's filters do."""
        self.without = without
        self.project, self.folder, self.cleanPrefix = Path(project), Path(folder), cleanPrefix
        self.prefix = self.folder / 'prefix'
        program = project / 'build/release/bin/Vaultwright.exe'
        self.environment = dict(os.environ, VW_PREFIX=str(self.prefix), GTEST_BRIEF='0', VW_KEEP='86400',
                                VW_PROGRAM='Z:' + str(program).replace('/', '\\'))
        self.environment.pop('GTEST_FILTER', None)
        self._wineSettings = None
        self._baselines = {}

    def refresh(self):
        """Ends all that runs in the prefix and begins a new one."""
        self._wineSettings = None
        self._wine('--end')
        shutil.rmtree(self.prefix, ignore_errors=True)
        subprocess.run(['cp', '-al', str(self.cleanPrefix), str(self.prefix)], check=True)
        for file in self.prefix.glob('*.reg'):  # a registry of its own, the rest is shared
            file.unlink()
            shutil.copy2(self.cleanPrefix / file.name, file)

    def _wineEnvironment(self):
        """What a program in the prefix runs in: asked once, for a run costs less without a shell."""
        if self._wineSettings is None:
            text = subprocess.run(
                ['bash', '-c', 'set -e; text=$("$0" --environment); eval "$text"; '
                 'printf "%s\\0" "$wineLoader"; env -0', self.project / 'scripts/wine'],
                env=self.environment, check=True, capture_output=True, text=True).stdout
            loader, *settings = text.rstrip('\0').split('\0')
            self._wineSettings = loader, dict(line.split('=', 1) for line in settings)
        return self._wineSettings

    def _wine(self, argument):
        subprocess.run([self.project / 'scripts/wine', argument], env=self.environment, check=False,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def end(self):
        self._wine('--end')

    def run(self, program, tests, patience, mutants=(), environment=None):
        """Runs the tests of a GoogleTest filter once for each mutant of the program that has them
        all, or once without any; None is a run without a mutant. `patience` in seconds for each.
        The outcomes end at the mutant that ended the program."""
        numbers = ','.join('-1' if m is None else str(m) for m in mutants)
        texts, code = self._run(program, tests, patience, max(len(mutants), 1),
                                {**(environment or {}),
                                 **({'VW_MUTANTS': numbers} if mutants else {})})
        if code == 1 and any(FAILED.search(text) for text in texts[:-1]):
            code = 0  # of the repetitions before the last one
        return [outcomeOf(text, code if number == len(texts) else 0)
                for number, text in enumerate(texts, 1)]

    def text(self, program, tests, patience, environment):
        """What the tests of a filter print, run once in this environment."""
        return self._run(program, tests, patience, 0, environment)[0][0]

    def list(self, program, tests):
        """The names of the tests of a filter, as GoogleTest prints them."""
        loader, environment = self._wineEnvironment()
        return subprocess.run([loader, program, '--gtest_list_tests', '--gtest_filter=' + tests],
                              env=environment, check=True, capture_output=True, text=True).stdout

    def _run(self, program, tests, patience, repetitions, more):
        """The output of each repetition and the exit code, None when the last one hung."""
        windows = program.suffix == '.exe'
        loader, environment = self._wineEnvironment() if windows else (None, self.environment)
        arguments = [loader] if windows else []
        arguments += [program, '--gtest_filter=' + tests]
        arguments += ['--gtest_fail_fast'] if repetitions else []
        arguments += [f'--gtest_repeat={repetitions}'] if repetitions > 1 else []
        work = self.folder / 'work'
        shutil.rmtree(work, ignore_errors=True)
        work.mkdir(parents=True)
        log = self.folder / 'output.txt'
        with open(log, 'wb') as output:
            process = subprocess.Popen(arguments, cwd=work, env={**environment, **more},
                                       stdin=subprocess.DEVNULL, stdout=output,
                                       stderr=subprocess.STDOUT, start_new_session=True)
            code = waitFor(process, log, patience)
        texts = REPETITION.split(log.read_text(errors='replace'))
        if windows and code is None:
            self.refresh()  # it may have left something behind
        return texts[1:] if len(texts) > 1 else texts, code

    def baseline(self, program, store):
        """How the unchanged program does; kept in the folder `store` for as long as it is the same."""
        if program in self._baselines:
            return self._baselines[program]
        name = f'baseline-{program.stem}-{digest(program.read_bytes())}'
        kept = store / f'{name}.json'  # of all tests, which will do for some of them
        if not kept.exists() and self.without:
            kept = store / f'{name}-{digest(self.without)}.json'
        if not kept.exists():
            reached = self.folder / 'reached.txt'
            reached.unlink(missing_ok=True)
            tests = f'*-{self.without}' if self.without else '*'
            texts, _ = self._run(program, tests, 3600, 0, {'VW_REACHED': f'Z:{reached}'
                                 if program.suffix == '.exe' else str(reached)})
            text = texts[0]
            times = {name: int(ms) for name, ms in PASSED.findall(text)}
            kept.write_text(json.dumps({
                'times': times, 'failed': sorted(set(FAILED.findall(text)) - set(times)),
                **(readReached(reached, times) if reached.exists() else {})}))
        self._baselines[program] = Baseline(self.without, **json.loads(kept.read_text()))
        return self._baselines[program]


def waitFor(process, log, patience):
    """The exit code, or None when one repetition took longer than `patience` seconds."""
    begun, deadline = 0, time.monotonic() + patience
    while True:
        try:
            return process.wait(timeout=min(1, patience))
        except subprocess.TimeoutExpired:
            pass
        repetitions = len(REPETITION.findall(log.read_text(errors='replace')))
        if repetitions > begun:
            begun, deadline = repetitions, time.monotonic() + patience
        if time.monotonic() >= deadline:
            os.killpg(process.pid, signal.SIGKILL)
            process.wait()
            return None


def outcomeOf(text, code):
    """How one repetition ended, by what it printed and the exit code if it was the last one."""
    begun, failed = BEGUN.findall(text), FAILED.findall(text)
    if failed:
        return Outcome('failed', failed[0])
    if code == 0 and begun and '[  PASSED  ]' in text:
        return Outcome('passed')
    return Outcome('hung' if code is None else 'crashed', begun[-1] if begun else '')


def readReached(path, tests):
    """Which tests reach each function, from what Selector.cpp writes, {number: [test]}, and which
    functions run before the first test."""
    reached, early = {}, set()
    for line in path.read_text().splitlines():
        name, *functions = line.split()
        if name == '*':
            early.update(functions)
        reaching = [name] if name in tests else [t for t in tests if fnmatch.fnmatch(t, name)]
        for function in functions:
            reached.setdefault(function, set()).update(reaching)
    return {'reached': {function: sorted(names) for function, names in reached.items()},
            'early': sorted(early)}


class Baseline:
    """What the tests of an unchanged program take, which do not pass in the sandbox, and which
    reach what function."""

    def __init__(self, without, times, failed, reached=None, early=()):
        self._without = without
        patterns = without.split(':')
        self.times = {test: ms for test, ms in times.items()
                      if not any(fnmatch.fnmatchcase(test, pattern) for pattern in patterns)}
        self.failed = set(failed)
        self._reached, self._early = reached or {}, set(early)

    def isEarly(self, function):
        """Whether the function runs before the first test, where it cannot change any more."""
        return str(function) in self._early

    def reaching(self, function):
        """The tests that reach a function; all of them when it is None."""
        if function is None:
            return set(self.times)
        return set(self._reached.get(str(function), ())) & set(self.times)

    def stages(self, killers, tests):
        """GoogleTest filters in the order to try them, each with its patience in seconds: what
        killed most mutants of this function or file before, the quickest tests, the other quick
        ones, the slow. `killers` has the best first."""
        killers = [t for t in killers if t in tests and self.times[t] < SLOW_MILLISECONDS]
        best, further = set(killers[:BEST_KILLERS]), set(killers[BEST_KILLERS:])
        slow = {t for t in tests - best if self.times[t] >= SLOW_MILLISECONDS}
        rest = sorted(tests - best - further - slow, key=lambda t: self.times[t])
        second = set(sorted(further, key=lambda t: self.times[t])[:3 * FIRST_TESTS])
        for some in (best, second | set(rest[:FIRST_TESTS]),
                     further - second | set(rest[FIRST_TESTS:]), slow):
            if some:
                expected = sum(self.times[name] for name in some) / 1000
                yield self._filter(some), 5 + 5 * expected

    def _filter(self, tests):
        """The shortest way to name them: a command line has its limit."""
        rest = (set(self.times) | self.failed) - set(tests)
        named = ':'.join(sorted(tests))
        others = '-' + ':'.join(filter(None, [*sorted(rest), self._without]))
        return named if len(named) <= len(others) else '*' + others if len(others) > 1 else '*'
