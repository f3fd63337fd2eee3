#!/usr/bin/env python3
"""Fails when the shared library shows more, or less, than the classes in laser/exported-classes.txt."""

import argparse
import re
import subprocess

from project_files import ROOT, project_files, report

FLAG = "_ZETLaserLoaded"
PREFIX = re.compile(r"^(vtable for|VTT for|typeinfo for|typeinfo name for|guard variable for|"
                    r"non-virtual thunk to|virtual thunk to|covariant return thunk to) ")
MARKED = re.compile(r"\b(?:class|struct)\s+ZETLASER_EXPORT\s+(\w+)")


def owner(symbol):
    """The class that a demangled symbol belongs to, or None."""
    match = re.match(r"(\w+)(::|$)", PREFIX.sub("", symbol))
    return match.group(1) if match else None


def visible_symbols(nm_output):
    """Demangled names in what `nm -DC --defined-only` prints: an address, a letter, a name."""
    return [line.split(maxsplit=2)[2] for line in nm_output.splitlines() if len(line.split(maxsplit=2)) == 3]


def check(symbols, listed, marked, defined):
    """listed: the classes to be visible; marked: those marked as exported; defined: those of them with a source."""
    findings = [f"visible, but not of a listed class: {symbol}" for symbol in symbols
                if symbol != FLAG and owner(symbol) not in listed]
    findings += [f"marked ZETLASER_EXPORT, but not listed: {name}" for name in sorted(marked - listed)]
    shown = {owner(symbol) for symbol in symbols}
    findings += [f"marked ZETLASER_EXPORT, but nothing of it is visible: {name}" for name in sorted(defined & listed - shown)]
    return findings


def marked_classes(root):
    """The classes that the headers mark as exported: all of them, and those whose source stands beside the header.
    Of a class that is only declared yet, nothing can be visible."""
    marked, defined = set(), set()
    for name in project_files(root):
        if name.parts[0] in ("laser", "reader", "writers", "features", "display") and name.suffix == ".h":
            classes = set(MARKED.findall((root / name).read_text(encoding="utf-8")))
            marked |= classes
            if (root / name).with_suffix(".cpp").is_file():
                defined |= classes
    return marked, defined


# (line of nm, whether it is refused), with the listed classes ZETLaserTarget and ZETLaserOptions.
PLANTED = [
    ("0000000000001100 B _ZETLaserLoaded", False),
    ("0000000000001100 T ZETLaserTarget::GetPoint() const", False),
    ("0000000000001100 W ZETLaserOptions::Nested::Nested()", False),
    ("0000000000001100 V vtable for ZETLaserTarget", False),
    ("0000000000001100 V typeinfo name for ZETLaserTarget", False),
    ("0000000000001100 T non-virtual thunk to ZETLaserTarget::~ZETLaserTarget()", False),
    ("0000000000001100 T ZETLaserTargetPrivate::ZETLaserTargetPrivate()", True),
    ("0000000000001100 T ZETLaserWriter::Write()", True),
    ("0000000000001100 V vtable for ZETLaserGroup", True),
    ("0000000000001100 W std::vector<ZETLaserTarget, std::allocator<ZETLaserTarget> >::~vector()", True),
    ("0000000000001100 T WriteNumber(QString&, double, int)", True),
    ("0000000000001100 u QtPrivate::helper<ZETLaserTarget>::value", True),
]


def self_test():
    listed = {"ZETLaserTarget", "ZETLaserOptions"}
    findings = []
    for line, is_refused in PLANTED:
        symbols = visible_symbols(f"\n{line}\n")
        if len(symbols) != 1 or len(check(symbols, listed, set(), set())) != (1 if is_refused else 0):
            findings.append(f"planted {line!r}: expected {'one' if is_refused else 'no'} finding")
    if len(check(["ZETLaserTarget::A()"], listed, listed, listed)) != 1:
        findings.append("a marked class that is not visible is not found")
    if len(check([], listed, {"ZETLaserWriter"}, set())) != 1:
        findings.append("a marked class that is not listed is not found")
    return findings, len(PLANTED) + 2


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--self-test", action="store_true", help="prove that planted symbols are found")
    parser.add_argument("--nm", default="nm")
    parser.add_argument("library", nargs="?")
    arguments = parser.parse_args()
    if arguments.self_test:
        report(*self_test(), "planted symbols")
    else:
        listing = subprocess.run([arguments.nm, "-DC", "--defined-only", arguments.library],
                                 check=True, capture_output=True, text=True).stdout
        names = visible_symbols(listing)
        classes = set((ROOT / "laser/exported-classes.txt").read_text(encoding="utf-8").split())
        marked, defined = marked_classes(ROOT)
        # A library whose sources define none of the classes shows nothing.
        report(check(names, classes, marked, defined), len(names) if defined else max(len(names), 1), "visible symbols")
