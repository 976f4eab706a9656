"""What is remembered: verdicts of earlier runs, and the mutants that nothing visible can tell apart."""
import json
import threading
from collections import Counter
from pathlib import Path

PARTIAL = ' some tests left out'
KILLED = {'failed', 'crashed', 'hung'}


class Results:
    """The verdicts in build/mutate/results.jsonl, for runs that go on where one was broken off.

    A mutant that was killed stays killed for as long as its file is the same. One that survived is
    tried again when the tests have changed, or when some of them were left out.
    """

    def __init__(self, path):
        self.path = Path(path)
        self._known = {}
        self._lock = threading.Lock()
        if self.path.exists():
            for line in self.path.read_text().splitlines():
                try:
                    entry = json.loads(line)
                except ValueError:
                    continue  # the last line of a run that was killed while writing
                self._known[entry['id']] = entry

    def find(self, name, tests, partial=False):
        entry = self._known.get(name)
        enough = (tests, tests + PARTIAL) if partial else (tests,)
        if entry and entry['verdict'] == 'survived' and entry['tests'] not in enough:
            return None
        return entry

    def add(self, name, tests, verdict, by='', file=''):
        entry = {'id': name, 'tests': tests, 'verdict': verdict, 'by': by, 'file': file}
        with self._lock:
            self._known[name] = entry
            with open(self.path, 'a') as output:
                output.write(json.dumps(entry) + '\n')
        return entry

    def killersOf(self, file, names=()):
        """The tests that killed mutants of a file so far, those first that killed most of the mutants
        with these names and then of the file."""
        with self._lock:
            kills = [entry for entry in self._known.values()
                     if entry['file'] == file and entry['verdict'] in KILLED and entry['by']]
        near = Counter(entry['by'] for entry in kills if entry['id'] in names)
        all_ = Counter(entry['by'] for entry in kills)
        return sorted(all_, key=lambda test: (-near[test], -all_[test], test))


def readEquivalents(path):
    """The mutants of tests/equivalent-mutants.txt with their reasons: {(file, before, after): reason}."""
    found, file, before, after, reason = {}, '', '', '', []

    def finish():
        if before:
            if not reason:
                raise ValueError(f'{path}: no reason for: {before}')
            found[(file, before, after)] = ' '.join(reason)

    for line in Path(path).read_text().splitlines():
        if line.startswith('#') or not line.strip():
            continue
        if line.startswith('- '):
            finish()
            before, after, reason = line[2:].strip(), '', []
        elif line.startswith('+'):
            after = line[1:].strip()
        elif line.startswith(' '):
            reason.append(line.strip())
        else:
            finish()
            file, before, reason = line.strip(), '', []
    finish()
    return found
