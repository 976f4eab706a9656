#!/usr/bin/env python3
"""The mutants of tests/equivalent-mutants.txt: each names one change that scripts/mutate can make.

An entry whose line has changed would hide nothing today, and whatever gets that line later. One that
fits several lines of its file would hide those that nobody has thought about.
"""

import sys
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
sys.dont_write_bytecode = True
sys.path.insert(0, str(PROJECT / "scripts/mutate.d"))

from mutations import mutationsOf  # noqa: E402
from records import readEquivalents  # noqa: E402


def main() -> int:
    listed = readEquivalents(PROJECT / "tests/equivalent-mutants.txt")
    possible = set()
    for file in sorted({file for file, _, _ in listed}):
        path = PROJECT / file
        if path.is_file():
            possible |= {mutant.key for mutant in mutationsOf(file, path.read_text())}
    unknown = [key for key in listed if key not in possible]
    for file, before, after in unknown:
        print(f"{file} has no such mutant, or several:\n  - {before}\n  + {after}")
    print(f"{len(listed)} mutants listed, {len(unknown)} unknown")
    return 1 if unknown or not listed else 0


if __name__ == "__main__":
    sys.exit(main())
