#!/usr/bin/env python3
"""The order in which texts of both directions are shown, as a library of the Unicode bidirectional
algorithm computes it: paths in right-to-left boxes and tool tips stand from left to right, Arabic
sentences from right to left with their punctuation at the end, and the Arabic help page holds no
path outside of an element with a direction of its own.

usage: display_order.py DISPLAY_MARKS   (the program that DisplayMarks.cpp makes)"""

import ctypes
import re
import subprocess
import sys
from html.parser import HTMLParser
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "checks" / "support"))
from program_texts import ROOT, program_texts  # noqa: E402

ARABIC = re.compile("[\u0621-\u064a]")
MARKS = "\u200e\u200f\u202a\u202b\u202c\u2066\u2067\u2069"
LEFT_TO_RIGHT, RIGHT_TO_LEFT = 0x110, 0x111

# Paths that a right-to-left text shows in another order when nothing is done, and some that it
# does not.
SCRAMBLED = ("C:\\العمل\\عقود\\Contract.pdf", "C:\\العمل\\عقود\\عقد رقم (1).pdf", "C:\\عقود\\",
             "C:\\Users\\Mona\\", "\\\\server\\مشترك\\نسخ\\", "\\\\server\\share", "C:\\٢٠٢٤\\١٢\\a.txt",
             "R:\\Backup\\Work«0001»", "D:\\صور 2024\\عيد\\IMG 1.jpg", "C:\\")
PLAIN = ("C:\\Docs\\a.txt", "C:\\Docs\\2024", "C:\\Docs (old)\\b.txt", "R:\\Backup\\Plan«0001».doc")

# Names of both scripts. The first letter of each decides how a list shows it.
NAMES = ("Report عقد.docx", "Plan (نسخة).doc", "عقد الإيجار (1).pdf", "2026 عقد.pdf", "رسالة.docx")

bidi = ctypes.CDLL("libfribidi.so.0")
offences = []


def tell(text):
    offences.append(text)


def positions(text, base):
    """Where each character of one line stands, counted from the left."""
    count = len(text)
    line = (ctypes.c_uint32 * count)(*map(ord, text))
    visual = (ctypes.c_uint32 * (count + 1))()
    where = (ctypes.c_int * count)()
    direction = ctypes.c_uint32(base)
    if not bidi.fribidi_log2vis(line, count, ctypes.byref(direction), visual, where, None, None):
        raise RuntimeError("the library computed no order")
    return list(where)


def seen(text, base):
    """The visible characters of a line from left to right."""
    where = positions(text, base)
    order = sorted((at, letter) for at, letter in zip(where, text) if letter not in MARKS)
    return "".join(letter for _, letter in order)


def path_order(text, base):
    """Whether the folders of a path with marks stand from left to right, each in one piece."""
    where = positions(text, base)
    pieces, fresh = [], True
    for at, letter in zip(where, text):
        if letter in MARKS:
            continue
        if fresh or letter == "\\":
            pieces.append([])
        pieces[-1].append(at)
        fresh = letter == "\\"
    return all(max(left) < min(right) for left, right in zip(pieces, pieces[1:]))


def sentence_order(text, base):
    """Whether an Arabic sentence starts at the right and ends at the left, word for word."""
    where = positions(text, base)
    words, fresh = [], True
    for at, letter in zip(where, text):
        if letter in MARKS:
            continue
        if letter == " ":
            fresh = True
            continue
        if fresh:
            words.append([])
        words[-1].append((at, letter))
        fresh = False
    # Latin words that follow each other stand from left to right among themselves.
    spans, latin = [], False
    for word in words:
        isLatin = not ARABIC.search("".join(letter for _, letter in word))
        places = [at for at, _ in word]
        if isLatin and latin:
            spans[-1] += places
        else:
            spans.append(places)
        latin = isLatin
    last = [at for at, letter in zip(where, text) if letter not in MARKS]
    ends = last[-1] == min(last) or text.rstrip(MARKS)[-1].isalnum()
    return ends and all(min(right) > max(left) for right, left in zip(spans, spans[1:]))


def arabic_texts():
    """Every text of the sources with Arabic letters, by file."""
    return [(name, text.strip("\r\n")) for name, text in program_texts() if ARABIC.search(text)]


def with_marks(program, requests):
    lines = "".join(f"{kind}\t{text}\n".replace("\r", "") for kind, text in
                    ((kind, text.replace("\r\n", "\x01").replace("\n", "\x01"))
                     for kind, text in requests))
    answer = subprocess.run([program], input=lines.encode(), stdout=subprocess.PIPE, check=True)
    texts = answer.stdout.decode().split("\n")[:-1]
    if len(texts) != len(requests):
        raise RuntimeError(f"{len(requests)} texts asked, {len(texts)} answered")
    return [text.replace("\x01", "\n") for text in texts]


def check_the_check():
    """The samples have to be scrambled without marks, else the tests below prove nothing."""
    for path in SCRAMBLED:
        if path_order(path, RIGHT_TO_LEFT):
            tell(f"the sample {path} needs no marks")
    for path in PLAIN:
        if not path_order(path, RIGHT_TO_LEFT):
            tell(f"the sample {path} needs marks")


def check_boxes(program, texts):
    """Every Arabic text as a right-to-left box with a path below it."""
    cases = [(text, path) for _, text in texts for path in SCRAMBLED + PLAIN]
    marked = with_marks(program, [("box", f"{text}\r\n{path}") for text, path in cases])
    for (text, path), box in zip(cases, marked):
        *sentence, last = box.split("\n")
        if "\n".join(sentence) != text.replace("\r\n", "\n"):
            tell(f"the box changes its text: {text!r}")
        if not path_order(last, RIGHT_TO_LEFT):
            tell(f"below {text!r}: {path} is shown as {seen(last, RIGHT_TO_LEFT)}")
        if path in PLAIN and last != path:
            tell(f"below {text!r}: {path} gets marks and needs none")
    return len(cases)


def check_tips(program, texts):
    """Tool tips look the same whether or not the tip takes over the direction of its window."""
    tips = [(file, text) for file, text in texts if file.startswith("ui/") and "\n" not in text]
    for (file, text), tip in zip(tips, with_marks(program, [("tip", text) for _, text in tips])):
        for base in (LEFT_TO_RIGHT, RIGHT_TO_LEFT):
            if not sentence_order(tip, base):
                tell(f"{file}: the tip {text!r} is shown as {seen(tip, base)}")
            # The last words on a line of their own, which the embedding does not reach.
            rest = tip.rsplit(" ", 2)
            if (len(rest) == 3 and ARABIC.match(rest[1])
                    and not re.search("[A-Za-z0-9]", rest[1] + rest[2])):
                if not sentence_order(" ".join(rest[1:]), LEFT_TO_RIGHT):
                    tell(f"{file}: the end of the tip {text!r} is shown in another order")
    paths = SCRAMBLED + PLAIN
    for path, tip in zip(paths, with_marks(program, [("path", path) for path in paths])):
        for base in (LEFT_TO_RIGHT, RIGHT_TO_LEFT):
            if not path_order(tip, base):
                tell(f"the tip {path} is shown as {seen(tip, base)}")
    return len(tips) + len(paths)


def check_names(program):
    """Names stand in boxes, below a question that ends with a colon, and in tips as in lists."""
    boxes = with_marks(program, [("box", f"هل تريد حذف الملف:\r\n{name}") for name in NAMES])
    tips = with_marks(program, [("name", name) for name in NAMES])
    scrambled = 0
    for name, box, tip in zip(NAMES, boxes, tips):
        isLatin = ARABIC.search(name).start() > len(re.match("[^A-Za-z]*", name)[0])
        wanted = seen(name, LEFT_TO_RIGHT if isLatin else RIGHT_TO_LEFT)
        scrambled += seen(name, RIGHT_TO_LEFT) != wanted
        for text, base in ((box.split("\n")[-1], RIGHT_TO_LEFT), (tip, RIGHT_TO_LEFT),
                           (tip, LEFT_TO_RIGHT)):
            if seen(text, base) != wanted:
                tell(f"the name {name} is shown as {seen(text, base)}")
    if scrambled < 2:
        tell("the sample names need no marks")
    return len(NAMES)


def check_report(program, texts):
    """Lines of the Arabic report box, which reads from left to right."""
    lines = [text for file, text in texts if file.startswith("engine/")]
    for text, shown in zip(lines, with_marks(program, [("report", text) for text in lines])):
        if "\\" not in text and not all(sentence_order(line, LEFT_TO_RIGHT)
                                        for line in shown.split("\n")):
            tell(f"the report shows {text!r} as {seen(shown, LEFT_TO_RIGHT)}")
    paths = [before + path + behind for path in SCRAMBLED + PLAIN
             for before, behind in (("", ""), ("Backing: ", ""), ("Backing:: ", " - "))]
    for path, shown in zip(paths, with_marks(program, [("report", path) for path in paths])):
        if not path_order(shown, LEFT_TO_RIGHT):
            tell(f"the report shows {path!r} as {seen(shown, LEFT_TO_RIGHT)}")
        if ARABIC.search(path) is None and not re.search("[٠-٩]", path) and shown != path:
            tell(f"the line {path!r} of the report gets marks and needs none")
    return len(lines) + len(paths)


class HelpTexts(HTMLParser):
    """The Arabic help page: what it says outside of elements with a direction, and its
    attributes."""

    def __init__(self, page):
        super().__init__()
        self.open, self.plain = [], []
        self.feed(page.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attrs):
        attributes = dict(attrs)
        for name in ("alt", "title", "aria-label"):
            if attributes.get(name):
                self.plain.append((self.getpos()[0], attributes[name]))
        if tag not in ("meta", "link", "img", "br"):
            self.open.append("dir" in attributes and tag != "html")

    def handle_endtag(self, tag):
        self.open.pop()

    def handle_data(self, data):
        if not any(self.open) and data.strip():
            self.plain.append((self.getpos()[0], " ".join(data.split())))


def check_help(page):
    texts = HelpTexts(page).plain
    for line, text in texts:
        for path in re.findall(r"\b[A-Za-z]:(?!/)\S*|\\\\\S+|\S*\\\S*", text):
            tell(f"{page.relative_to(ROOT)}:{line}: {path} is shown as part of {text!r}")
    return len(texts)


def main():
    program = sys.argv[1]
    texts = arabic_texts()
    check_the_check()
    boxes = check_boxes(program, texts)
    tips = check_tips(program, texts)
    check_names(program)
    report = check_report(program, texts)
    page = check_help(ROOT / "Help" / "Vaultwright.htm")
    for offence in offences:
        print(offence)
    if min(len(texts) - 80, tips - 80, report - 40, page - 300) < 0:
        print(f"too little was found: {len(texts)} texts, {report} lines of the report")
        return 1
    print(f"{boxes} boxes, {tips} tips, {report} lines of the report, {page} texts of the help, "
          f"{len(offences)} offences")
    return 1 if offences else 0


sys.exit(main())
