"""Puts many mutants into one source, so that one build serves them all; the environment says which one is alive."""

from dataclasses import dataclass

SWITCH_HEADER = "corvane_mutation_switch.h"

SWITCH = """#pragma once
#include <cstdlib>
namespace corvane_mutation {
inline const int active = [] {
  const char* const number = std::getenv("CORVANE_MUTANT");
  return number == nullptr ? 0 : std::atoi(number);
}();
inline bool is(int number) { return active == number; }
}
"""


@dataclass
class Place:
    """Lines of a woven source, and the mutants that an error in them speaks of."""
    first: int
    last: int
    mutants: list


def weave(source, mutants, edit=None):
    """Gives the woven text and its places. An edit is a mutant that is simply there."""
    text = source.text
    changes = []  # (start, end, parts); a part is a text, or a text with the mutants that it belongs to
    in_functions = {}
    declarations = {}
    for mutant in mutants:
        if mutant.is_expression:
            declarations.setdefault(mutant.declaration, []).append(mutant)
        else:
            in_functions.setdefault(mutant.function.opening, []).append(mutant)
    for function in source.functions:
        start, end = source.tokens[function.opening].start, source.tokens[function.closing].end
        inside = in_functions.get(function.opening, [])
        is_edited = edit is not None and start <= edit.start and edit.end <= end
        if not inside and not is_edited:
            continue
        plain = _changed(text, start, end, edit) if is_edited else text[start:end]
        if not inside:
            changes.append((start, end, [(plain, [])]))
            continue
        parts = [("{ switch (::corvane_mutation::active) {\n", [])]
        for mutant in inside:
            parts.append((f"case {mutant.number}:\n", []))
            parts.append((_changed(text, start, end, mutant) + "\n", [mutant]))
            parts.append(("break;\n", []))
        # What is wrong here is so because of some of them.
        parts.append((f"default:\n{plain}\n}}}}", inside))
        changes.append((start, end, parts))
    for (start, end), inside in declarations.items():
        changes.append((start, end, [(_declaration(text, start, end, inside, edit), inside)]))
    if edit is not None and not any(start <= edit.start < end for start, end, _ in changes):
        changes.append((edit.start, edit.end, [(edit.replacement, [])]))

    woven = f'#include "{SWITCH_HEADER}"\n'
    if "#pragma once" in text:
        woven = "#pragma once\n" + woven
    places = []
    position = 0
    for start, end, parts in sorted(changes, key=lambda change: change[0]):
        woven += text[position:start]
        for part, owners in parts:
            first = woven.count("\n") + 1
            woven += part
            if owners:
                places.append(Place(first, woven.count("\n") + 1, owners))
        position = end
    return woven + text[position:], places


def _changed(text, start, end, mutant):
    return text[start:mutant.start] + mutant.replacement + text[mutant.end:end]


def _declaration(text, start, end, mutants, edit):
    """A declaration whose expressions ask which mutant is alive; a constant can no longer be one of the compiler's."""
    by_place = {}
    for mutant in mutants:
        by_place.setdefault((mutant.start, mutant.end), []).append(mutant)
    if edit is not None and start <= edit.start < end:
        by_place.setdefault((edit.start, edit.end), [])
    result = ""
    position = start
    for (first, last), alternatives in sorted(by_place.items()):
        result += text[position:first]
        expression = text[first:last]
        if edit is not None and (edit.start, edit.end) == (first, last):
            expression = edit.replacement
        for mutant in alternatives:
            expression = f"(::corvane_mutation::is({mutant.number}) ? {mutant.replacement} : {expression})"
        result += expression
        position = last
    result += text[position:end]
    for constant, variable in (("static constexpr", "static inline const"), ("inline constexpr", "inline const"),
                               ("constexpr", "const")):
        if result.lstrip().startswith(constant):
            return result.replace(constant, variable, 1)
    return result
