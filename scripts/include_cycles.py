#!/usr/bin/env python3
"""The largest include cycle of the sources, a header and its source counting as one.

usage: scripts/include_cycles.py [--most N] [FOLDER]

Two units are in one cycle when each reaches the other by includes. Prints the units of the largest
cycle, and of all with --all. With --most exits 1 when one has more than N units."""

import argparse
import pathlib
import re
import sys


def read_units(root):
    """The units that each unit includes. A unit is a path below root without its suffix."""
    includes = {}
    for path in sorted(root.rglob("*")):
        if path.suffix not in (".h", ".cpp"):
            continue
        targets = includes.setdefault(str(path.relative_to(root).with_suffix("")), set())
        found = re.findall(r'^\s*#\s*include\s+"([^"]+)"', path.read_text(), re.M)
        for target in found:
            # As compilers look it up: beside the file, then from the root.
            beside = path.parent / target
            full = beside if beside.exists() else root / target
            if full.exists():
                targets.add(str(full.relative_to(root).with_suffix("")))
    return includes


def reachable(graph, start):
    seen, open_units = set(), [start]
    while open_units:
        for unit in graph[open_units.pop()]:
            if unit not in seen:
                seen.add(unit)
                open_units.append(unit)
    return seen


def cycles(graph):
    """Sets of units that all reach each other, without those of one unit alone."""
    reach = {unit: reachable(graph, unit) for unit in graph}
    sets = {frozenset(b for b in reach[a] if a in reach[b]) for a in graph}
    return [found for found in sets if len(found) > 1]


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--most", type=int, help="units that a cycle may have")
    parser.add_argument("--all", action="store_true", help="tell every cycle")
    parser.add_argument("folder", nargs="?", type=pathlib.Path,
                        default=pathlib.Path(__file__).resolve().parent.parent / "src")
    arguments = parser.parse_args()
    found = sorted(map(sorted, cycles(read_units(arguments.folder))), key=len, reverse=True)
    largest = len(found[0]) if found else 0
    print(f"{len(found)} include cycles, the largest of {largest} files (header and source as one)")
    for cycle in found if arguments.all else found[:1]:
        print(f"{len(cycle)}:", *cycle)
    return 1 if arguments.most is not None and largest > arguments.most else 0


if __name__ == "__main__":
    sys.exit(main())
