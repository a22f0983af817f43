"""Reads a C++ source as far as a mutation check needs it: its tokens, its functions, and what stands outside of them."""

import re
from dataclasses import dataclass, field

TOKEN = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)
      |(?P<directive>^[ \t]*\#(?:\\\n|[^\n])*)
      |(?P<raw>(?:u8|[uUL])?R"(?P<delimiter>[^()\s\\]*)\(.*?\)(?P=delimiter)")
      |(?P<string>(?:u8|[uUL])?"(?:\\.|[^"\\\n])*")
      |(?P<character>(?:u8|[uUL])?'(?:\\.|[^'\\\n])+')
      |(?P<number>\.?\d(?:[eEpP][+-]|'?[\w.])*)
      |(?P<word>[A-Za-z_]\w*)
      |(?P<mark><=>|<<=|->\*|\.\.\.|::|->|<=|>=|==|!=|&&|\|\||<<|\+\+|--|[-+*/%&|^]=|[^\s\w])""",
    re.VERBOSE | re.DOTALL | re.MULTILINE)

CLOSING = {"(": ")", "[": "]", "{": "}"}


@dataclass
class Token:
    kind: str
    text: str
    start: int
    end: int
    # Spaces on both sides tell a binary operator from a template's bracket, a reference and a sign: the formatter of this
    # project sets them so.
    is_spaced: bool = False
    # The bracket that closes or opens this one.
    partner: int = -1


@dataclass
class Function:
    name: str
    opening: int
    closing: int


@dataclass
class Declaration:
    """What ends with a semicolon, or is the head of a function with its initialisers; as token indices, end excluded."""
    begin: int
    end: int


@dataclass
class Source:
    text: str
    tokens: list = field(default_factory=list)
    functions: list = field(default_factory=list)
    declarations: list = field(default_factory=list)
    enumerations: dict = field(default_factory=dict)
    alternatives: dict = field(default_factory=dict)

    def line_of(self, offset):
        return self.text.count("\n", 0, offset) + 1


def read_source(text):
    source = Source(text, tokenise(text))
    _Scopes(source).read(0, len(source.tokens))
    return source


def tokenise(text):
    tokens = []
    for match in TOKEN.finditer(text):
        kind = match.lastgroup if match.lastgroup != "delimiter" else "raw"
        if kind in ("comment", "directive"):
            continue
        start, end = match.span()
        is_spaced = text[start - 1:start].isspace() and text[end:end + 1].isspace()
        tokens.append(Token(kind, match.group(), start, end, is_spaced))
    opened = []
    for index, token in enumerate(tokens):
        if token.kind != "mark":
            continue
        if token.text in CLOSING:
            opened.append(index)
        elif token.text in CLOSING.values():
            partner = opened.pop()
            tokens[partner].partner, token.partner = index, partner
    return tokens


class _Scopes:
    """Walks through namespaces and classes, and notes the functions and declarations in them."""

    def __init__(self, source):
        self.source = source
        self.tokens = source.tokens

    def read(self, begin, end):
        start = index = begin
        while index < end:
            text = self.tokens[index].text
            if text == ";":
                self.end_declaration(start, index)
                start = index + 1
            elif text == ":" and index == start + 1 and self.tokens[start].text in ("public", "protected", "private"):
                start = index + 1
            elif text in ("(", "["):
                index = self.tokens[index].partner
            elif text == "{":
                closing = self.tokens[index].partner
                kind = self.kind_of_brace(start, index)
                if kind == "scope":
                    self.read(index + 1, closing)
                elif kind == "enumeration":
                    self.note_enumeration(start, index, closing)
                elif kind == "function":
                    self.note_function(start, index, closing)
                if kind in ("scope", "function"):
                    start = closing + 1
                index = closing
            index += 1

    def head(self, start, end):
        """The indices of the tokens of a declaration that stand in no bracket."""
        index = start
        depth = 0
        while index < end:
            token = self.tokens[index]
            if token.text in CLOSING:
                if depth == 0:
                    yield index
                index = token.partner
            elif token.text == "<" and not token.is_spaced and self.tokens[index - 1].text != "operator":
                depth += 1
            elif token.text == ">" and not token.is_spaced and depth > 0:
                depth -= 1
            elif depth == 0:
                yield index
            index += 1

    def kind_of_brace(self, start, brace):
        head = list(self.head(start, brace))
        words = [self.tokens[index].text for index in head]
        if "namespace" in words or words[:1] == ["extern"] and self.tokens[brace - 1].kind == "string":
            return "scope"
        if "enum" in words:
            return "enumeration"
        classes = [at for at, word in enumerate(words) if word in ("class", "struct", "union")]
        if classes and "(" not in words[classes[-1]:]:
            return "scope"
        if "(" not in words or any(word == "=" and words[at - 1] != "operator" for at, word in enumerate(words)):
            return "initialiser"
        parameters = max(at for at, word in enumerate(words) if word == "(") if ":" not in words else words.index("(")
        if ":" in words[parameters:] and self.tokens[brace - 1].text not in (")", "}"):
            return "initialiser"
        return "function"

    def end_declaration(self, start, end):
        if start < end and self.tokens[start].text not in ("using", "typedef", "friend", "static_assert", "template"):
            self.source.declarations.append(Declaration(start, end))
        elif start < end and self.tokens[start].text == "template" and "=" in (t.text for t in self.tokens[start:end]):
            self.source.declarations.append(Declaration(start, end))
        self.note_alternatives(start, end)

    def note_function(self, start, opening, closing):
        self.source.declarations.append(Declaration(start, opening))
        name = next((self.tokens[index - 1].text for index in self.head(start, opening)
                     if self.tokens[index].text == "(" and self.tokens[index - 1].text != "requires"), "")
        self.source.functions.append(Function(name, opening, closing))

    def note_enumeration(self, start, opening, closing):
        name = next(token.text for token in self.tokens[start:opening]
                    if token.kind == "word" and token.text not in ("enum", "class", "struct"))
        inside = self.tokens[opening + 1:closing]
        names = [token.text for before, token in zip([None] + inside, inside)
                 if token.kind == "word" and (before is None or before.text == ",")]
        self.source.enumerations.setdefault(name, []).extend(names)

    def note_alternatives(self, start, end):
        """Cases of a sum type: `using Value = std::variant<A, B>`."""
        texts = [token.text for token in self.tokens[start:end]]
        if texts[:7] == ["using", "Value", "=", "std", "::", "variant", "<"]:
            names = [text for text in texts[7:] if re.match(r"[A-Z]\w*$", text)]
            for name in names:
                self.source.alternatives[name] = names
