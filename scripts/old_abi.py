#!/usr/bin/env python3
"""Compiles what a host loads with the C++ library's ABI of before GCC 5, which some hosts have.

  old_abi.py BUILD FOLDER ...

BUILD is a build tree with compile_commands.json; sources below the FOLDERs are compiled as they are
there, several as one, and no output is written. Fails with the compiler's first errors.
"""
import concurrent.futures
import json
import os
import shlex
import subprocess
import sys
import tempfile

BATCH = 16
APART = {"ReceivedBytes.cpp"}  # its headers and those of others declare the same twice


def flags_of(entry):
    """The command's own flags: no launcher, no output, no source."""
    words = shlex.split(entry["command"])
    while not os.path.basename(words[0]).startswith(("c++", "g++", "clang++")):
        words.pop(0)
    kept, skip = [words[0]], False
    for word in words[1:]:
        if skip:
            skip = False
        elif word in ("-o", "-c", "-MF", "-MT", "-MQ"):
            skip = True
        elif word not in ("-MD", "-MMD"):
            kept.append(word)
    return tuple(kept)


def has_sources_of(folders, path):
    """Whether it is one of them, or CMake's own file that includes some."""
    if os.path.basename(path).startswith("unity_"):
        with open(path, encoding="utf-8") as file:
            text = file.read()
        return any(f'#include "{folder}' in text for folder in folders)
    return os.path.abspath(path).startswith(folders)


def compile_together(job):
    flags, sources, folder = job
    with tempfile.NamedTemporaryFile("w", suffix=".cpp") as together:
        together.writelines(f'#include "{source}"\n' for source in sources)
        together.flush()
        done = subprocess.run([*flags, "-D_GLIBCXX_USE_CXX11_ABI=0", "-fsyntax-only",
                               "-Wno-subobject-linkage", together.name],
                              cwd=folder, capture_output=True, text=True)
    return done.stderr if done.returncode else ""


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    folders = tuple(os.path.abspath(folder) + os.sep for folder in sys.argv[2:])
    with open(os.path.join(sys.argv[1], "compile_commands.json"), encoding="utf-8") as file:
        entries = [e for e in json.load(file) if has_sources_of(folders, e["file"])]
    if not entries:
        sys.exit("old_abi.py: no sources in these folders")
    groups = {}
    for entry in entries:
        groups.setdefault((flags_of(entry), os.path.dirname(entry["file"])), []).append(
            entry["file"])
    jobs = []
    for (flags, _), sources in groups.items():
        apart = [s for s in sources
                 if os.path.basename(s) in APART or os.path.basename(s).startswith("unity_")]
        rest = sorted(set(sources) - set(apart))
        batches = [rest[i:i + BATCH] for i in range(0, len(rest), BATCH)] + [[s] for s in apart]
        jobs += [(flags, batch, sys.argv[1]) for batch in batches if batch]
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for errors in pool.map(compile_together, jobs):
            if errors:
                sys.exit("\n".join(errors.splitlines()[:40]))
    print(f"old_abi.py: {len(entries)} files")


if __name__ == "__main__":
    main()
