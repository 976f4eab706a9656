#!/usr/bin/env python3
"""The words of the Arabic texts: windows, messages, help, installer and notes keep to the list of
terms in CONTRIBUTING.md, which names for each term what is not written in its place."""

import re
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent / "support"))
from program_texts import ROOT, program_texts  # noqa: E402

ARABIC = re.compile("[\u0621-\u064a]")
# Vowel signs and the stroke that lengthens a word: the same word is written with or without them.
UNREAD = re.compile("[\u064b-\u0652\u0640\u200e\u200f\u202a-\u202c]")
LETTER = "[\u0621-\u064a]"
# "and", "then", "by", "as", "for" and the article are written together with the word behind them.
PREFIXES = "(?:[وف]?[بكل]?)?(?:ال|لل)?"
FILES = ("Help/Vaultwright.htm", "packaging/Portable.txt", "packaging/Installer.sql",
         "packaging/winget/*.locale.ar.yaml", "ui/Vaultwright.rc")
# Texts that are kept to the letter; they were there before the list.
KEPT = ("هل تستخدم بيانات مهمة على حاسبك؟", "إن نمط الأرقام المستعمل غير صالح:")

offences = []


def plain(text):
    return UNREAD.sub("", " ".join(text.split()))


def terms():
    """Rows of the list: English, Arabic ones, and what is not written."""
    text = (ROOT / "CONTRIBUTING.md").read_text(encoding="utf-8")
    part = re.search(r"^## Arabic terms\n(.*?)(?=^## |\Z)", text, re.MULTILINE | re.DOTALL)
    rows = []
    for line in part[1].splitlines() if part else ():
        cells = [cell.strip() for cell in line.strip("|").split("|")]
        if len(cells) == 3 and ARABIC.search(cells[1]):
            rows.append([[word.strip() for word in cell.split("،") if word.strip()]
                         for cell in cells])
    return rows


def pattern(term):
    """A term as it may stand in a sentence; "*" at its end stands for any ending."""
    words = plain(term).rstrip("*")
    return re.compile(f"(?<!{LETTER}){PREFIXES}{re.escape(words)}" +
                      (f"{LETTER}*" if term.endswith("*") else f"(?!{LETTER})"))


def texts():
    """What users read in Arabic, with the place where it stands."""
    for name, text in program_texts():
        if ARABIC.search(text) and not text.startswith(KEPT):
            yield name, plain(text)
    for files in FILES:
        found = sorted(ROOT.glob(files))
        if not found:
            offences.append(f"{files}: is not there")
        for path in found:
            # A sentence may go on in the next line; tags part nothing.
            text = path.read_text(encoding="utf-8")
            for paragraph in re.split(r"\n\s*\n|</(?:p|li|td|th|dd|dt|h[1-6]|figcaption)>", text):
                words = plain(re.sub(r"<(?!img)[^>]*>", " ", paragraph))
                if ARABIC.search(words):
                    yield path.relative_to(ROOT).as_posix(), words


# The two signs of "-an" are written in the order of Windows: the letter, then the sign.
SIGN_FIRST = "\u064b\u0627"


def check_spelling():
    sources = list(program_texts())
    sources += [(path.relative_to(ROOT).as_posix(), path.read_text(encoding="utf-8"))
                for files in FILES for path in sorted(ROOT.glob(files))]
    for name, text in sources:
        for match in re.finditer(f"{LETTER}+{SIGN_FIRST}", text):
            offences.append(f"{name}: “{match[0]}” has its sign before the letter")


def main():
    rows, everything = terms(), list(texts())
    check_spelling()
    for english, arabic, wrong in rows:
        for term in wrong:
            for name, text in everything:
                for match in pattern(term).finditer(text):
                    around = text[max(0, match.start() - 30):match.end() + 30]
                    offences.append(f"{name}: “{match[0]}” in “{around}”: "
                                    f"{'/'.join(english)} is {' or '.join(arabic)}")
        for term in arabic:
            if not any(pattern(term).search(text) for _, text in everything):
                offences.append(f"CONTRIBUTING.md: no text uses {term}")
    for offence in offences:
        print(offence)
    print(f"{len(rows)} terms, {len(everything)} texts, {len(offences)} offences")
    return 1 if offences or len(rows) < 25 or len(everything) < 300 else 0


sys.exit(main())
