#!/usr/bin/env python3
"""Fails where a file of the library includes one of a folder above it, a backend, or, round any corner, itself."""

import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
# The folders from the ground up. A file may include its own folder and those of the lines before.
LAYERS = [
    ["corvane/export.h", "corvane/version.h"],
    ["corvane/platform/foundation", "corvane/platform/geometry"],
    ["corvane/platform/views", "corvane/platform/capture"],
    ["corvane/platform/web", "corvane/platform/declarative"],
    ["corvane/platform/engine"],
    ["corvane/platform/headless", "corvane/platform/gtk", "corvane/platform/qt"],
    ["corvane/product"],
    ["corvane/bridge"],
    ["corvane/minimized"],
    ["corvane/agent_view"],
    ["corvane/declarative"],
    ["corvane/corvane.h"],
    ["corvane/simulation", "corvane/quick"],
]
BACKENDS = LAYERS[5]
MAY_INCLUDE_BACKENDS = {"corvane/platform/headless", "corvane/platform/gtk", "corvane/platform/qt", "corvane/simulation",
                        "corvane/quick"}


def folder_of(path):
    for rank, folders in enumerate(LAYERS):
        for folder in folders:
            if path == folder or path.startswith(folder + "/"):
                return rank, folder
    return None


def includes_of(path):
    text = (ROOT / path).read_text()
    return [name for name in re.findall(r'^#include "(corvane/[^"]+)"', text, re.M) if (ROOT / name).is_file()]


def complaints(graph):
    for path, includes in graph.items():
        place = folder_of(path)
        if place is None:
            yield f"{path}: this folder has no layer; give it one in {Path(__file__).name}"
            continue
        rank, folder = place
        for include in includes:
            other_rank, other = folder_of(include) or (None, None)
            if other == folder or other is None:
                continue
            if other_rank > rank or (other_rank == rank and other > folder):
                yield f"{path}: includes {include}, which lies above it"
            if other in BACKENDS and folder not in MAY_INCLUDE_BACKENDS:
                yield f"{path}: includes {include}, which belongs to a backend"


def circles(graph):
    done, trail = set(), []

    def visit(path):
        if path in trail:
            yield " -> ".join(trail[trail.index(path):] + [path])
        elif path not in done:
            trail.append(path)
            for include in graph.get(path, []):
                yield from visit(include)
            trail.pop()
            done.add(path)

    for path in graph:
        yield from visit(path)


def main():
    listed = subprocess.run(["git", "ls-files", "--cached", "--others", "--exclude-standard", "--", "corvane/*.h",
                             "corvane/*.cpp"], cwd=ROOT, check=True, capture_output=True, text=True).stdout.split()
    graph = {path: includes_of(path) for path in listed if (ROOT / path).is_file()}
    found = [*complaints(graph), *(f"a circle: {circle}" for circle in circles(graph))]
    for complaint in found:
        print(complaint, file=sys.stderr)
    sys.exit(1 if found else 0)


main()
