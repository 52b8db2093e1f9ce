"""Finds the places in a C++ source where one small edit changes what the program does.

This reads code in the layout of the repository's .clang-format and no other: an operator with blanks on both
sides is a binary one, and a "<" without them opens template arguments.
"""

import re
from dataclasses import dataclass


@dataclass(frozen=True)
class Mutation:
    """Replaces text[start:end] of one source."""

    path: str
    start: int
    end: int
    replacement: str
    kind: str

    def apply(self, text):
        return text[: self.start] + self.replacement + text[self.end :]


# What this system doesn't compile, and what only says something to developers.
FOREIGN_PLATFORM = re.compile(r"^\s*#\s*(?:el)?if\b.*(JUCE_MAC|JUCE_WINDOWS|JUCE_IOS|JUCE_ANDROID|JUCE_DEBUG|_MSC_VER)")
DEVELOPER_STATEMENT = re.compile(r"\b(?:jassert\w*|static_assert|DBG|JUCE_\w+)\b")

LEXER = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)
      | (?P<string>"(?:\\.|[^"\\\n])*"|'(?:\\.|[^'\\\n])+')
      | (?P<directive>^[ \t]*\#(?:\\\n|[^\n])*)
    """,
    re.VERBOSE | re.MULTILINE | re.DOTALL,
)

OPERATORS = {
    "comparison turned": {"<": ">=", ">": "<=", "<=": ">", ">=": "<", "==": "!=", "!=": "=="},
    "limit moved by one": {"<": "<=", ">": ">=", "<=": "<", ">=": ">"},
    "and for or": {"&&": "||", "||": "&&"},
    "sign changed": {"+": "-", "-": "+", "*": "/", "/": "*", "+=": "-=", "-=": "+="},
}
OPERATOR = re.compile(r"(?<=\s)(<=|>=|==|!=|&&|\|\||\+=|-=|<|>|\+|-|\*|/)(?=\s)")
SIGN = re.compile(r"(?<=[(,=?:\s])-(?=[\w(])")
NEGATION = re.compile(r"(?<=[(\s])! (?=[\w(])")
NUMBER = re.compile(r"(?<![\w.])(?:0x[0-9a-fA-F]+|\d+(?:\.\d+)?(?:e[+-]?\d+)?f?)(?![\w.])")
TRUTH = re.compile(r"\b(true|false)\b")
RETURN = re.compile(r"\breturn ([^;{}]+);")

# A statement that only calls or assigns: one chain of names, not the two that a declaration begins with.
CHAIN = r"(?:\+\+|--)?(?:this->)?[A-Za-z_]\w*(?:(?:::|\.|->)[A-Za-z_]\w*|\[[^\]\n]*\])*"
# Only what is indented lies within a function.
STATEMENT_START = re.compile(r"(?:(?<=[;{})\n])|(?<=else))\s*\n[ ]+(?=" + CHAIN + r"(?:\s\(|\s[-+*/|&]?=\s))")
CALL_OR_ASSIGNMENT = re.compile(CHAIN + r"(?P<rest>\s\(|\s[-+*/|&]?=\s)")
KEYWORDS = {"return", "if", "for", "while", "switch", "case", "else", "do", "using", "namespace", "template", "delete"}


def blank_out(text):
    """The text in the same length, with blanks for all that is no code: comments, texts and directives."""
    code = LEXER.sub(lambda match: re.sub(r"[^\n]", " ", match.group()), text)
    return blank_out_foreign_branches(text, code)


def blank_out_foreign_branches(text, code):
    lines = code.split("\n")
    branches = []

    for number, line in enumerate(text.split("\n")):
        if re.match(r"\s*#\s*if", line):
            branches.append(bool(FOREIGN_PLATFORM.match(line)))
        elif re.match(r"\s*#\s*elif", line) and branches:
            branches[-1] = bool(FOREIGN_PLATFORM.match(line))
        elif re.match(r"\s*#\s*else", line) and branches:
            branches[-1] = False
        elif re.match(r"\s*#\s*endif", line) and branches:
            branches.pop()
        elif any(branches):
            lines[number] = " " * len(line)

    return "\n".join(lines)


def statement_around(code, position):
    start = max(code.rfind(character, 0, position) for character in ";{}") + 1
    end = code.find(";", position)
    return code[start : end if end >= 0 else len(code)]


def find_end_of_statement(code, start):
    """Behind the ";" that ends the statement, or -1 where a block or an initialiser comes first."""
    depth = 0

    for position in range(start, len(code)):
        character = code[position]

        if character in "([{":
            depth += 1
        elif character in ")]}":
            depth -= 1

            if depth < 0:
                return -1
        elif character == ";" and depth == 0:
            return position + 1

    return -1


def change_number(number):
    """Twice the number, or one that is as far off where twice is the same or no number."""
    if number.startswith("0x"):
        return "0x%0*x" % (len(number) - 2, int(number, 16) ^ 0x40)

    suffix = "f" if number.endswith("f") else ""
    digits = number.rstrip("f")

    if "." in digits or "e" in digits:
        return repr(2.0 * float(digits) or 1.0) + suffix

    return str(2 * int(digits) or 1) + suffix


def find_operators(code):
    for match in OPERATOR.finditer(code):
        for kind, replacements in OPERATORS.items():
            if match.group() in replacements:
                yield match.start(), match.end(), replacements[match.group()], kind


def find_small_edits(code):
    for match in SIGN.finditer(code):
        yield match.start(), match.end(), "", "sign changed"

    for match in NEGATION.finditer(code):
        yield match.start(), match.end(), "", "negation dropped"

    for match in NUMBER.finditer(code):
        yield match.start(), match.end(), change_number(match.group()), "constant doubled"

    for match in TRUTH.finditer(code):
        yield match.start(), match.end(), "false" if match.group() == "true" else "true", "truth turned"


def find_returns(code):
    for match in RETURN.finditer(code):
        value = match.group(1)

        if value in ("true", "false") or "[" in value:
            continue

        if re.search(r" (?:<=|>=|==|!=|&&|\|\||<|>) |^! ", value) and " ? " not in value:
            yield match.start(1), match.end(1), "! (" + value + ")", "return value negated"
        elif re.search(r" [-+*/] |\d", value) and '"' not in value:
            yield match.start(1), match.end(1), "-(" + value + ")", "return value negated"


def find_statements(code):
    for match in STATEMENT_START.finditer(code):
        statement = CALL_OR_ASSIGNMENT.match(code, match.end())
        first_word = re.match(r"\w*", code[match.end() :]).group()
        end = find_end_of_statement(code, match.end())

        if statement and first_word not in KEYWORDS and end > 0:
            kind = "call dropped" if statement.group("rest").endswith("(") else "assignment dropped"
            yield match.end(), end, ";", kind


def find_mutations(path, text):
    """All edits of a source, in the order of the text."""
    code = blank_out(text)
    found = set()

    for find in (find_operators, find_small_edits, find_returns, find_statements):
        for start, end, replacement, kind in find(code):
            # Texts within a value were blanks to the search.
            if kind == "return value negated":
                replacement = replacement.replace(code[start:end], text[start:end])

            if not DEVELOPER_STATEMENT.search(statement_around(code, start)):
                found.add(Mutation(path, start, end, replacement, kind))

    return sorted(found, key=lambda mutation: (mutation.start, mutation.end, mutation.kind))
