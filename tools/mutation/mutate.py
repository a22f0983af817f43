#!/usr/bin/env python3
"""Breaks the library in many small ways, and counts how many of them the tests notice.

Works on a copy of the sources. Most mutants are compiled at once, as changed copies of the functions that they are in,
and the environment chooses one when the tests run. What must be known to the compiler is built one by one.
"""

import argparse
import collections
import concurrent.futures
import os
import random
import re
import shutil
import subprocess
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
from cpp_source import Source, read_source  # noqa: E402
from operators import find_mutants  # noqa: E402
from test_runs import TestRuns  # noqa: E402
from weaving import SWITCH, SWITCH_HEADER, weave  # noqa: E402

ROOT = Path(__file__).resolve().parents[2]
WORK = ROOT / "build" / "mutate"
TREE = WORK / "tree"
BUILD = WORK / "build"
FOLDERS = ["bridge", "product", "agent_view", "minimized", "declarative", "platform/views", "platform/declarative",
           "platform/web"]
GOAL = 90
# How many files may be compiled for the mutants that the compiler must know.
COMPILE_BUDGET = 60
# The compiler cannot check a table whose texts change when the tests run.
LEFT_OUT = {"corvane/platform/foundation/raw_text.h": b'static_assert(raw_text_detail::isConsistent<Enumeration>(), "the rows are not in the order of the enumerators");'}

CAUGHT, CAUGHT_BY_COMPILER, SURVIVED, NO_MUTANT, NOT_TRIED = "caught", "refused", "survived", "none", "not tried"


def say(text):
    print(f"mutate: {text}", flush=True)


# The standard library's headers and the test framework's take most of the time that a small file needs.
PRECOMPILED = {
    "corvane_objects": ["algorithm", "chrono", "functional", "memory", "optional", "ranges", "string", "variant"],
    "corvane_unit_tests": ["gmock/gmock.h", "gtest/gtest.h", "algorithm", "chrono", "functional", "ranges", "variant"],
}
PRECOMPILED["corvane_contract_platforms"] = PRECOMPILED["corvane_contract_tests"] = PRECOMPILED["corvane_unit_tests"]


class Checkout:
    """The copy of the sources, and its build."""

    def __init__(self, jobs):
        self.jobs = jobs
        self.sources = {}
        self.mutants = []
        TREE.mkdir(parents=True, exist_ok=True)
        self.copy_files()

    def copy_files(self):
        listed = subprocess.run(["git", "ls-files", "--cached", "--others", "--exclude-standard"], cwd=ROOT, check=True,
                                capture_output=True, text=True).stdout.split("\n")
        files = {name for name in listed if name and (ROOT / name).is_file() and not name.startswith("docs/images/")}
        for path in TREE.rglob("*"):
            if path.is_file() and str(path.relative_to(TREE)) not in files | {SWITCH_HEADER}:
                path.unlink()
        for name in files:
            if name.startswith(tuple(f"corvane/{folder}/" for folder in FOLDERS)) and name.endswith((".cpp", ".h")):
                self.sources[name] = read_source((ROOT / name).read_text())
            else:
                self.write(name, (ROOT / name).read_bytes().replace(LEFT_OUT.get(name, b"\0"), b""))
                shutil.copymode(ROOT / name, TREE / name)
        self.write(SWITCH_HEADER, SWITCH.encode())

    def write(self, name, content):
        path = TREE / name
        if path.exists() and path.read_bytes() == content:
            return
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)

    def weave(self, edit=None):
        """Writes the sources with their mutants; gives the places of the mutants by file."""
        by_path = collections.defaultdict(list)
        for mutant in self.mutants:
            by_path[mutant.path].append(mutant)
        places = {}
        for name, source in self.sources.items():
            is_edited = edit is not None and edit.path == name
            if by_path[name] or is_edited:
                text, places[name] = weave(source, by_path[name], edit if is_edited else None)
            else:
                text = source.text
            self.write(name, text.encode())
        return places

    def configure(self):
        os.environ["CCACHE_SLOPPINESS"] = "pch_defines,time_macros,include_file_mtime,include_file_ctime"
        options = ["-DCMAKE_BUILD_TYPE=Mutate", "-DCMAKE_CXX_COMPILER=clang++-19",
                   f"-DCMAKE_CXX_FLAGS=-O0 -w -D_GLIBCXX_ASSERTIONS -ferror-limit=0 -fno-caret-diagnostics -fbracket-depth=1024 -Xclang -fno-pch-timestamp -I{TREE}",
                   "-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld-19", "-DCMAKE_SHARED_LINKER_FLAGS=-fuse-ld=lld-19",
                   "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON", "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST",
                   "-DCORVANE_GTK=OFF", "-DCORVANE_QT=OFF"]
        hook = WORK / "precompiled.cmake"
        hook.write_text("".join(
            f"cmake_language(DEFER CALL target_precompile_headers {target} PRIVATE {' '.join(f'<{name}>' for name in names)})\n"
            for target, names in PRECOMPILED.items()))
        options.append(f"-DCMAKE_PROJECT_corvane_INCLUDE={hook}")
        if shutil.which("ccache"):
            options.append("-DCMAKE_CXX_COMPILER_LAUNCHER=ccache")
        subprocess.run(["cmake", "-G", "Ninja", "-S", TREE, "-B", BUILD, *options], check=True, stdout=subprocess.DEVNULL)

    def check_headers(self):
        """Compiles the headers by themselves, which does not take long."""
        unit = WORK / "headers.cpp"
        unit.write_text("".join(f'#include "{name}"\n' for name in sorted(self.sources) if name.endswith(".h")))
        done = subprocess.run(["clang++-19", "-std=c++23", "-fsyntax-only", "-w", "-ferror-limit=0",
                               "-fno-caret-diagnostics", f"-I{TREE}", f"-I{BUILD}/corvane/build_settings", unit],
                              stderr=subprocess.PIPE, text=True)
        return done.returncode == 0, done.stderr

    def build(self, *targets, keep_going=False):
        """Gives what the build says, and whether it went well."""
        command = ["ninja", "-C", BUILD, f"-j{self.jobs}", *(["-k0"] if keep_going else []), *targets]
        done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace")
        return done.returncode == 0, done.stdout


DIAGNOSTIC = re.compile(r"^(?P<path>[^\s:][^:\n]*):(?P<line>\d+):\d+: (?P<kind>fatal error|error|note): (?P<text>.*)$", re.M)


def build_woven(checkout):
    """Takes out what does not compile until the rest does. Gives the mutants that have to be built one by one."""
    alone = [mutant for mutant in checkout.mutants if mutant.is_alone]
    checkout.mutants = [mutant for mutant in checkout.mutants if not mutant.is_alone]
    stages = [checkout.check_headers, lambda: checkout.build("corvane_objects", keep_going=True),
              lambda: checkout.build(keep_going=True)]
    while True:
        places = checkout.weave()
        # The later stages are not worth their time while an earlier one fails.
        while stages:
            succeeded, output = stages[0]()
            if not succeeded:
                break
            stages.pop(0)
        if not stages:
            return alone
        refused = refused_mutants(places, output)
        if not refused:
            (WORK / "build.log").write_text(output)
            sys.exit(f"mutate: the build fails; see {WORK / 'build.log'}")
        say(f"{len(refused)} do not compile together with the others")
        with (WORK / "refused.txt").open("a") as log:
            log.writelines(f"{mutant}: {message}\n" for mutant, message in refused.items())
        for mutant, message in refused.items():
            if mutant_needs_compiler(checkout, mutant, message):
                alone.append(mutant)
        checkout.mutants = [mutant for mutant in checkout.mutants if mutant not in refused]


def refused_mutants(places, output):
    """The mutants that the errors speak of, with the errors."""
    errors = []
    for match in DIAGNOSTIC.finditer(output):
        if match["kind"] != "note":
            errors.append((match["text"], []))
        path = Path(match["path"])
        name = os.path.relpath(path if path.is_absolute() else BUILD / path, TREE)
        line = int(match["line"])
        errors[-1][1].append([place for place in places.get(name, []) if place.first <= line <= place.last])
    refused = {}
    for message, lines in errors:
        found = [place for line in lines for place in line]
        # Where a constant is no constant any more, its uses are not to blame.
        constants = [place for place in found if place.mutants[0].is_expression]
        for place in constants or next(filter(None, lines), []):
            refused.update((mutant, message) for mutant in place.mutants)
    return refused


def mutant_needs_compiler(checkout, mutant, message):
    """Whether a mutant may compile when it is not one of several."""
    return mutant.is_expression or "deduced" in message or "static assertion" in message


class Dependents:
    """How many files are compiled again when one changes."""

    def __init__(self):
        output = subprocess.run(["ninja", "-C", BUILD, "-t", "deps"], check=True, capture_output=True, text=True).stdout
        self.counts = collections.Counter()
        for line in output.split("\n"):
            if line.startswith("    "):
                self.counts[os.path.relpath(os.path.join(BUILD, line.strip()), TREE)] += 1

    def of(self, mutant):
        return max(1, self.counts[mutant.path])


def try_alone(checkout, tests, mutants):
    """Builds each of these by itself."""
    outcomes = {}
    dependents = Dependents()
    budget = COMPILE_BUDGET
    for mutant in sorted(mutants, key=dependents.of):
        if dependents.of(mutant) > budget:
            outcomes[mutant] = NOT_TRIED
            continue
        checkout.weave(mutant)
        succeeded, output = checkout.build("corvane_objects")
        if succeeded:
            budget -= dependents.of(mutant)
            succeeded, output = checkout.build()
        if succeeded:
            outcomes[mutant] = CAUGHT if tests.catch(0) else SURVIVED
        else:
            is_ours = any("static assertion failed" in match["text"] for match in DIAGNOSTIC.finditer(output))
            outcomes[mutant] = CAUGHT_BY_COMPILER if is_ours else NO_MUTANT
    checkout.weave()
    return outcomes


def choose(pool, sources, number, seed):
    """A part of the mutants, spread over the folders by their sizes."""
    generator = random.Random(seed)
    sizes = collections.Counter()
    for name, source in sources.items():
        sizes[folder_of(name)] += len(source.tokens)
    chosen = []
    for folder in FOLDERS:
        candidates = [mutant for mutant in pool if folder_of(mutant.path) == folder]
        share = round(number * sizes[folder] / sum(sizes.values()))
        chosen += generator.sample(candidates, min(share, len(candidates)))
    return chosen


def folder_of(path):
    return next(folder for folder in FOLDERS if path.startswith(f"corvane/{folder}/"))


class Equivalents:
    """Mutants that make no difference. A line names one as it is listed, or all of a line of code or of a function, and
    says why behind a bar."""

    def __init__(self):
        self.known = set()
        for line in (Path(__file__).parent / "equivalent.txt").read_text().split("\n"):
            if line.strip():
                self.known.add(line.split(" | ")[0].strip())

    def hold(self, mutant):
        names = [mutant.before, f"{mutant.before} => {mutant.after}"]
        if mutant.function is not None:
            names.append(f"{mutant.function.name}()")
        return any(f"{mutant.path}: {name}" in self.known for name in names)


def find_all(checkout):
    vocabulary = Source("")
    for path in sorted((ROOT / "corvane").rglob("*.h")):
        source = read_source(path.read_text())
        for name, names in source.enumerations.items():
            vocabulary.enumerations.setdefault(name, []).append(names)
        vocabulary.alternatives.update(source.alternatives)
    pool = []
    for name in sorted(checkout.sources):
        pool += find_mutants(name, checkout.sources[name], vocabulary)
    return pool


def run(arguments):
    began = time.monotonic()
    checkout = Checkout(arguments.jobs)
    pool = find_all(checkout)
    equivalents = Equivalents()
    different = [mutant for mutant in pool if not equivalents.hold(mutant)]
    say(f"{len(pool)} mutants, {len(pool) - len(different)} of them known to make no difference")
    if arguments.list:
        print("\n".join(map(str, different)))
        return 0
    # All are built, whichever are tried: the compiler's cache then has the build for the next choice as well.
    for number, mutant in enumerate(pool, 1):
        mutant.number = number
    checkout.mutants = list(pool)
    checkout.weave()
    checkout.configure()
    alone = build_woven(checkout)
    tried = different
    if arguments.only:
        tried = [mutant for mutant in tried if re.search(arguments.only, str(mutant))]
    if arguments.number != "all":
        buildable = set(checkout.mutants) | set(alone)
        tried = choose([mutant for mutant in tried if mutant in buildable], checkout.sources, int(arguments.number),
                       arguments.seed)
    together = [mutant for mutant in checkout.mutants if mutant in set(tried)]
    alone = [mutant for mutant in alone if mutant in set(tried)]
    built = time.monotonic()
    say(f"built in {built - began:.0f} s; of those to try {len(together)} are in it, {len(alone)} are built one by one")
    tests = TestRuns(BUILD, WORK)
    say(f"the tests may take {tests.measure():.0f} s")

    outcomes = {}
    with concurrent.futures.ThreadPoolExecutor(arguments.jobs) as workers:
        numbers = [mutant.number for mutant in together]
        for mutant, is_caught in zip(together, workers.map(tests.catch, numbers)):
            outcomes[mutant] = CAUGHT if is_caught else SURVIVED
            if not is_caught:
                print(mutant, flush=True)
    say(f"tests run in {time.monotonic() - built:.0f} s")
    for mutant, outcome in try_alone(checkout, tests, alone).items():
        outcomes[mutant] = outcome
        if outcome == SURVIVED:
            print(mutant, flush=True)
    return report(outcomes, time.monotonic() - began)


def report(outcomes, seconds):
    def row(name, counted):
        counts = collections.Counter(counted)
        caught = counts[CAUGHT] + counts[CAUGHT_BY_COMPILER]
        total = caught + counts[SURVIVED]
        share = 100 * caught / total if total else 100
        print(f"{name:20} {total:6} {counts[CAUGHT]:7} {counts[CAUGHT_BY_COMPILER]:8} {counts[SURVIVED]:9} {share:6.1f} %")
        return share

    print("\nsurvivors:")
    survivors = [str(mutant) for mutant, outcome in outcomes.items() if outcome == SURVIVED]
    print("\n".join(survivors) if survivors else "none")
    (WORK / "survivors.txt").write_text("\n".join(survivors) + "\n")
    print(f"\n{'':20} {'tried':>6} {'caught':>7} {'refused':>8} {'survived':>9}")
    for folder in FOLDERS:
        row(folder, [outcome for mutant, outcome in outcomes.items() if folder_of(mutant.path) == folder])
    share = row("all", outcomes.values())
    counts = collections.Counter(outcomes.values())
    print(f"\n{counts[NO_MUTANT]} more do not compile, {counts[NOT_TRIED]} would take too long to build. {seconds:.0f} s")
    return 0 if share >= GOAL else 1


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("number", nargs="?", default="all", help="how many mutants; all without it")
    parser.add_argument("seed", nargs="?", type=int, default=1, help="chooses which")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--only", help="only mutants whose line in the list matches this expression")
    parser.add_argument("--list", action="store_true", help="lists the mutants and tries none")
    sys.exit(run(parser.parse_args()))


if __name__ == "__main__":
    main()
