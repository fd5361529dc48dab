#!/usr/bin/env python3
"""Takes a picture of each window by scripts/windows.script, for docs/windows.md and to be looked at.

  window_pictures.py OUT [--lang de] [--theme dark] [--scale 2] [--small] [--studio PROGRAM]

OUT gets the pictures and nothing else. The script names menus and rows in English; they are clicked
by what stands there in the language that is asked for.
"""
import argparse
import collections
import os
import re
import struct
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET
import zlib

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


def read_png(path):
    """Width and rows of (red, green, blue), of what the program writes: 8 bits, not interlaced."""
    with open(path, "rb") as file:
        data = file.read()
    at, packed = 8, b""
    while at < len(data):
        length, kind = struct.unpack(">I4s", data[at:at + 8])
        if kind == b"IHDR":
            width, height, _, colour = struct.unpack(">IIBB", data[at + 8:at + 18])
        if kind == b"IDAT":
            packed += data[at + 8:at + 8 + length]
        at += length + 12
    step = 4 if colour == 6 else 3
    raw, above, rows = zlib.decompress(packed), bytearray(width * step), []
    for y in range(height):
        start = y * (width * step + 1)
        row = bytearray(raw[start + 1:start + 1 + width * step])
        for i in range(len(row)):
            a, b = (row[i - step] if i >= step else 0), above[i]
            c = above[i - step] if i >= step else 0
            paeth = min((a, b, c), key=lambda v: abs(a + b - c - v))
            row[i] = (row[i] + (0, a, b, (a + b) // 2, paeth)[raw[start]]) & 255
        rows.append([tuple(row[i:i + 3]) for i in range(0, len(row), step)])
        above = row
    return width, rows


def shrink(path):
    """Writes the picture anew with a palette of 256 colours, the rare ones being rounded."""
    width, rows = read_png(path)
    count = collections.Counter(pixel for row in rows for pixel in row)
    common = [colour for colour, _ in count.most_common(256)]
    known = {colour: i for i, colour in enumerate(common)}
    for colour in count:
        if colour not in known:
            known[colour] = min(range(len(common)), key=lambda i: sum(
                (x - y) ** 2 for x, y in zip(common[i], colour)))
    packed = zlib.compress(b"".join(b"\0" + bytes(known[p] for p in row) for row in rows), 9)
    chunks = [(b"IHDR", struct.pack(">IIBBBBB", width, len(rows), 8, 3, 0, 0, 0)),
              (b"PLTE", bytes(v for colour in common for v in colour)), (b"IDAT", packed),
              (b"IEND", b"")]
    with open(path, "wb") as file:
        file.write(b"\x89PNG\r\n\x1a\n")
        for kind, data in chunks:
            file.write(struct.pack(">I", len(data)) + kind + data +
                       struct.pack(">I", zlib.crc32(kind + data)))


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("out")
    parser.add_argument("--lang", default="en", choices=["en", "de"])
    parser.add_argument("--theme", default="light", choices=["light", "dark"])
    parser.add_argument("--scale", default="1")
    parser.add_argument("--small", action="store_true", help="256 colours, for the documents")
    parser.add_argument("--studio", default=os.path.join(ROOT, "build/release/bin/rigwright-studio"))
    args = parser.parse_args()
    translate = translator(args.lang)
    with open(SCRIPT, encoding="utf-8") as file:
        script = re.sub(r'\b(menu|action|row|name)=("[^"]*"|\S+)',
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
    for name in os.listdir(args.out) if args.small else []:
        shrink(os.path.join(args.out, name))
    wrong = [line for line in run.stdout.splitlines() if '"ok":false' in line]
    if run.returncode or wrong:
        sys.exit("window_pictures.py: " + "\n".join(wrong or [run.stderr.strip()]))


if __name__ == "__main__":
    main()
