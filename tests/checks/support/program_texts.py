"""The texts in the sources of the program, for the checks that compare them with something."""

import re
from pathlib import Path

ROOT = Path(__file__).resolve().parents[3]
LAYERS = ("app", "console", "engine", "fsutil", "list", "platform", "progress", "restore", "ui")
LITERAL = re.compile(r'L"((?:[^"\\\n]|\\.)*)"(\s*)')
ESCAPES = {"n": "\n", "r": "\r", "t": "\t"}


def program_texts():
    """Every wide text literal, with the name of its file; neighbouring ones are one text."""
    texts = []
    for layer in LAYERS:
        for path in sorted((ROOT / layer).rglob("*")):
            if path.suffix not in (".h", ".cpp"):
                continue
            name, end = path.relative_to(ROOT).as_posix(), -1
            for match in LITERAL.finditer(path.read_text(encoding="utf-8")):
                text = re.sub(r"\\(.)", lambda m: ESCAPES.get(m[1], m[1]), match[1])
                if match.start() == end:
                    texts[-1] = (name, texts[-1][1] + text)
                else:
                    texts.append((name, text))
                end = match.end()
    return texts
