"""Small faults for C++ sources: what one slip of the fingers could make of a line, one at a time.

The sources are clang-formatted, so an operator between two operands has a space on either side and those of
templates, pointers and references have not.
"""

import dataclasses
import re

SWAPPED_OPERATORS = {
    "<": ["<="],
    "<=": ["<"],
    ">": [">="],
    ">=": [">"],
    "==": ["!="],
    "!=": ["=="],
    "&&": ["||"],
    "||": ["&&"],
    "+": ["-"],
    "-": ["+"],
    "*": ["/"],
    "/": ["*"],
    "%": ["*"],
    "&": ["|"],
    "|": ["&"],
    "+=": ["-="],
    "-=": ["+="],
    "*=": ["/="],
    "/=": ["*="],
    "|=": ["&="],
}
LONGEST_FIRST = sorted(SWAPPED_OPERATORS, key=len, reverse=True)
OPERATOR = re.compile(r"(?<= )(" + "|".join(re.escape(o) for o in LONGEST_FIRST) + r")(?= )")
NUMBER = re.compile(r"(?<![\w.])(\d+\.\d*(?:e[-+]?\d+)?|\d+(?:e[-+]?\d+)?)(?![\w.])")
NEGATION = re.compile(r"!(?=[\w(:])")
MINUS = re.compile(r"(?<=[(,=?:] )-(?=[\w(])|(?<=[(\[])-(?=[\w(])|(?<=return )-(?=[\w(])")
NEVER_CHANGED = ("template", "using ", "namespace ", "friend ", "class ")
# Says something to the compiler or to who reads it, and nothing to the program.
NO_FAULT = re.compile(r"= delete;$|^\s*static_cast<void>\(\w+\);$")
IN_ANY_ORDER = re.compile(r"(?:dot|min|max)$")
TRUTH = re.compile(r"\b(true|false)\b")
STEP = re.compile(r"(\+\+|--)")
TWO_ARGUMENTS = re.compile(r"(?<=\w)\(([\w.\->\[\]]+), ([\w.\->\[\]]+)\)")
NO_STATEMENT = (
    r"return\b|using\b|friend\b|case\b|default\b|break;|continue;|const\b|auto\b|static\b|typedef\b"
    r"|public:|private:|protected:|namespace\b|template\b|#|}"
)
STATEMENT = re.compile(r"^(\s*)((?!" + NO_STATEMENT + r")[\w:*&>.\[\]\-+(!][^;{}]*;)\s*$")
DECLARATION = re.compile(
    r"^\s*(?:unsigned |std::|boost::|[A-Z_a-z][\w:<>,]*[ *&]+)+[a-z_]\w*(?:\[.*\])?(?:;| =|\{|\()"
)


@dataclasses.dataclass(frozen=True)
class Mutant:
    file: str
    line: int  # from 1
    before: str  # the whole line
    after: str
    what: str

    def key(self):
        return f"{self.file} | {self.before.strip()} | {self.after.strip() or '(dropped)'}"


def code_of(line):
    """The line with the insides of strings, characters and comments replaced by blanks of the same length."""
    out = []
    quote = None
    i = 0
    while i < len(line):
        c = line[i]
        if quote:
            if c == "\\":
                out.append("  ")
                i += 2
                continue
            out.append(c if c == quote else " ")
            if c == quote:
                quote = None
        elif c in "\"'" and not (c == "'" and i and line[i - 1].isdigit()):
            quote = c
            out.append(c)
        elif line.startswith("//", i):
            out.append(" " * (len(line) - i))
            break
        else:
            out.append(c)
        i += 1
    return "".join(out)


def _replaced(line, match_start, match_end, text):
    return line[:match_start] + text + line[match_end:]


def _line_mutations(line, code):
    for match in OPERATOR.finditer(code):
        for other in SWAPPED_OPERATORS[match.group(1)]:
            yield _replaced(line, match.start(), match.end(), other), f"{match.group(1)} becomes {other}"
    for match in NUMBER.finditer(code):
        number = match.group(1)
        other = str(int(number) + 1) if number.isdigit() else repr(float(number) * 2 + 1)
        yield _replaced(line, match.start(), match.end(), other), f"{number} becomes {other}"
    for match in NEGATION.finditer(code):
        yield _replaced(line, match.start(), match.end(), ""), "! dropped"
    for match in MINUS.finditer(code):
        yield _replaced(line, match.start(), match.end(), ""), "sign dropped"
    for match in TRUTH.finditer(code):
        other = "false" if match.group(1) == "true" else "true"
        yield _replaced(line, match.start(), match.end(), other), f"{match.group(1)} becomes {other}"
    for match in STEP.finditer(code):
        other = "--" if match.group(1) == "++" else "++"
        yield _replaced(line, match.start(), match.end(), other), f"{match.group(1)} becomes {other}"
    for match in TWO_ARGUMENTS.finditer(code):
        if match.group(1) != match.group(2) and not IN_ANY_ORDER.search(code[:match.start()]):
            text = f"({match.group(2)}, {match.group(1)})"
            yield _replaced(line, match.start(), match.end(), text), "arguments swapped"
    statement = STATEMENT.match(code)
    if statement and not DECLARATION.match(code):
        yield statement.group(1) + ";", "statement dropped"


def mutants_of(file, text):
    in_comment = False
    depth_of_asserts = False
    for number, line in enumerate(text.split("\n"), 1):
        stripped = line.strip()
        if stripped.startswith("#") or depth_of_asserts:
            depth_of_asserts = depth_of_asserts and ";" not in stripped
            continue
        if stripped.startswith("static_assert"):
            depth_of_asserts = ";" not in stripped
            continue
        if in_comment or stripped.startswith("/*"):
            in_comment = "*/" not in stripped
            continue
        code = code_of(line)
        if not code.strip() or code.strip().startswith(NEVER_CHANGED) or NO_FAULT.search(code.rstrip()):
            continue
        seen = set()
        for after, what in _line_mutations(line, code):
            if after not in seen:
                seen.add(after)
                yield Mutant(file, number, line, after, what)
