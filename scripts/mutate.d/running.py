"""Runs a test program, natively or under Wine, and says how it ended."""
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
SLOW_MILLISECONDS = 700


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

    def __init__(self, project, folder, cleanPrefix):
        self.project, self.folder, self.cleanPrefix = Path(project), Path(folder), cleanPrefix
        self.prefix = self.folder / 'prefix'
        program = project / 'build/release/bin/Vaultwright.exe'
        self.environment = dict(os.environ, VW_PREFIX=str(self.prefix), GTEST_BRIEF='0',
                                VW_PROGRAM='Z:' + str(program).replace('/', '\\'))
        self.environment.pop('GTEST_FILTER', None)

    def refresh(self):
        """Ends all that runs in the prefix and begins a new one."""
        self._wine('--end')
        shutil.rmtree(self.prefix, ignore_errors=True)
        subprocess.run(['cp', '-al', str(self.cleanPrefix), str(self.prefix)], check=True)
        for file in self.prefix.glob('*.reg'):  # a registry of its own, the rest is shared
            file.unlink()
            shutil.copy2(self.cleanPrefix / file.name, file)

    def _wine(self, argument):
        subprocess.run([self.project / 'scripts/wine', argument], env=self.environment, check=False,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def end(self):
        self._wine('--end')

    def run(self, program, tests, patience, failFast=True):
        """Runs the tests of a GoogleTest filter; `patience` in seconds."""
        return self._run(program, tests, patience, failFast)[0]

    def _run(self, program, tests, patience, failFast):
        windows = program.suffix == '.exe'
        arguments = [self.project / 'scripts/wine'] if windows else []
        arguments += [program, '--gtest_filter=' + tests]
        arguments += ['--gtest_fail_fast'] if failFast else []
        work = self.folder / 'work'
        shutil.rmtree(work, ignore_errors=True)
        work.mkdir(parents=True)
        log = self.folder / 'output.txt'
        with open(log, 'wb') as output:
            process = subprocess.Popen(arguments, cwd=work, env=self.environment, stdout=output,
                                       stderr=subprocess.STDOUT, start_new_session=True)
            try:
                code = process.wait(timeout=patience)
            except subprocess.TimeoutExpired:
                code = None
                os.killpg(process.pid, signal.SIGKILL)
                process.wait()
        text = log.read_text(errors='replace')
        begun, failed = BEGUN.findall(text), FAILED.findall(text)
        if failed:
            outcome = Outcome('failed', failed[0])
        elif code == 0 and begun and '[  PASSED  ]' in text:
            outcome = Outcome('passed')
        else:
            outcome = Outcome('hung' if code is None else 'crashed', begun[-1] if begun else '')
        if code is None and windows:
            self.refresh()
        return outcome, text

    def baseline(self, program, store):
        """How the unchanged program does; kept in the folder `store` for as long as it is the same."""
        kept = store / f'baseline-{program.stem}-{digest(program.read_bytes())}.json'
        if not kept.exists():
            began = time.monotonic()
            _, text = self._run(program, '*', 3600, False)
            times = {name: int(ms) for name, ms in PASSED.findall(text)}
            kept.write_text(json.dumps({'times': times, 'seconds': time.monotonic() - began,
                                        'failed': sorted(set(FAILED.findall(text)) - set(times))}))
        return Baseline(**json.loads(kept.read_text()))


class Baseline:
    """What the tests of an unchanged program take, and which do not pass in the sandbox."""

    def __init__(self, times, seconds, failed):
        self.times, self.seconds, self.failed = times, seconds, set(failed)
        self.slow = {name for name, ms in times.items() if ms >= SLOW_MILLISECONDS}

    def stages(self, killers):
        """GoogleTest filters in the order to try them, each with its patience in seconds: what
        killed mutants of this file before, the quick tests, the slow ones."""
        killers = [k for k in killers if k in self.times]
        quick = set(self.times) - self.slow
        for tests in (killers, quick - set(killers), self.slow - set(killers)):
            if not tests:
                continue
            expected = sum(self.times[name] for name in tests) / 1000
            yield self._filter(tests, quick), 30 + 4 * expected

    def _filter(self, tests, quick):
        """The shortest way to name them: a command line has its limit."""
        rest = (set(self.times) | self.failed) - set(tests)
        named = ':'.join(sorted(tests))
        others = '-' + ':'.join(sorted(rest))
        return named if len(named) <= len(others) else '*' + others if rest else '*'
