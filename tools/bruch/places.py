"""Finds the places of a C++ source where one small thing can be broken, and how.

The text is read by its tokens and by the way the formatter sets it (blanks around a binary operator, none around
the brackets of a template), not by a compiler. What doesn't compile then is found out by compiling it.
"""

import hashlib
import re
from dataclasses import dataclass
from typing import Iterator

from functions import early_returns
from tokens import Token, partners, tokens

COMPARISONS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}
LOGIC = {"&&": "||", "||": "&&"}
SIGNS = {"+": "-", "-": "+", "*": "/", "/": "*", "%": "*", "+=": "-=", "-=": "+="}
STEPS = {"++": "--", "--": "++"}
TRUTHS = {"true": "false", "false": "true"}
NOT_CALLS = {"if", "for", "while", "switch", "catch", "return", "sizeof", "decltype", "static_assert", "throw",
             "alignas", "noexcept", "Q_ASSERT", "Q_UNUSED", "Q_DECLARE_METATYPE", "assert"}
NO_STATEMENT = {"return", "else", "if", "for", "while", "switch", "do", "case", "default", "break", "continue",
                "goto", "throw", "delete", "new", "using", "typedef", "namespace", "template", "static_assert",
                "Q_ASSERT", "Q_UNUSED", "Q_DECLARE_METATYPE", "assert", "try", "catch", "co_return", "co_await"}
WORD = re.compile(r"(?<![\\%\w])[^\W\d_]{2,}")
ONE_WORD = re.compile(r'^"[^\W\d]\w+"$')


@dataclass(frozen=True)
class Break:
    """One change of one source. `before` and `after` are the lines that it touches, blanks squeezed."""

    path: str  # from the root
    kind: str
    start: int  # in characters
    end: int
    replacement: str
    line: int  # from 1
    before: str
    after: str
    key: str  # the same as long as path, before, after and their number among equal ones are

    def applied(self, source: str) -> str:
        return source[: self.start] + self.replacement + source[self.end :]


def squeezed(text: str) -> str:
    return " ".join(text.split())


def breaks(path: str, source: str) -> list[Break]:
    found, seen = [], {}
    for kind, start, end, replacement in sorted(set(raw_breaks(source)), key=lambda raw: raw[1:]):
        first = source.rfind("\n", 0, start) + 1
        last = source.find("\n", end)
        last = len(source) if last < 0 else last
        before = squeezed(source[first:last])
        after = squeezed(source[first:start] + replacement + source[end:last])
        number = seen[before, after] = seen.get((before, after), -1) + 1
        key = hashlib.sha256(f"{path}\n{before}\n{after}\n{number}".encode()).hexdigest()[:16]
        line = source.count("\n", 0, start) + 1
        found.append(Break(path, kind, start, end, replacement, line, before, after, key))
    return found


def raw_breaks(source: str) -> Iterator[tuple[str, int, int, str]]:
    """(kind, start, end, replacement); a replacement has as many line ends as what it replaces."""
    found = tokens(source)
    pairs = partners(found)
    closed = without_breaks(found)
    for index, token in enumerate(found):
        if index in closed:
            continue
        if token.kind == "op":
            yield from operator_break(source, found, index)
        elif token.kind == "name":
            if token.text in TRUTHS:
                yield "constant", token.start, token.end, TRUTHS[token.text]
            elif token.text == "else":
                yield "removed else", token.start, token.end, ""
            else:
                yield from swapped_arguments(source, found, pairs, index)
                yield from dropped_call(source, found, pairs, index)
        elif token.kind == "number":
            yield from number_break(found, index)
        elif token.kind in ("text", "char"):
            yield "text", token.start, token.end, other_text(found, index)
    for start, text in early_returns(found, pairs):
        yield "early return", start, start, text


def without_breaks(found: list[Token]) -> set[int]:
    """Tokens of template heads, attributes and the like: nothing there runs."""
    closed: set[int] = set()
    for index, token in enumerate(found):
        if token.text == "template" and index + 1 < len(found) and found[index + 1].text == "<":
            depth = 0
            for inner in range(index + 1, len(found)):
                closed.add(inner)
                depth += {"<": 1, ">": -1, ">>": -2}.get(found[inner].text, 0)
                if depth <= 0:
                    break
        elif token.text in ("static_assert", "Q_ASSERT", "assert", "using", "extern", "Q_UNUSED"):
            for inner in range(index, len(found)):
                closed.add(inner)
                if found[inner].text == ";":
                    break
        elif token.text == "operator":
            closed.update((index + 1, index + 2))
    return closed


def stands_free(source: str, token: Token) -> bool:
    return source[token.start - 1 : token.start].isspace() and source[token.end : token.end + 1].isspace()


def statement_of(found: list[Token], index: int) -> list[Token]:
    first = last = index
    while first > 0 and found[first - 1].text not in (";", "{", "}"):
        first -= 1
    while last + 1 < len(found) and found[last + 1].text not in (";", "{", "}"):
        last += 1
    return found[first : last + 1]


def operator_break(source: str, found: list[Token], index: int) -> Iterator[tuple[str, int, int, str]]:
    token = found[index]
    text = token.text
    before = found[index - 1] if index > 0 else None
    if stands_free(source, token):
        if text in COMPARISONS:
            yield "comparison", token.start, token.end, COMPARISONS[text]
        elif text in LOGIC:
            yield "logic", token.start, token.end, LOGIC[text]
        elif text in SIGNS and not any(other.kind == "text" for other in statement_of(found, index)):
            yield "sign", token.start, token.end, SIGNS[text]  # texts are only ever added
    elif text in STEPS:
        yield "sign", token.start, token.end, STEPS[text]
    elif text == "!":
        yield "sign", token.start, token.end, ""
    elif text == "-" and before is not None and (before.kind == "op" and before.text not in (")", "]")
                                                 or before.text == "return"):
        yield "sign", token.start, token.end, ""


def number_break(found: list[Token], index: int) -> Iterator[tuple[str, int, int, str]]:
    token = found[index]
    match = re.fullmatch(r"(\d[\d']*)((?:\.\d*)?)([uUlLfF]*)", token.text)
    if not match or (len(token.text) > 1 and token.text[0] == "0" and not match[2]):
        return
    whole = int(match[1].replace("'", "")) + 1
    beside = {found[other].text for other in (index - 1, index + 1) if 0 <= other < len(found)}
    kind = "off by one" if beside & {"+", "-", "[", "<", "<=", ">", ">="} else "constant"
    yield kind, token.start, token.end, f"{whole}{match[2]}{match[3]}"


def other_text(found: list[Token], index: int) -> str:
    """Another column's or key's name of the same file in the place of a name, a wrong letter in other texts."""
    text = found[index].text
    if found[index].kind == "char":
        return re.sub(r"'.*'$", "'x'" if not text.endswith("'x'") else "'y'", text)
    if ONE_WORD.match(text):
        for step in range(1, len(found)):
            other = found[(index + step) % len(found)]
            if other.kind == "text" and ONE_WORD.match(other.text) and other.text != text:
                return other.text
    words = sorted(WORD.finditer(text, text.index('"') + 1), key=lambda word: -len(word.group()))
    if not words:
        return text[:-1] + 'x"'
    at = words[0].end() - 1
    return text[:at] + ("y" if text[at] == "x" else "x") + text[at + 1 :]


def arguments(found: list[Token], pairs: dict[int, int], bracket: int) -> list[tuple[int, int]]:
    """First and last token of each argument between the bracket and its partner."""
    parts, first, index = [], bracket + 1, bracket + 1
    while index < pairs[bracket]:
        if found[index].text in ("(", "[", "{") and index in pairs:
            index = pairs[index]
        elif found[index].text == ",":
            parts.append((first, index - 1))
            first = index + 1
        index += 1
    if first < pairs[bracket]:
        parts.append((first, pairs[bracket] - 1))
    return [part for part in parts if part[0] <= part[1]]


def shape(found: list[Token], part: tuple[int, int]) -> str:
    """What sort of value it is, as far as its look tells; empty when it tells nothing."""
    inside = found[part[0] : part[1] + 1]
    if len(inside) == 1 and inside[0].kind in ("text", "number", "char"):
        return inside[0].kind
    for one, other in zip(inside, inside[1:]):
        if one.kind == "name" and other.kind == "name":
            return ""  # a declaration
    if all(token.kind == "name" or token.text in (".", "->", "::", "(", ")", "*") for token in inside):
        return "value"
    return ""


def swapped_arguments(source: str, found: list[Token], pairs: dict[int, int],
                      index: int) -> Iterator[tuple[str, int, int, str]]:
    if found[index].text in NOT_CALLS or index + 1 not in pairs or found[index + 1].text != "(":
        return
    parts = arguments(found, pairs, index + 1)
    texts = [source[found[first].start : found[last].end] for first, last in parts]
    for at in range(len(parts) - 1):
        if texts[at] == texts[at + 1] or not shape(found, parts[at]):
            continue
        if shape(found, parts[at]) != shape(found, parts[at + 1]):
            continue
        start, end = found[parts[at][0]].start, found[parts[at + 1][1]].end
        between = source[found[parts[at][1]].end : found[parts[at + 1][0]].start]
        yield "swapped argument", start, end, texts[at + 1] + between + texts[at]


def dropped_call(source: str, found: list[Token], pairs: dict[int, int],
                 index: int) -> Iterator[tuple[str, int, int, str]]:
    """A whole statement that is nothing but a call."""
    if found[index].text in NO_STATEMENT or index == 0:
        return
    before = found[index - 1]
    if before.text == ")":  # after a condition, not after a cast or a declarator
        opening = pairs.get(index - 1, 0)
        if found[opening - 1].text not in ("if", "for", "while"):
            return
    elif before.text not in (";", "{", "}", "else"):
        return
    at, last = index, index
    while at < len(found) and found[at].text != ";":
        token = found[at]
        if token.kind == "name" and at > index and found[at - 1].kind == "name":
            return  # a declaration
        if token.kind == "op" and token.text not in (".", "->", "::", "(", "["):
            return
        last = at
        if token.text in ("(", "["):
            if at not in pairs:
                return
            last = pairs[at]
        at = last + 1
    if at >= len(found) or found[last].text != ")":
        return
    start, end = found[index].start, found[last].end
    yield "dropped call", start, end, "\n" * source.count("\n", start, end)
