#!/usr/bin/env python3
"""The Help pages: every link and picture exists, nothing comes from a network, both languages have
the same sections, steps, tables, commands and pictures, and what they quote from windows, messages
and the README is what stands there. Beside the program in the build folder (VW_BUILD) lie the same
pages."""

import os
import re
import struct
import sys
from html.parser import HTMLParser
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent / "support"))
from program_texts import ROOT, program_texts  # noqa: E402

HELP = ROOT / "Help"
PAGES = {"en": HELP / "en" / "Vaultwright.htm", "ar": HELP / "Vaultwright.htm"}
LARGEST = 700_000  # bytes of all of Help

VOID = {"meta", "link", "img", "br", "hr", "col", "wbr", "input"}
FORBIDDEN = {"script", "iframe", "object", "embed", "base", "form", "style", "video", "audio"}
# What both languages have in common, in this order.
STRUCTURE = {"header", "nav", "main", "footer", "section", "h1", "h2", "h3", "p", "ul", "ol", "li",
             "dl", "dt", "dd", "table", "caption", "thead", "tbody", "tr", "th", "td", "figure",
             "img", "figcaption", "pre", "aside"}
ARABIC = re.compile("[\u0600-\u06ff]")

offences = []


def tell(place, text):
    offences.append(f"{place}: {text}")


class Element:
    def __init__(self, tag, attributes, line, language):
        self.tag, self.attributes, self.line = tag, attributes, line
        self.language = attributes.get("lang") or language
        self.text = ""

    def words(self):
        return " ".join(self.text.split())


class Page(HTMLParser):
    """All elements of a page in their order, each with the text in it."""

    def __init__(self, path):
        super().__init__()
        self.name = str(path.relative_to(ROOT))
        self.path, self.all, self.open = path, [], []
        self.feed(path.read_text(encoding="utf-8"))
        for left in self.open:
            tell(f"{self.name}:{left.line}", f"<{left.tag}> is not closed")

    def handle_starttag(self, tag, attrs):
        line = self.getpos()[0]
        element = Element(tag, dict(attrs), line, self.open[-1].language if self.open else None)
        self.all.append(element)
        if tag in FORBIDDEN:
            tell(f"{self.name}:{line}", f"<{tag}>")
        if tag not in VOID:
            self.open.append(element)

    def handle_endtag(self, tag):
        if not self.open or self.open[-1].tag != tag:
            tell(f"{self.name}:{self.getpos()[0]}", f"</{tag}> closes nothing")
            return
        self.open.pop()

    def handle_data(self, data):
        for element in self.open:
            element.text += data

    def those(self, *tags):
        return [element for element in self.all if element.tag in tags]

    def of_class(self, name):
        return [e for e in self.all if name in (e.attributes.get("class") or "").split()]

    def at(self, element):
        return f"{self.name}:{element.line}"

    def ids(self):
        return [e.attributes["id"] for e in self.all if "id" in e.attributes]


def exists_as_written(path):
    """Whether the file exists with exactly these letters, as a case-sensitive disk sees it."""
    path = Path(path)
    return path.is_file() and path.name in {entry.name for entry in path.parent.iterdir()}


def picture_size(path):
    head = path.read_bytes()[:24]
    if head[:8] != b"\x89PNG\r\n\x1a\n":
        return None
    return struct.unpack(">II", head[16:24])


def check_addresses(page, pages, used):
    for element in page.all:
        for name, value in element.attributes.items():
            if name.startswith("on") or name in ("style", "srcset", "poster", "background"):
                tell(page.at(element), f"attribute {name}")
            if name not in ("href", "src"):
                continue
            if re.match(r"[a-z][a-z0-9+.-]*:|//|/|\\", value, re.IGNORECASE):
                tell(page.at(element), f"{value} does not stay among the pages")
                continue
            file, _, anchor = value.partition("#")
            target = (page.path.parent / file).resolve() if file else page.path
            if not exists_as_written(target) or HELP not in target.parents:
                tell(page.at(element), f"{value} does not exist")
                continue
            used.add(target)
            if anchor and anchor not in next(p for p in pages if p.path == target).ids():
                tell(page.at(element), f"{value} leads nowhere")


def check_pictures(page):
    for image in page.those("img"):
        where, attributes = page.at(image), image.attributes
        if attributes.get("alt") is None:
            tell(where, "a picture without words for those who do not see it")
        elif not attributes["alt"].strip() and "images/program" not in attributes["src"]:
            tell(where, "a picture that tells something, with empty words")
        path = page.path.parent / attributes["src"]
        size = picture_size(path) if path.is_file() else None
        if size is None:
            tell(where, f"{attributes['src']} is no picture")
            continue
        try:
            shown = int(attributes["width"]), int(attributes["height"])
        except (KeyError, ValueError):
            tell(where, "a picture without its size")
            continue
        if abs(shown[0] * size[1] / (shown[1] * size[0]) - 1) > 0.01:
            tell(where, f"{attributes['src']} is {size[0]} by {size[1]}: distorted")


def check_text_structure(page):
    html = page.those("html")[0].attributes
    language = "ar" if page.path == PAGES["ar"] else "en"
    if (html.get("lang"), html.get("dir")) != (language, {"ar": "rtl", "en": "ltr"}[language]):
        tell(page.name, f"its language or direction is wrong: {html}")
    ids = page.ids()
    for name in sorted({name for name in ids if ids.count(name) > 1}):
        tell(page.name, f"id {name} twice")
    level = 0
    for heading in page.those("h1", "h2", "h3", "h4"):
        if int(heading.tag[1]) > level + 1:
            tell(page.at(heading), f"<{heading.tag}> leaves a level out")
        level = int(heading.tag[1])
    for cell in page.those("th"):
        if "scope" not in cell.attributes:
            tell(page.at(cell), "<th> without scope")
    if language == "ar":
        for element in page.those("code", "kbd", "pre"):
            if element.attributes.get("dir") != "ltr":
                tell(page.at(element), f"“{element.words()}” does not read from left to right")
    contents = []
    for index, element in enumerate(page.all):
        if element.tag == "section":
            heading = next(e for e in page.all[index:] if e.tag == "h2")
            contents.append((element.attributes.get("id"), heading.words()))
    inside = page.all[page.all.index(page.those("nav")[0]):page.all.index(page.those("main")[0])]
    listed = [(e.attributes["href"][1:], e.words()) for e in inside if e.tag == "a"]
    if listed != contents or len(contents) < 10:
        tell(page.name, f"the table of contents is {listed}, the sections are {contents}")


def check_language_of_quotes(page):
    for element in page.of_class("ui") + page.of_class("said"):
        language = "ar" if ARABIC.search(element.text) else "en"
        if element.language != language:
            tell(page.at(element), f"“{element.words()}” is read aloud as {element.language}")
        other = language != page.those("html")[0].attributes.get("lang")
        if other and element.attributes.get("dir") != {"ar": "rtl", "en": "ltr"}[language]:
            tell(page.at(element), f"“{element.words()}” does not name its direction")


def skeleton(page):
    """What has to be the same in both languages, with the lines where it stands."""
    parts = []
    for element in page.all:
        if element.tag not in STRUCTURE:
            continue
        attributes = element.attributes
        part = [element.tag, attributes.get("id", ""), attributes.get("scope", ""),
                attributes.get("colspan", ""), attributes.get("class", "").replace("ui", "").strip()]
        if element.tag == "img":
            part.append(re.sub(r".*/|-(en|ar)\.png$", "", attributes["src"]))
        if element.tag == "pre":
            part.append(element.text)
        parts.append((part, element.line))
    return parts


def compare_languages(english, arabic):
    for (one, line), (other, otherLine) in zip(skeleton(english), skeleton(arabic)):
        if one != other:
            tell(f"{english.name}:{line}", f"{one} is {other} in {arabic.name}:{otherLine}")
            break
    counts = [len(skeleton(page)) for page in (english, arabic)]
    if counts[0] != counts[1]:
        tell(english.name, f"{counts[0]} parts, but {counts[1]} in Arabic")
    for what, collect in {
            "commands and paths": lambda page: [e.words() for e in page.those("code", "kbd")],
            "links": lambda page: [e.attributes["href"] for e in page.those("a")
                                   if e.attributes["href"].startswith("#")]}.items():
        one, other = sorted(collect(english)), sorted(collect(arabic))
        if one != other:
            tell(english.name, f"other {what} in English {subtract(one, other)} than in Arabic "
                               f"{subtract(other, one)}")


def subtract(these, those):
    rest = list(those)
    return [x for x in these if x not in rest or rest.remove(x)]


def check_quotes(page, texts):
    captions, everything = set(texts), "\n".join(texts)
    for element in page.of_class("ui"):
        if element.words() not in captions:
            tell(page.at(element), f"no window says “{element.words()}”")
    for element in page.of_class("said"):
        if element.words() not in everything:
            tell(page.at(element), f"no message says “{element.words()}”")


def check_menus(english, arabic):
    """Every entry of the main window's menus is explained in both languages."""
    table = (ROOT / "ui" / "MainMenuTable.cpp").read_text(encoding="utf-8")
    captions = re.findall(r'\.caption = \{L"([^"]*)", L"([^"]*)"\}', table)
    if len(captions) < 30:
        tell("ui/MainMenuTable.cpp", f"{len(captions)} captions found")
    for page, column in ((english, 0), (arabic, 1)):
        explained = {element.words() for element in page.of_class("ui")}
        for caption in captions:
            if caption[column] not in explained:
                tell(page.name, f"the menu entry “{caption[column]}” is not explained")


def exit_codes_of_page(page):
    begin = next(i for i, e in enumerate(page.all) if e.attributes.get("id") == "exit-codes")
    rows = []
    for element in page.all[begin:]:
        if element.tag == "tr":
            rows.append([])
        elif element.tag in ("th", "td") and rows:
            rows[-1].append(element.words())
        elif element.tag in ("h2", "h3") and rows:
            break
    return rows[1:]


def exit_codes_of_readme():
    text = (ROOT / "README.md").read_text(encoding="utf-8")
    part = re.search(r"^#+ Exit codes\n(.*?)(?=^#)", text, re.MULTILINE | re.DOTALL)
    rows = re.findall(r"^\| *([^|]+?) *\| *([^|]+?) *\|$", part[1] if part else "", re.MULTILINE)
    return [list(row) for row in rows if row[0] != "code" and not row[0].startswith("-")]


def check_exit_codes(english, arabic):
    readme = exit_codes_of_readme()
    if len(readme) < 5:
        tell("README.md", "no table of exit codes")
    for page in (english, arabic):
        rows = exit_codes_of_page(page)
        if len(rows) != len(readme):
            tell(page.name, f"{len(rows)} exit codes, the README has {len(readme)}")
        for row, known in zip(rows, readme):
            expected = known + [f"0x{int(known[0]):X}" if known[0].isdigit() else ""]
            if page is arabic:
                expected[1] = row[1]
                expected[0] = known[0] if known[0].isdigit() else row[0]
            if row != expected:
                tell(page.name, f"exit code {row}, expected {expected}")


def check_files(used):
    total = 0
    for path in sorted(HELP.rglob("*")):
        if not path.is_file():
            continue
        total += path.stat().st_size
        if path not in used and path not in PAGES.values():
            tell(path.relative_to(ROOT), "no page uses it")
        if path.suffix == ".css" and re.search(r"url\(|@import", path.read_text(encoding="utf-8")):
            tell(path.relative_to(ROOT), "fetches something")
    if total > LARGEST:
        tell("Help", f"{total} bytes, at most {LARGEST}")
    return total


def check_built():
    build = os.environ.get("VW_BUILD")
    if not build or not Path(build, "bin", "Vaultwright.exe").is_file():
        return
    files = {}
    for folder in (HELP, Path(build, "bin", "Help")):
        for path in folder.rglob("*"):
            if path.is_file():
                files.setdefault(str(path.relative_to(folder)), []).append(path.read_bytes())
    for name, contents in sorted(files.items()):
        if len(contents) != 2 or contents[0] != contents[1]:
            tell(f"Help/{name}", "is not the one beside the program")


def main():
    english, arabic = Page(PAGES["en"]), Page(PAGES["ar"])
    pages, used = (english, arabic), set()
    texts = [text for _, text in program_texts()]
    for page in pages:
        check_addresses(page, pages, used)
        check_pictures(page)
        check_text_structure(page)
        check_language_of_quotes(page)
        check_quotes(page, texts)
    compare_languages(english, arabic)
    check_menus(english, arabic)
    check_exit_codes(english, arabic)
    check_built()
    total = check_files(used)
    for offence in offences:
        print(offence)
    print(f"{len(skeleton(english))} parts, {len(english.those('a'))} links, "
          f"{len(english.of_class('ui')) + len(english.of_class('said'))} quotes in English, "
          f"{total} bytes, {len(offences)} offences")
    return 1 if offences else 0


sys.exit(main())
