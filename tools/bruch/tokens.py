"""Cuts C++ text into tokens. Comments, preprocessor lines and white space are left out."""

import re
from typing import NamedTuple

OPERATORS = [
    "<<=", ">>=", "<=>", "->*", "...", "::", "->", "++", "--", "<<", "<=", ">=", "==", "!=", "&&", "||",
    "+=", "-=", "*=", "/=", "%=", "&=", "|=", "^=",
]

PATTERN = re.compile(
    r"""(?P<skip>\s+|//[^\n]*|/\*.*?\*/)
    |(?P<raw>(?:u8|u|U|L)?R"(?P<mark>[^()\s\\]*)\(.*?\)(?P=mark)")
    |(?P<text>(?:u8|u|U|L)?"(?:\\.|[^"\\\n])*")
    |(?P<char>(?:u8|u|U|L)?'(?:\\.|[^'\\\n])+')
    |(?P<number>\.?\d(?:[eEpP][+-]|'(?=\w)|[\w.])*)
    |(?P<name>[^\W\d]\w*)
    |(?P<op>"""
    + "|".join(re.escape(op) for op in OPERATORS)
    + r"|.)",
    re.VERBOSE | re.DOTALL,
)
PREPROCESSOR = re.compile(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", re.MULTILINE)
CLOSING = {"(": ")", "[": "]", "{": "}"}


class Token(NamedTuple):
    kind: str  # raw, text, char, number, name, op
    text: str
    start: int
    end: int


def tokens(source: str) -> list[Token]:
    blanked = PREPROCESSOR.sub(lambda line: re.sub(r"[^\n]", " ", line.group()), source)
    found = []
    for match in PATTERN.finditer(blanked):
        kind = match.lastgroup if match.lastgroup != "mark" else "raw"
        if kind != "skip":
            found.append(Token(kind, match.group(), match.start(), match.end()))
    return found


def partners(found: list[Token]) -> dict[int, int]:
    """For each bracket's index that of its partner; brackets without one are left out."""
    pairs: dict[int, int] = {}
    open_ones: list[int] = []
    for index, token in enumerate(found):
        if token.kind != "op":
            continue
        if token.text in CLOSING:
            open_ones.append(index)
        elif token.text in CLOSING.values() and open_ones and CLOSING[found[open_ones[-1]].text] == token.text:
            first = open_ones.pop()
            pairs[first], pairs[index] = index, first
    return pairs
