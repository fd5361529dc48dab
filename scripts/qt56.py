#!/usr/bin/env python3
"""Finds what Qt 5.6.1 has not: hosts bring their own Qt, and the windows run in old ones.

  qt56.py --libraries LIBRARY.a ... --sources FOLDER ...

Libraries are searched for symbols of Qt that are newer, by the lists that Debian's packages of Qt
carry (/var/lib/dpkg/info/); sources for words of what stands in Qt's headers alone and
leaves no symbol. Fails with a list.
"""
import argparse
import glob
import os
import re
import subprocess
import sys

LIMIT = (5, 6, 1)
LISTS = "/var/lib/dpkg/info/libqt5%s*.symbols"
PACKAGES = ("core5", "gui5", "widgets5")
ENTRY = re.compile(r'\s+(?:\([^)]*\))?"?([^"@\s]+)@Qt_5[\w.]*"? (\d+(?:\.\d+)*)')

# Newer symbols that may stay, each with why.
EXCEPTIONS = {
    "qt_version_tag": "each Qt's headers name their own version; an older Qt's name an older one",
    "_ZN15QLinearGradientD1Ev": "older headers leave the destructor to the compiler",
    "_ZN17QAbstractItemView11eventFilterEP7QObjectP6QEvent": "of a table of virtual functions; "
    "an older Qt's table names the one of QAbstractScrollArea",
    "_ZN9QTreeView29verticalScrollbarValueChangedEi": "likewise; that of QAbstractItemView",
    "_ZNK11QPushButton9hitButtonERK6QPoint": "likewise; that of QAbstractButton",
    "_ZN9QtPrivate26DeprecatedRefClassBehavior4warnENS0_11WarningTypeENS0_13EmittingClassE":
    "a check of a newer header's own; only in builds that are not optimised",
    "_ZNK7QString5splitE5QChar6QFlagsIN2Qt18SplitBehaviorFlagsEENS2_15CaseSensitivityE":
    "calls without a behaviour mean the same in each Qt",
}

# What a header gives without a symbol: word, version that brought it.
WORDS = {
    r"qAsConst": "5.7", r"q(Const|NonConst)?Overload|QOverload": "5.7", r"Q_FALLTHROUGH": "5.8",
    r"Q_NAMESPACE(_EXPORT)?|Q_(ENUM|FLAG)_NS": "5.8", r"QStringView": "5.10",
    r"QStringTokenizer": "6.0", r"qsizetype": "5.10", r"qScopeGuard|QScopeGuard": "5.12",
    r"Q_DISABLE_(COPY_)?MOVE": "5.13", r"Qt::(Skip|Keep)EmptyParts|Qt::SplitBehavior": "5.14",
    r"Qt::(endl|hex|dec|fixed|ws)": "5.14", r"QColorConstants": "5.14", r"qExchange": "5.14",
    r"horizontalAdvance": "5.11", r"sibling(AtColumn|AtRow)": "5.11",
    r"(const)?[kK]eyValue(Begin|End)": "5.10", r"chopped": "5.10", r"QRandomGenerator": "5.10",
    r"QDeadlineTimer": "5.8", r"QOperatingSystemVersion": "5.9", r"grownBy|shrunkBy": "5.14",
    r"(text)(Activated|Highlighted)": "5.14", r"id(Clicked|Pressed|Released|Toggled)": "5.15",
    r"errorOccurred": "5.15", r"globalPosition": "5.14", r"qEnvironmentVariable": "5.10",
    r"Q_REQUIRED_RESULT_|Q_DECL_NODISCARD": "6.0", r"QMultiHash<[^>]*>::unite": "6.0",
    r"\b(e|event|wheel|turn)(->|\.)position\(\)": "5.14",
    r"#include <Q(StringView|RandomGenerator|ScopeGuard|DeadlineTimer|Overload)>": "5.7",
}


def fail(text):
    sys.exit(f"qt56.py: {text}")


def known_symbols():
    """The version that brought each symbol of the Qt that is installed."""
    since = {}
    for path in (path for name in PACKAGES for path in glob.glob(LISTS % name)):
        with open(path, encoding="utf-8") as lines:
            for entry in filter(None, map(ENTRY.match, lines)):
                since[entry[1]] = tuple(map(int, entry[2].split(".")))[:3]
    if len(since) < 10000:
        fail(f"{LISTS % PACKAGES[0]} holds no list of Qt's symbols; they come with Debian's packages of Qt 5")
    return since


def used_symbols(libraries):
    run = subprocess.run(["nm", "-A", "-u", "--no-demangle", *libraries], capture_output=True,
                         text=True)
    if run.returncode:
        fail(run.stderr.strip())
    return {line.split()[-1]: line.split(":")[1] for line in run.stdout.splitlines()
            if " U " in line}


def newer_symbols(libraries):
    since, used = known_symbols(), used_symbols(libraries)
    if not any(symbol in since for symbol in used):
        fail("the libraries use no symbol of Qt at all")
    for symbol in sorted(used):
        if since.get(symbol, LIMIT) > LIMIT and symbol not in EXCEPTIONS:
            name = subprocess.run(["c++filt", symbol], capture_output=True, text=True).stdout.strip()
            yield f"{used[symbol]}: {name} came with Qt {'.'.join(map(str, since[symbol]))}"


def newer_words(folders):
    patterns = [(re.compile(r"(?<![\w])(?:" + word + r")(?!\w)"), version)
                for word, version in WORDS.items()]
    for folder in folders:
        for path in sorted(glob.glob(os.path.join(folder, "**", "*.*"), recursive=True)):
            if not path.endswith((".h", ".cpp")):
                continue
            with open(path, encoding="utf-8") as file:
                for number, line in enumerate(file, 1):
                    code = line.split("//")[0]
                    for pattern, version in patterns:
                        if found := pattern.search(code):
                            yield f"{path}:{number}: {found[0]} came with Qt {version}"


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--libraries", nargs="+", required=True)
    parser.add_argument("--sources", nargs="+", required=True)
    args = parser.parse_args()
    found = [*newer_symbols(args.libraries), *newer_words(args.sources)]
    print("\n".join(found))
    if found:
        fail(f"{len(found)} uses of what Qt 5.6.1 has not")


if __name__ == "__main__":
    main()
