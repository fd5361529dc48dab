#!/usr/bin/env python3
"""Finds what the Maya plug-in calls of its host without a probe that calls it too.

  maya_calls.py --probes LIBRARY.a --plugin LIBRARY.a ...

Fails with a list: write a probe of what is relied on (src/adaptor/maya/probes).
"""
import argparse
import re
import subprocess
import sys

CALL = re.compile(r"^\s*U \S*?OpenMaya\d+::(M\w+::[^(\n]*)\(", re.MULTILINE)

# What a plug-in is, says and is told by: nothing is believed of it that could be refuted from within.
EXEMPT = re.compile(r"MPxCommand::|MPxNode::|MFnPlugin::|MArgList::|MStatus::|MGlobal::display|"
                    r"MQtUtil::|MMatrix::|M3dView::applicationShell|(\w+)::~?\1$|.*::operator")


def calls(libraries):
    found = set()
    for library in libraries:
        done = subprocess.run(["nm", "-C", "-u", library], capture_output=True, text=True)
        if done.returncode != 0:
            sys.exit(f"maya_calls.py: {library}: {done.stderr.strip()}")
        found.update(CALL.findall(done.stdout))
    return found


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--probes", required=True)
    parser.add_argument("--plugin", nargs="+", required=True)
    options = parser.parse_args()
    used = calls(options.plugin)
    if not used:
        sys.exit("maya_calls.py: the plug-in calls nothing of its host: wrong libraries?")
    unprobed = sorted(c for c in used - calls([options.probes]) if not EXEMPT.match(c))
    if unprobed:
        sys.exit("Called without a probe:\n  " + "\n  ".join(unprobed))
    print(f"maya_calls.py: {len(used)} calls")


if __name__ == "__main__":
    main()
