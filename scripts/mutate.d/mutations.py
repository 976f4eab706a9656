"""Finds the small changes that can be made in a C++ source, one at a time.

Works on the text, not on a syntax tree: what does not compile is discarded later. The sources are
formatted by clang-format, so that binary operators have a space on both sides and templates have not.
"""
import hashlib
import re
from collections import Counter
from dataclasses import dataclass, replace

COMMENT_OR_LITERAL = re.compile(
    r'''//[^\n]* | /\*.*?\*/ | R"([^(\s]*)\(.*?\)\1" | "(?:\\.|[^"\\\n])*"
        | (?P<number>\b\d[\w.']*) | '(?:\\.|[^'\\\n])+' ''', re.S | re.X)
PREPROCESSOR = re.compile(r'^[ \t]*\#(?:[^\n]*\\\n)*[^\n]*', re.M)

SWAPS = {'<': '<=', '<=': '<', '>': '>=', '>=': '>', '==': '!=', '!=': '==',
         '&&': '||', '||': '&&', '+': '-', '-': '+', '+=': '-=', '-=': '+='}
BINARY = re.compile(r'(?<= )(<=|>=|==|!=|<|>|&&|\|\||\+=|-=|\+|-)(?=\s)')
NEGATION = re.compile(r'(?<![\w)\]])!(?=[\w(])')
TERNARY = re.compile(r'(?<=\s)\?(?=\s)')
NUMBER = re.compile(r"(?<![\w.])\d[\d']*(?![\w.'])")
TRUTH = re.compile(r'\b(true|false)\b')
CONDITION = re.compile(r'\b(?:if|while) (?=\()')
ONE_TEST = re.compile(r'\s*(?:!\w[\w.:]*(?:->\w+)*(?:\([^()]*\))?|[^=!<>&|?]+ [!=]= [^=!<>&|?]+)\s*$')
RETURN = re.compile(r'\breturn ([\w:.>\[\]-]+(?:\([^;?]*\))?);')

SCOPE = re.compile(r'^(?:inline )?(?:namespace|struct|class|enum|union|extern)\b')
BLOCK_BEFORE = re.compile(
    r'(?:\)|\]|\b(?:else|do|try|const|noexcept|override|final|mutable)|->\s*[\w:<>*& ]+)$')
CONTROL = re.compile(r'^(?:\}?\s*else\b\s*)?(?:(?:if constexpr|if|for|while|switch)\s*(?=\()|)')
LABEL = re.compile(r'^(?:case\b[^:]*(?:::[^:]*)*|default|public|private|protected)\s*:(?!:)\s*')
NOT_REMOVED = re.compile(
    r'^(?:return\b[^;]+|using|namespace|struct|class|enum|union|template|static_assert|typedef|'
    r'friend|static|constexpr|extern|throw|do\b|case|default|[\w.]+\.reserve\()')
DECLARED = re.compile(r'^(?:const )?[\w:<>, *&]+[ *&](\w+)(?:\(|\{| =|$)')


@dataclass(frozen=True)
class Mutation:
    """One change: the characters from start to end become `replacement`."""
    file: str
    line: int
    start: int
    end: int
    replacement: str
    before: str  # the lines that change, on one line; behind it which of several equal ones
    after: str

    @property
    def key(self):
        return (self.file, self.before, self.after)

    def apply(self, text):
        return text[:self.start] + self.replacement + text[self.end:]


def masked(text):
    """The text with comments, literals and preprocessor lines blanked, character for character."""
    def blank(match):
        if match.group(0)[0].isdigit():
            return match.group(0)
        return re.sub(r'[^\n]', '_' if match.group(0)[-1] in '"\'' else ' ', match.group(0))
    return PREPROCESSOR.sub(lambda m: re.sub(r'[^\n]', ' ', m.group(0)),
                            COMMENT_OR_LITERAL.sub(blank, text))


def closing(text, opening):
    """The position of the bracket that closes the one at `opening`, or -1."""
    depth = 0
    for position in range(opening, len(text)):
        if text[position] in '([{':
            depth += 1
        elif text[position] in ')]}':
            depth -= 1
            if depth == 0:
                return position
    return -1


def conditions(code):
    """The spans of the conditions of if and while, without an initialiser before them."""
    for match in CONDITION.finditer(code):
        end = closing(code, match.end())
        start = code.rfind(';', match.end(), end) + 1 or match.end() + 1
        if end > 0 and code[start:end].strip():
            yield start, end


def statements(code):
    """The spans of the statements within functions, each without its semicolon."""
    contexts = []  # (is a block of statements, depth of parentheses) around the current one
    isBlock, depth, start = False, 0, 0
    position = 0
    while position < len(code):
        c = code[position]
        before = code[start:position].strip()
        if c in '([':
            depth += 1
        elif c in ')]':
            depth -= 1
        elif c == '{':
            opensScope = depth == 0 and SCOPE.match(before)
            opensBlock = BLOCK_BEFORE.search(before) or (isBlock and before == '')
            if opensScope or opensBlock:
                contexts.append((isBlock, depth, start))
                isBlock, depth, start = not opensScope, 0, position + 1
            else:  # braces of an expression
                position = max(position, closing(code, position))
        elif c == '}':
            if not contexts:
                return
            isBlock, depth, start = contexts.pop()
            if depth == 0:
                start = position + 1
        elif c == ';' and depth == 0:
            if isBlock:
                yield start, position
            start = position + 1
        position += 1


def innerStatement(code, start, end):
    """The span without blanks, labels and the heads of if, else, for and while before it."""
    while True:
        while start < end and code[start].isspace():
            start += 1
        label = LABEL.match(code[start:end])
        control = CONTROL.match(code[start:end])
        if label:
            start += label.end()
        elif control and control.end() > 0:
            start += control.end()
            if start < end and code[start] == '(':
                start = closing(code, start) + 1
        else:
            return start, end


def blockEnd(code, start):
    """Where the block ends that a place is in."""
    depth = 0
    for brace in re.compile('[{}]').finditer(code, start):
        depth += 1 if brace.group() == '{' else -1
        if depth < 0:
            return brace.start()
    return len(code)


def removals(code):
    """The spans of statements that can be left out: calls, assignments, jumps, unused guards."""
    for start, end in statements(code):
        start, end = innerStatement(code, start, end)
        statement = code[start:end].strip()
        if not statement or NOT_REMOVED.match(statement):
            continue
        declared = DECLARED.match(statement)
        used = declared and re.search(r'\b%s\b' % declared.group(1),
                                      code[end:blockEnd(code, end)])
        if not used or statement.startswith('return'):
            yield start, end


def edits(text):
    """All (start, end, replacement) of a text."""
    code = masked(text)
    for match in BINARY.finditer(code):
        yield match.start(), match.end(), SWAPS[match.group(0)]
    for match in NEGATION.finditer(code):
        yield match.start(), match.end(), ''
    for match in TERNARY.finditer(code):
        yield match.start(), match.end(), '== 0 ?'
    for match in NUMBER.finditer(code):
        number = int(match.group(0).replace("'", '') or 0)
        yield match.start(), match.end(), str(0 if number == 1 else number + 1)
    for match in TRUTH.finditer(code):
        yield match.start(), match.end(), 'false' if match.group(0) == 'true' else 'true'
    for match in RETURN.finditer(code):
        if match.group(1) not in ('true', 'false'):
            yield match.start(1), match.end(1), '!(%s)' % text[match.start(1):match.end(1)]
    for start, end in conditions(code):
        if not ONE_TEST.match(code[start:end]):  # its inversion is among those above
            yield start, end, '!(%s)' % text[start:end]
    for start, end in removals(code):
        # The lines stay, so that those behind keep their numbers.
        yield start, end, re.sub(r'[^\n]', '', text[start:end])


def numbered(found):
    """The mutations with the place of each among those of one file that have the same text."""
    totals, seen = Counter(m.key for m in found), Counter()
    for mutation in found:
        seen[mutation.key] += 1
        place = f' // {seen[mutation.key]} of {totals[mutation.key]}'
        yield replace(mutation, before=mutation.before + place) if totals[mutation.key] > 1 else mutation


def mutationsOf(file, text):
    """All mutations of one file, in the order of the text."""
    found = []
    for start, end, replacement in sorted(set(edits(text))):
        first = text.rfind('\n', 0, start) + 1
        last = text.find('\n', end)
        before = ' '.join(text[first:last].split())
        after = ' '.join((text[first:start] + replacement + text[end:last]).split())
        line = text.count('\n', 0, start) + 1
        found.append(Mutation(file, line, start, end, replacement, before, after))
    return list(numbered(found))


def digest(text):
    """A short name of a content."""
    data = text if isinstance(text, bytes) else text.encode()
    return hashlib.sha256(data).hexdigest()[:16]
