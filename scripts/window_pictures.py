#!/usr/bin/env python3
"""Takes a picture of each window by scripts/windows.script, for docs/windows.md and to be looked at.

  window_pictures.py OUT [--lang de] [--theme dark] [--scale 2] [--studio PROGRAM]

OUT gets the pictures and nothing else. The script names menus and rows in English; they are clicked
by what stands there in the language that is asked for.
"""
import argparse
import os
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
SCRIPT = os.path.join(ROOT, "scripts/windows.script")
TS = os.path.join(ROOT, "data/translations/rigwright_%s.ts")


def plain(text):
    """Without the marks of mnemonics."""
    return re.sub(r"&(.)", r"\1", text)


def translator(language):
    if language == "en":
        return lambda text: text
    messages = ET.parse(TS % language).getroot().iter("message")
    known = {plain(m.findtext("source")): plain(m.findtext("translation") or "") for m in messages}
    return lambda text: "/".join(known.get(part) or part for part in text.split("/"))


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("out")
    parser.add_argument("--lang", default="en", choices=["en", "de"])
    parser.add_argument("--theme", default="light", choices=["light", "dark"])
    parser.add_argument("--scale", default="1")
    parser.add_argument("--studio", default=os.path.join(ROOT, "build/release/bin/rigwright-studio"))
    args = parser.parse_args()
    translate = translator(args.lang)
    with open(SCRIPT, encoding="utf-8") as file:
        script = re.sub(r'\b(menu|action|row)=("[^"]*"|\S+)',
                        lambda m: f'{m[1]}="{translate(m[2].strip(chr(34)))}"', file.read())
    os.makedirs(args.out, exist_ok=True)
    with tempfile.TemporaryDirectory() as work:
        path = os.path.join(work, "script")
        with open(path, "w", encoding="utf-8") as file:
            file.write(script)
        run = subprocess.run(
            ["xvfb-run", "-a", "-s", "-screen 0 2600x1800x24 -dpi 96", os.path.abspath(args.studio),
             "--script", path, "--lang", args.lang, "--theme",
             args.theme, "--scale", args.scale, "--geometry", "1000x700", "--data-root",
             os.path.join(work, "data")],
            cwd=args.out, env={**os.environ, "QT_QPA_PLATFORM": "xcb"}, capture_output=True,
            text=True)
    wrong = [line for line in run.stdout.splitlines() if '"ok":false' in line]
    if run.returncode or wrong:
        sys.exit("window_pictures.py: " + "\n".join(wrong or [run.stderr.strip()]))


if __name__ == "__main__":
    main()
