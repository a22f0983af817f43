"""The small ways in which a source can be broken."""

import re
from dataclasses import dataclass

from cpp_source import CLOSING, Function

SWAPPED_MARKS = {
    "==": ["!="], "!=": ["=="],
    "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"],
    "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"],
    "+=": ["-="], "-=": ["+="], "*=": ["/="], "/=": ["*="], "++": ["--"], "--": ["++"],
    "&&": ["||"], "||": ["&&"],
}
UNSPACED_MARKS = {"++", "--"}

SWAPPED_WORDS = {
    "true": "false", "false": "true", "min": "max", "max": "min", "fmin": "fmax", "fmax": "fmin",
    "front": "back", "back": "front", "any_of": "all_of", "all_of": "any_of", "first": "second", "second": "first",
    "x": "y", "y": "x", "width": "height", "height": "width", "minX": "maxX", "maxX": "minX", "minY": "maxY",
    "maxY": "minY", "midX": "midY", "midY": "midX", "push_back": "push_front", "lenient": "optional", "optional": "lenient",
    "end": "begin",
}

# How a record's member is read.
FIELDS = {"lenient", "optional"}

# Calls that make no difference by themselves.
UNSEEN = {"static_assert", "assert", "assertMainThread", "noexcept", "requires", "reserve", "unreachable"}

# These begin a statement that is no expression.
KEYWORDS = {
    "alignas", "auto", "bool", "case", "catch", "char", "class", "const", "constexpr", "default", "do", "double", "else",
    "enum", "float", "for", "if", "int", "long", "static", "struct", "switch", "template", "thread_local", "try",
    "typename", "unsigned", "using", "void", "while", "static_assert", "assert",
}


@dataclass(eq=False)
class Mutant:
    path: str
    start: int
    end: int
    replacement: str
    line: int
    before: str
    after: str
    function: Function | None
    # Inside of functions a mutant is a changed copy of the function; outside, the changed expression itself.
    is_expression: bool = False
    # It changes a type, so that it cannot be chosen when the tests run.
    is_alone: bool = False
    number: int = 0
    # Where the declaration around an expression begins and ends.
    declaration: tuple = (0, 0)

    def __str__(self):
        return f"{self.path}:{self.line}: {self.before} => {self.after}"


def find_mutants(path, source, vocabulary):
    finder = _Finder(path, source, vocabulary)
    for function in source.functions:
        finder.visit_function(function)
    for declaration in source.declarations:
        finder.visit_declaration(declaration)
    return finder.mutants


class _Finder:
    def __init__(self, path, source, vocabulary):
        self.path = path
        self.source = source
        self.tokens = source.tokens
        self.vocabulary = vocabulary
        self.mutants = []

    def visit_function(self, function):
        skipped = self.skipped(function.opening, function.closing)
        for index in range(function.opening + 1, function.closing):
            if index not in skipped:
                self.visit_token(index, function)
        for index in range(function.opening, function.closing):
            if index not in skipped:
                self.visit_statement(index, function)

    def visit_declaration(self, declaration):
        skipped = self.skipped(declaration.begin, declaration.end)
        texts = [token.text for token in self.tokens[declaration.begin:declaration.end]]
        if texts[-2:] == ["=", "0"]:  # a pure virtual function
            return
        for index in range(declaration.begin, declaration.end):
            if index not in skipped:
                self.visit_token(index, None, declaration)

    def skipped(self, begin, end):
        """Tokens of what checks something or is said to the compiler, and of how much memory will be needed."""
        result = set()
        for index in range(begin, end):
            token = self.tokens[index]
            if token.text in UNSEEN and self.tokens[index + 1].text == "(":
                result.update(range(index, self.tokens[index + 1].partner + 1))
        return result

    def add(self, first, last, replacement, function, declaration=None):
        start, end = self.tokens[first].start, self.tokens[last].end
        text = self.source.text
        line_start = text.rfind("\n", 0, start) + 1
        line_end = text.find("\n", end)
        self.mutants.append(Mutant(
            path=self.path, start=start, end=end, replacement=replacement, line=self.source.line_of(start),
            before=" ".join(text[line_start:line_end].split()),
            after=" ".join((text[line_start:start] + replacement + text[end:line_end]).split()),
            function=function, is_expression=function is None, is_alone=text[start:end] in FIELDS,
            declaration=(self.tokens[declaration.begin].start, self.tokens[declaration.end - 1].end) if declaration else (0, 0)))

    def visit_token(self, index, function, declaration=None):
        token = self.tokens[index]
        for replacement in self.replacements(index, function is not None):
            self.add(index, index, replacement, function, declaration)
        if token.kind == "word":
            self.visit_name(index, function, declaration)

    def replacements(self, index, is_inside):
        token = self.tokens[index]
        if token.kind == "number":
            return swapped_number(token.text)
        if token.kind == "string":
            # A text with a space in it is for people.
            is_for_people = " " in token.text or self.tokens[index + 1].kind == "string"
            return [] if is_for_people else [token.text[:-1] + 'X"']
        if token.text in ("true", "false"):
            return [SWAPPED_WORDS[token.text]]
        if not is_inside:
            return [SWAPPED_WORDS[token.text]] if token.text in FIELDS and self.is_used(index) else []
        if token.kind == "mark":
            if token.text == "!" and not token.is_spaced:
                return [""]
            if token.text == "?":
                return ["&& false ?", "|| true ?"]
            is_text = token.text in ("+", "+=") and "string" in (self.tokens[index - 1].kind, self.tokens[index + 1].kind)
            if (token.is_spaced or token.text in UNSPACED_MARKS) and not is_text:
                return SWAPPED_MARKS.get(token.text, [])
        if token.text in SWAPPED_WORDS and self.is_used(index):
            return [SWAPPED_WORDS[token.text]]
        return []

    def is_used(self, index):
        """Whether a word is a member that is asked for, or a function that is called."""
        before, after = self.tokens[index - 1].text, self.tokens[index + 1].text
        if self.tokens[index].text in FIELDS:
            return after == "(" and self.tokens[index + 2].kind == "string"
        return before in (".", "->") and not self.tokens[index - 1].is_spaced and self.tokens[index - 2].text not in ("{", ",") \
            or before == "::" or after == "("

    def visit_name(self, index, function, declaration):
        """`Enumeration::enumerator`, and a case of a sum type that is made anew."""
        if index < 2 or self.tokens[index - 1].text != "::":
            return
        name, scope = self.tokens[index].text, self.tokens[index - 2].text
        following = self.tokens[index + 1].text
        others = []
        for names in self.vocabulary.enumerations.get(scope, []):
            if name in names and following != "::":
                others = names
        if not others and following == "{" and name in self.vocabulary.alternatives:
            others = self.vocabulary.alternatives[name]
        if len(others) < 2 or self.tokens[index - 3].text == "case":
            return
        other = others[(others.index(name) + 1) % len(others)]
        first = index
        if function is None:
            while self.tokens[first - 1].text == "::" and self.tokens[first - 2].kind == "word":
                first -= 2
            other = self.source.text[self.tokens[first].start:self.tokens[index].start] + other
        self.add(first, index, other, function, declaration)

    def visit_statement(self, index, function):
        """What begins behind this token."""
        token = self.tokens[index]
        if token.text == "(" and self.tokens[index - 1].text in ("if", "while"):
            self.negate(index, function)
        begins = token.text in (";", "{", "}") or token.text == "else"
        if token.text == ")" and self.tokens[token.partner - 1].text in ("if", "for", "while"):
            begins = True
        if token.text == ":" and self.is_label(index):
            begins = True
        if not begins or index + 1 >= function.closing or self.is_in_parentheses(index, function):
            return
        first = self.tokens[index + 1]
        if first.text in ("return", "throw", "continue", "break") or self.is_expression(index + 1):
            last = self.end_of_statement(index + 1)
            if last is None or any(token.text in UNSEEN for token in self.tokens[index + 1:last]):
                return
            if first.text in ("return", "throw") and self.tokens[last + 1].text == "}" and \
                    self.is_body(self.tokens[last + 1].partner, function):
                return
            if first.text == "return" and last == index + 2 and \
                    all(token.text == "}" for token in self.tokens[last + 1:function.closing]):
                return
            self.add(index + 1, last, ";", function)

    def is_body(self, opening, function):
        """Whether a function, or a lambda in it, begins with this brace."""
        if opening == function.opening or self.is_trailing_return(opening):
            return True
        before = self.tokens[opening - 1]
        return before.text == "]" or before.text == ")" and self.tokens[before.partner - 1].text == "]"

    def is_label(self, index):
        back = index
        while back > 0 and self.tokens[back].text not in (";", "{", "}", "case", "default"):
            back -= 1
        return self.tokens[back].text in ("case", "default")

    def is_in_parentheses(self, index, function):
        """Braces that are a value and no block, and the parts of a `for`."""
        opener = index if self.tokens[index].text == "{" else self.opener_of(index)
        if self.tokens[opener].text == "(":
            return True
        if self.tokens[opener].text == "{" and opener != function.opening:
            before = self.tokens[opener - 1]
            return not (before.text in (")", "{", "}", ";", "else", "try", ":", "mutable", "do", "noexcept", "const")
                        or self.is_trailing_return(opener))
        return False

    def is_trailing_return(self, opener):
        return any(token.text == "->" and token.is_spaced for token in self.tokens[max(0, opener - 8):opener])

    def opener_of(self, index):
        index -= 1
        while index >= 0:
            token = self.tokens[index]
            if token.text in CLOSING:
                return index
            if token.partner >= 0:
                index = token.partner
            index -= 1
        return 0

    def end_of_statement(self, index):
        while index < len(self.tokens):
            token = self.tokens[index]
            if token.text == ";":
                return index
            if token.text in CLOSING:
                index = token.partner
            elif token.text in CLOSING.values():
                return None
            index += 1
        return None

    def is_expression(self, index):
        """Tells an expression from a declaration: a declaration begins with a type, and a name behind it."""
        token = self.tokens[index]
        if token.text in ("++", "--", "*", "("):
            return True
        if token.kind != "word" or token.text in KEYWORDS:
            return False
        if token.text in ("co_await", "delete", "static_cast"):
            return True
        index += 1
        while True:
            token = self.tokens[index]
            if token.text == "::":
                index += 2
            elif token.text == "<" and not token.is_spaced:
                depth = 1
                while depth > 0:
                    index += 1
                    inner = self.tokens[index]
                    if not inner.is_spaced and inner.text in ("<", ">"):
                        depth += 1 if inner.text == "<" else -1
                index += 1
            else:
                break
        if token.text in ("&", "*", "&&") and not token.is_spaced:
            return False
        return token.kind != "word" and token.text not in (":", "{")

    def negate(self, opening, function):
        closing = self.tokens[opening].partner
        first = opening + 1
        for index in range(first, closing):
            if self.tokens[index].text == ";" and self.opener_of(index) == opening:
                first = index + 1
        if first == closing:
            return
        condition = self.source.text[self.tokens[first].start:self.tokens[closing - 1].end]
        comparisons = [token.text for token in self.tokens[first:closing]
                       if token.text in SWAPPED_MARKS and token.is_spaced and token.text not in "+-*/"]
        declared = re.match(r"(?:const )?auto(?: ?[*&])*(?: ?const)? ?(\w+) = ", condition)
        if declared:
            replacement = f"{condition}; !{declared.group(1)}"
        elif self.tokens[first].text == "!" and not comparisons:
            return  # taking the `!` away is the same
        elif len(comparisons) == 1 and comparisons[0] in ("==", "!="):
            return  # as is the other comparison
        else:
            replacement = f"!({condition})"
        self.add(first, closing - 1, replacement, function)


def swapped_number(text):
    match = re.match(r"(\d+)(\.\d*)?(.*)$", text)
    if not match or text.startswith("0x"):
        return []
    whole, fraction, suffix = match.group(1), match.group(2) or "", match.group(3)
    return [str(int(whole) + 1) + fraction + suffix]
