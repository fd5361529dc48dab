#!/usr/bin/env python3
"""Brings data/translations/rigwright_de.ts up to the texts that users see.

Texts come from layout documents (data/core/layout/), from the first argument of Translate(...) and
Translatable(...), from message boxes from names of undo steps and from the sentences of files that know util::Sentence, and
from the rigs themselves, which the program list_texts prints. Translations stay; texts that have
gone are marked "vanished", and come back with their translation.

  update_translations.py [--texts PROGRAM]           (default: build/release/bin/list_texts)
  update_translations.py --missing                   writes nothing; prints what has no German as
                                                     JSON, to be filled in and given to --add
  update_translations.py --add FILE.json             fills in translations, {"English": "Deutsch"}
  update_translations.py --check                     writes nothing; fails with a list of what has
                                                     no German or lost a %1, and of mnemonics that
                                                     two entries of a menu or window share
"""
import argparse
import json
import os
import re
import subprocess
import sys
import xml.etree.ElementTree as ET
from xml.sax.saxutils import escape

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
TS = os.path.join(ROOT, "data/translations/rigwright_de.ts")
LAYOUTS = os.path.join(ROOT, "data/core/layout")
LITERALS = r'((?:"(?:[^"\\\n]|\\.)*"\s*)+)'
CALLS = re.compile(r"\b(?:Translate|Translatable)\(")
# What rigs tell of their ground.
REPORTS = re.compile(r"\breport\.(?:title|otherwise)\s*=([^;]*);")
# Steps of undo are named in English, and translated when a window lists them.
STEPS = re.compile(r"\b(?:BeginUndoBlock\(|BeginTake\(|UndoBlock block\([^\"]*|AsOneStep\(|ChangeRows\(|ChangeInputs\([^\"]*)"
                   + LITERALS + r"\s*[,)]")
BOXES = re.compile(r"\bMessageBox\(\s*" + LITERALS + r"(?:,\s*" + LITERALS + r"\s*,)?")
SENTENCE = re.compile(r"(?:[A-Z]|%1 ).* .*[.?:]|.*%\d.*[.]|[A-Z][a-z]+[.]")
# Documents that stand within another's window: their mnemonics are reached together.
DOCKED = {"rws_main.xml": ["rws_toolconfig.xml", "rws_popout_product.xml"]}
ESCAPES = {"n": "\n", "t": "\t", '"': '"', "\\": "\\", "'": "'"}


def fail(text):
    sys.exit(f"update_translations.py: {text}")


def unquote(literals):
    pieces = re.findall(r'"((?:[^"\\\n]|\\.)*)"', literals)
    return re.sub(r"\\(.)", lambda m: ESCAPES.get(m[1], m[0]), "".join(pieces))


def first_argument(code, start):
    """The text from `start` to the comma or bracket that ends the argument."""
    depth = 0
    tokens = re.compile(r'"(?:[^"\\\n]|\\.)*"|[()\[\]{},]')
    for token in tokens.finditer(code, start):
        depth += {"(": 1, "[": 1, "{": 1, ")": -1, "]": -1, "}": -1}.get(token[0], 0)
        if depth < 0 or (depth == 0 and token[0] == ","):
            return code[start:token.start()]
    return ""


def from_code():
    for folder, _, names in sorted(os.walk(os.path.join(ROOT, "src"))):
        if os.path.join("app", "rigwright") in folder:  # the command line speaks English
            continue
        for name in sorted(names):
            if not name.endswith((".cpp", ".h")):
                continue
            path = os.path.join(folder, name)
            with open(path, encoding="utf-8") as file:
                code = re.sub(r"^\s*//.*$", "", file.read(), flags=re.M)
            where = os.path.relpath(path, ROOT)
            for call in CALLS.finditer(code):
                for literals in re.findall(LITERALS, first_argument(code, call.end())):
                    yield unquote(literals), where
            for box in BOXES.finditer(code):
                for literals in filter(None, box.groups()):
                    yield unquote(literals), where
            for report in REPORTS.finditer(code):
                for literals in re.findall(LITERALS, report[1]):
                    yield unquote(literals), where
            for step in STEPS.finditer(code):
                yield unquote(step[1]), where
            if "Sentence" in code:
                for literals in re.findall(LITERALS, code):
                    if SENTENCE.fullmatch(unquote(literals)):
                        yield unquote(literals), where


def from_layout(path):
    try:
        root = ET.parse(path).getroot()
    except ET.ParseError as error:
        fail(f"{path}: {error}")
    where = os.path.relpath(path, ROOT)
    for element in root.iter():
        for attribute in ("label", "defaulttext", "hint", "name"):
            yield element.get(attribute, ""), where
        if element.tag in ("label", "tooltip"):
            yield " ".join((element.text or "").split()), where


def from_layouts():
    for folder, _, names in sorted(os.walk(LAYOUTS)):
        for name in sorted(names):
            if name.endswith(".xml"):
                yield from from_layout(os.path.join(folder, name))


def from_rigs(program):
    try:
        run = subprocess.run([program], capture_output=True, text=True, check=True)
    except (OSError, subprocess.CalledProcessError) as error:
        fail(f"{program}: {error} (build the target list_texts, or name it by --texts)")
    for line in run.stdout.splitlines():
        entry = json.loads(line)
        yield entry["text"], entry["where"]


def has_words(text):
    """What has no two letters in a row is the same in every language."""
    return re.search(r"[^\W\d_]{2}", re.sub(r"%\d", "", text)) is not None


def collect(program):
    """The texts with the places where they stand, in the order in which they are found."""
    found = {}
    for source in (from_layouts(), from_code(), from_rigs(program)):
        for text, where in source:
            if has_words(text):
                places = found.setdefault(text, [])
                if where not in places:
                    places.append(where)
    return found


def load():
    """Translation by text; None where there is none."""
    if not os.path.exists(TS):
        return {}
    try:
        root = ET.parse(TS).getroot()
    except ET.ParseError as error:
        fail(f"{TS}: {error} (it was left as it is)")
    known = {}
    for message in root.iter("message"):
        known[message.findtext("source")] = message.findtext("translation") or None
    return known


def message(text, translation, places):
    kind = "" if places and translation else ' type="vanished"' if not places else ' type="unfinished"'
    note = f"        <extracomment>{escape('; '.join(places[:3]))}</extracomment>\n" if places else ""
    return (f"    <message>\n        <source>{escape(text)}</source>\n{note}"
            f"        <translation{kind}>{escape(translation or '')}</translation>\n    </message>\n")


def write(found, known):
    body = "".join(message(text, known.get(text), places) for text, places in found.items())
    body += "".join(message(text, translation, []) for text, translation in known.items()
                    if text not in found and translation)
    text = ('<?xml version="1.0" encoding="utf-8"?>\n<!DOCTYPE TS>\n'
            '<TS version="2.1" language="de" sourcelanguage="en">\n<context>\n'
            f"    <name>rigwright</name>\n{body}</context>\n</TS>\n")
    os.makedirs(os.path.dirname(TS), exist_ok=True)
    with open(TS + ".partial", "w", encoding="utf-8", newline="\n") as out:
        out.write(text)
    os.replace(TS + ".partial", TS)


def mnemonic(text):
    marked = re.search(r"&([^&])", text.replace("&&", ""))
    return marked[1].lower() if marked else None


def scopes():
    """(name, texts) of what is reached by Alt at one time: a window with its menus, a menu."""
    documents = {}
    for folder, _, names in sorted(os.walk(LAYOUTS)):
        for name in sorted(names):
            documents[name] = ET.parse(os.path.join(folder, name)).getroot()
    for name, root in documents.items():
        window = []
        for part in [root] + [documents[docked] for docked in DOCKED.get(name, [])]:
            for element in part.iter():
                entries = [child.get("label", "") for child in element
                           if child.tag in ("item", "menu")]
                if element.tag == "menubar":
                    window += entries
                elif element.tag in ("menu", "popup"):
                    yield f"{name}, {element.get('label', 'popup')}", entries
                elif element.tag in ("button", "checkbox", "label", "group"):
                    window.append(element.get("label") or " ".join((element.text or "").split()))
        yield name, window


def check_mnemonics(known):
    """The number of mnemonics that two texts share."""
    wrong = 0
    for language, shown in (("en", lambda text: text), ("de", lambda text: known.get(text) or text)):
        for name, texts in scopes():
            taken = {}
            for text in dict.fromkeys(texts):
                letter = mnemonic(shown(text))
                if letter and letter in taken:
                    wrong += 1
                    print(f"{name}: {shown(text)!r} and {shown(taken[letter])!r} share a letter "
                          f"({language})", file=sys.stderr)
                elif letter:
                    taken[letter] = text
    return wrong


def check(found, known):
    wrong = 0
    for text, places in found.items():
        translation = known.get(text)
        if not translation:
            why = "no translation"
        elif sorted(re.findall(r"%\d", text)) != sorted(re.findall(r"%\d", translation)):
            why = "other placeholders"
        elif bool(mnemonic(text)) != bool(mnemonic(translation)):
            why = "a mnemonic in one of the two"
        else:
            continue
        wrong += 1
        print(f"{why}: {text!r} ({places[0]})", file=sys.stderr)
    wrong += check_mnemonics(known)
    if wrong:
        fail(f"{wrong} of {len(found)} texts are wrong in {os.path.relpath(TS, ROOT)}")
    print(f"{len(found)} texts, all of them in German")


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--texts", metavar="PROGRAM",
                        default=os.path.join(ROOT, "build/release/bin/list_texts"))
    parser.add_argument("--check", action="store_true")
    parser.add_argument("--missing", action="store_true")
    parser.add_argument("--add", metavar="FILE.json")
    args = parser.parse_args()
    found = collect(args.texts)
    known = load()
    if args.check:
        return check(found, known)
    if args.missing:
        lacking = {text: "" for text in found if not known.get(text)}
        return print(json.dumps(lacking, indent=1, ensure_ascii=False))
    if args.add:
        with open(args.add, encoding="utf-8") as file:
            known.update(json.load(file))
    write(found, known)
    lacking = [text for text in found if not known.get(text)]
    print(f"{len(found)} texts, {len(lacking)} without a translation")


if __name__ == "__main__":
    main()
