#!/usr/bin/env python3
"""Runs the commands that pages show, as a reader would: all blocks marked "sh" of a page, one after
the other, in a fresh folder beside which "examples" lies. Fails at the first command that does.

    doc_commands.py PROGRAM_FOLDER PAGE.md...

Blocks that call scripts/ build the program, and are left out.
"""
import os
import re
import subprocess
import sys
import tempfile

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BLOCK = re.compile(r"^```sh\n(.*?)^```", re.S | re.M)


def commands_of(page):
    with open(page, encoding="utf-8") as file:
        return [block for block in BLOCK.findall(file.read()) if "scripts/" not in block]


def run(page, programs):
    blocks = commands_of(page)
    if not blocks:
        sys.exit(f"{page}: holds no block of commands, which begins with ```sh")
    with tempfile.TemporaryDirectory() as folder:
        os.symlink(os.path.join(ROOT, "examples"), os.path.join(folder, "examples"))
        environment = {**os.environ, "PATH": programs + os.pathsep + os.environ["PATH"],
                       "RIGWRIGHT_DATA_ROOT": os.path.join(folder, "root"),
                       "QT_QPA_PLATFORM": "offscreen", "SDL_VIDEODRIVER": "dummy"}
        tell = "set -eEuo pipefail; trap 'echo \"failed: $BASH_COMMAND\" >&2' ERR\n"
        if subprocess.run(["bash", "-c", tell + "".join(blocks)], cwd=folder, env=environment,
                          stdin=subprocess.DEVNULL).returncode != 0:
            sys.exit(f"{page}: a command of it fails")


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    for each in sys.argv[2:]:
        run(each, os.path.abspath(sys.argv[1]))
