#!/usr/bin/env python3
"""Every link and picture of the documents leads to a file of the project, and every anchor to a
heading. Links to other places of the world are counted and not followed."""

import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
FENCE = re.compile(r"^(```|~~~).*?^\1\s*$", re.MULTILINE | re.DOTALL)
INLINE = re.compile(r'(!?)\[(?:[^\[\]]|!?\[[^\]]*\](?:\([^)]*\))?)*\]\(\s*<?([^)\s>]+)>?[^)]*\)')
INNER = re.compile(r"(!)\[[^\]]*\]\(\s*<?([^)\s>]+)>?[^)]*\)")
REFERENCE = re.compile(r"^()\[[^\]]+\]:\s+<?(\S+?)>?$", re.MULTILINE)
HTML = re.compile(r'<(?:(img)|a)\b[^>]*?\b(?:src|href)="([^"]+)"')

offences = []


def documents():
    """The documents at the root and in docs."""
    return sorted(ROOT.glob("*.md")) + sorted((ROOT / "docs").rglob("*.md"))


def blanked(match):
    return re.sub(r"[^\n]", " ", match[0])


def prose(path):
    """The text without code, its lines where they were."""
    text = FENCE.sub(blanked, path.read_text(encoding="utf-8"))
    return re.sub(r"`[^`\n]*`", blanked, text)


def anchors(path):
    """The names that headings get where the documents are shown."""
    text, names = FENCE.sub(blanked, path.read_text(encoding="utf-8")), set()
    for heading in re.findall(r"^#{1,6}\s+(.*?)\s*#*$", text, re.MULTILINE):
        plain = re.sub(r"\[([^\]]*)\]\([^)]*\)", r"\1", heading).replace("`", "").lower()
        name = re.sub(r"[^\w\- ]", "", plain).replace(" ", "-")
        number = 0
        while name + (f"-{number}" if number else "") in names:
            number += 1
        names.add(name + (f"-{number}" if number else ""))
    return names | set(re.findall(r'<a (?:id|name)="([^"]+)"', text))


def exists_as_written(path):
    """Whether it exists with exactly these letters, as a case-sensitive disk sees it."""
    while path != ROOT:
        if ROOT not in path.parents or not path.exists():
            return False
        if path.name not in {entry.name for entry in path.parent.iterdir()}:
            return False
        path = path.parent
    return True


def check(path):
    text, found, outside = prose(path), 0, 0
    places = [m for pattern in (INLINE, INNER, REFERENCE, HTML) for m in pattern.finditer(text)]
    for match in {(m.start(2), m[1], m[2]) for m in places}:
        position, picture, target = match
        found += 1
        where = f"{path.relative_to(ROOT)}:{text.count(chr(10), 0, position) + 1}"
        if re.match(r"[a-z][a-z0-9+.-]*:", target, re.IGNORECASE):
            outside += 1
            if picture:
                offences.append(f"{where}: the picture {target} is not in the project")
            continue
        file, _, anchor = target.partition("#")
        goal = (path.parent / file).resolve() if file else path
        if not exists_as_written(goal) or (picture and not goal.is_file()):
            offences.append(f"{where}: {target} does not exist")
        elif anchor and (goal.suffix != ".md" or anchor not in anchors(goal)):
            offences.append(f"{where}: {target} leads nowhere")
    return found, outside


def main():
    paths = documents()
    if len(paths) < 5:
        offences.append(f"only {len(paths)} documents found")
    counts = [check(path) for path in paths]
    for offence in sorted(offences):
        print(offence)
    print(f"{len(paths)} documents, {sum(c[0] for c in counts)} links and pictures, "
          f"{sum(c[1] for c in counts)} of them to other places, {len(offences)} offences")
    return 1 if offences else 0


sys.exit(main())
