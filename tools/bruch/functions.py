"""Finds the bodies of functions, and where in them one could return too early."""

from typing import Iterator

from tokens import Token


def early_returns(found: list[Token], pairs: dict[int, int]) -> Iterator[tuple[int, str]]:
    """(offset, text to insert): at once, and before the statement in the middle."""
    for opening, head in bodies(found, pairs):
        text = leaving(head)
        if not text:
            continue
        starts = statements(found, pairs, opening)
        if starts:
            yield found[starts[0]].start, text
        if len(starts) >= 3:
            yield found[starts[len(starts) // 2]].start, text


def bodies(found: list[Token], pairs: dict[int, int]) -> Iterator[tuple[int, list[Token]]]:
    """Index of the bracket that opens a function's body, and the tokens of the function's head."""
    index = head = 0
    while index < len(found):
        token = found[index]
        if token.text in (";", "}"):
            head = index + 1
        elif token.text == "(" and index in pairs:
            index = pairs[index]
        elif token.text == "{" and index in pairs:
            before = found[head:index]
            names = {one.text for one in before}
            if "namespace" in names or ("(" not in names and names & {"class", "struct", "extern"}):
                head = index + 1  # what stands inside are declarations again
            elif "(" not in names or "enum" in names or is_initializer(before):
                index = pairs[index]
                if index + 1 < len(found) and found[index + 1].text not in (",", "{", ";"):
                    head = index + 1
            else:
                yield index, before
                index = pairs[index]
                head = index + 1
        index += 1


def is_initializer(head: list[Token]) -> bool:
    """A brace after a value or a member's name, where a function's body would follow its parameters."""
    last = head[-1]
    if "=" in {token.text for token in head}:
        return not any(token.text == "operator" for token in head)
    return last.kind == "name" and last.text not in ("const", "noexcept", "override", "final") and not any(
        token.text == "->" for token in head)


def leaving(head: list[Token]) -> str:
    """The statement that leaves a function with this head; empty where that can't be told."""
    first = next(index for index, token in enumerate(head) if token.text == "(")
    name = first - 1
    if name < 0 or head[name].kind != "name" or head[name].text == "main":
        return ""
    while name >= 2 and head[name - 1].text == "::":
        name -= 2
    if head[first - 2 : first - 1] and head[first - 2].text == "~":
        return "return; "
    kind = [token.text for token in head[:name] if token.text not in ("static", "inline", "constexpr", "virtual")]
    if not kind:  # a constructor
        return "return; " if name <= first - 3 else ""
    if kind[-1] == "void":
        return "return; "
    return "" if kind[-1] in ("&", "&&", "auto") else "return {}; "


def statements(found: list[Token], pairs: dict[int, int], opening: int) -> list[int]:
    """Index of the first token of each statement directly in a body."""
    starts, index, fresh = [], opening + 1, True
    while index < pairs[opening]:
        text = found[index].text
        if fresh and text not in ("else", ";", ")", ",", "while", "catch", "case", "default"):
            starts.append(index)
        fresh = text == ";"
        if text in ("(", "[", "{") and index in pairs:
            index = pairs[index]
            fresh = text == "{"
        index += 1
    return starts
