#!/usr/bin/env python3
"""How many members of the rigs' settings and state tell their unit, space or range.

usage: scripts/documented_members.py [--least PERCENT] [--missing] [FOLDER]

Counts the data members of all structs and classes below FOLDER (src/plugins) whose names end in
Settings, Configuration, Tuning, Values, Geometry, State or Memory. A member is documented when a doc
comment stands behind or right above it. --missing names those that are not; with --least the exit
status is 1 when a rig has fewer."""

import argparse
import pathlib
import re
import sys

KINDS = re.compile(
    r"^[ ]*(?:struct|class) (?:\w+::)*(\w*(?:Settings|Configuration|Tuning|Values|Geometry|State|Memory))"
    r"\b[^;{]*\{", re.M)
NO_MEMBER = re.compile(r"(using|static|friend|enum|struct|class|template|explicit|virtual|typedef)\b")


def body_of(text, start):
    """What stands between the brace before `start` and the one that closes it."""
    depth = 1
    for at in range(start, len(text)):
        depth += {"{": 1, "}": -1}.get(text[at], 0)
        if depth == 0:
            return text[start:at]
    return text[start:]


def members(body):
    """Name of each data member, and whether it has a doc comment."""
    above = False  # a doc comment stands right above
    depth = 0  # in what is nested: functions, types
    statement = ""
    for line in body.splitlines():
        code, mark, comment = line.partition("//")
        code = code.strip()
        if not code and not statement and depth == 0:
            above = bool(mark) and comment.startswith("/")
            continue
        statement += " " + code
        if statement.count("{") > statement.count("}"):
            continue  # an initializer or a function that goes on
        flat = re.sub(r"\{.*\}|=[^;]*", "", statement).strip()
        if not code.endswith(";") and not code.endswith("}") and not re.fullmatch(r"\w+:", flat):
            continue
        is_member = code.endswith(";") and "(" not in flat and not NO_MEMBER.match(flat)
        if is_member:
            for name in re.findall(r"(\w+)(?:\[\w+\])?(?=\s*[,;])", re.sub(r"<.*>", "", flat)):
                yield name, above or comment.startswith("/<")
        statement, above = "", False


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--least", type=float, help="percent that each rig must have documented")
    parser.add_argument("--missing", action="store_true", help="name the members without a comment")
    parser.add_argument("folder", nargs="?", type=pathlib.Path,
                        default=pathlib.Path(__file__).resolve().parent.parent / "src/plugins")
    arguments = parser.parse_args()
    rigs = {}
    for path in sorted(arguments.folder.rglob("*.h")):
        text = path.read_text()
        for kind in KINDS.finditer(text):
            for name, documented in members(body_of(text, kind.end())):
                counts = rigs.setdefault(path.parent.name, [0, 0])
                counts[0] += documented
                counts[1] += 1
                if arguments.missing and not documented:
                    print(f"{path.relative_to(arguments.folder)}: {kind[1]}::{name}")
    rigs["all"] = [sum(column) for column in zip(*rigs.values())] or [0, 0]
    worst = 100.0
    for rig, (documented, count) in sorted(rigs.items(), key=lambda item: item[0] == "all"):
        percent = 100.0 * documented / max(count, 1)
        worst = min(worst, percent)
        print(f"{percent:5.0f} % of {count:3} in {rig}")
    return 1 if arguments.least is not None and worst < arguments.least else 0


if __name__ == "__main__":
    sys.exit(main())
