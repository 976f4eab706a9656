#!/usr/bin/env python3
"""The names of tests: Subject_Condition_Result, or a verb phrase of at most 50 characters.

A name is read alone in a list of failures, so that it may not continue the name of its suite as a
sentence. The tests that docs/reliability.md names have to exist.
"""

import re
import sys
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
NOTES = "docs/reliability.md"

LONGEST = 60
LONGEST_PHRASE = 50
MOST_PARTS = 3

# Names that begin with these words continue the name of their suite. In a name of several parts a
# preposition may begin the condition.
NO_BEGINNING = set("A An And Of That The Where Which Who Whose".split())
NO_VERB = NO_BEGINNING | set(
    "After Are At Before Behind Below Between Beyond By During For From In Into Is It Its On To "
    "What When While With Without".split())

TEST = re.compile(r"\bTEST(?:_F|_P)?\(\s*(\w+)\s*,\s*(\w+)\s*\)")
NAMED_IN_NOTES = re.compile(r"(?:\b([A-Z]\w*)|(?<=, ))\.([A-Z]\w*|\*)")


def faults(name: str) -> list[str]:
    """What is wrong with the name of a test."""
    name = name.removeprefix("DISABLED_")
    parts = name.split("_")
    first = re.match(r"[A-Z][a-z0-9]*|", name).group()
    found = []
    if len(name) > LONGEST:
        found.append(f"{len(name)} characters, at most {LONGEST}")
    if len(parts) > MOST_PARTS:
        found.append(f"{len(parts)} parts, at most {MOST_PARTS}")
    if not all(re.match(r"[A-Z0-9]", part) for part in parts):
        found.append("a part that does not begin with a capital letter")
    if len(parts) == 1 and len(name) > LONGEST_PHRASE:
        found.append(f"a verb phrase of {len(name)} characters, at most {LONGEST_PHRASE}")
    if first in (NO_VERB if len(parts) == 1 else NO_BEGINNING):
        found.append(f'begins with "{first}"')
    return found


def missing_of_notes(text: str, tests: set[str]) -> list[str]:
    """The tests that the table of the notes names and that do not exist."""
    suites = {test.split(".")[0] for test in tests}
    missing = []
    for line in text.splitlines():
        suite = ""
        cell = line.rstrip(" |").rsplit("|", 1)[-1] if line.startswith("|") else ""
        for match in NAMED_IN_NOTES.finditer(cell):
            suite = match.group(1) or suite
            test = f"{suite}.{match.group(2)}"
            if test not in tests and not (match.group(2) == "*" and suite in suites):
                missing.append(test)
    return missing


def main() -> int:
    tests = set()
    offences = 0
    for path in sorted((PROJECT / "tests").rglob("*.cpp")):
        text = path.read_text(encoding="utf-8")
        for match in TEST.finditer(text):
            suite, name = match.groups()
            tests.add(f"{suite}.{name}")
            for fault in faults(name):
                line = text.count("\n", 0, match.start()) + 1
                print(f"{path.relative_to(PROJECT)}:{line}: {suite}.{name}: {fault}")
                offences += 1
    for missing in missing_of_notes((PROJECT / NOTES).read_text(encoding="utf-8"), tests):
        print(f"{NOTES}: no such test: {missing}")
        offences += 1
    print(f"{len(tests)} tests, {offences} offences")
    return 0 if tests and not offences else 1


if __name__ == "__main__":
    sys.exit(main())
