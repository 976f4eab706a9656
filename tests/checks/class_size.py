#!/usr/bin/env python3
"""No class has more than 20 methods, except those whose members are given and Form of the toolkit.

Counts the member functions that a class declares, its own and overridden ones, without constructors,
destructors and assignments.
"""
import pathlib
import re
import sys

MOST = 20
EXCEPTIONS = {"Form", "CPackage", "CCommonAPI"}
LAYERS = "platform fsutil list engine ui progress restore app console".split()


def closing(text, start):
    """The index behind the brace that closes the one before `start`."""
    depth = 1
    while depth:
        depth += {"{": 1, "}": -1}.get(text[start], 0)
        start += 1
    return start


def declarations(body):
    """The declarations of a class, without the bodies of its functions and nested classes."""
    flat, depth = [], 0
    for char in body:
        depth += (char == "{") - (char == "}")
        if depth == 0:
            flat.append(";" if char == "}" else char)
    for text in "".join(flat).split(";"):
        yield re.sub(r"\[\[[^\]]*\]\]|\b(public|private|protected)\s*:", "", text).strip()


def methods(name, body):
    for text in declarations(body):
        if re.match(r"(using|friend|enum|class|struct|static constexpr|std::function)\b", text):
            continue
        found = re.search(r"([~\w]+|operator\S+)\s*\(", text)
        if not found or "= delete" in text:
            continue
        if found[1].lstrip("~") not in (name, "decltype", "alignas"):
            yield found[1]


def main():
    root = pathlib.Path(__file__).resolve().parents[2]
    classes = offences = 0
    for layer in LAYERS:
        before = classes
        for path in sorted((root / layer).rglob("*")):
            if path.suffix not in (".h", ".cpp"):
                continue
            text = re.sub(r"//[^\n]*", "", path.read_text(encoding="utf-8"))
            for found in re.finditer(r"(?<!enum )\b(?:class|struct)\s+([\w:]+)(\s+final)?(\s*:[^;{]*)?\s*\{", text):
                name = found[1].split("::")[-1]
                body = text[found.end() : closing(text, found.end()) - 1]
                count = len(list(methods(name, body)))
                classes += 1
                if count > MOST and name not in EXCEPTIONS:
                    print(f"{path.relative_to(root)}: {name} has {count} methods, at most {MOST}")
                    offences += 1
        if classes == before:
            print(f"{layer}: no class found")
            offences += 1
    print(f"{classes} classes, {offences} offences")
    return 1 if offences else 0


if __name__ == "__main__":
    sys.exit(main())
