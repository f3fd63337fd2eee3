#!/usr/bin/env python3
"""Fails when a file of the project leans on papers that its readers don't have, or names paths of one machine.

The code and its documents stand for themselves: whoever reads them has this tree and nothing else."""

import pathlib
import re
import tempfile

from project_files import project_files, run

# The patterns are put together from pieces, so that this file passes its own check.
PATTERNS = [
    (re.compile(r"\b" + "sp" + r"ec(s|ification|ifications)?\b", re.IGNORECASE), "speaks of papers outside the tree"),
    (re.compile(r"\b" + "part" + r"s?\s+\d+\.\d+", re.IGNORECASE), "refers to a numbered chapter outside the tree"),
    (re.compile(r"\b" + "iss" + r"ues?\s+#?\d+", re.IGNORECASE), "refers to a ticket: tell the reason itself"),
    (re.compile(r"(?<![\w.}$-])/(" + "wo" + r"rk|ro" + r"ot|ho" + r"me/\w+)/"), "names a path of one machine"),
    (re.compile("/t" + "mp/wt"), "names a path of one machine"),
]


def check(root):
    names = project_files(root)
    findings = []
    for name in names:
        content = (root / name).read_bytes()
        lines = [(0, str(name))]
        if b"\0" not in content:
            lines += enumerate(content.decode("utf-8", errors="replace").splitlines(), start=1)
        findings += [f"{name}:{number}: {match.group()!r} {reason}"
                     for number, line in lines for pattern, reason in PATTERNS for match in pattern.finditer(line)]
    return findings, len(names)


# (file name, text, whether it is refused)
PLANTED = [
    ("a.cpp", "// as the " + "sp" + "ecification tells", True),
    ("a.cpp", "// see the " + "Sp" + "ec.", True),
    ("a.cpp", "// " + "SP" + "ECS: none", True),
    ("docs/sp" + "ec.md", "", True),
    ("a.md", "told in " + "Part" + " 1.1", True),
    ("a.md", "told in " + "part" + "s 4.3 and 4.4", True),
    ("a.md", "closes " + "iss" + "ue #12", True),
    ("a.sh", "cd /wo" + "rk/main", True),
    ("a.sh", "cat '/ro" + "ot/notes'", True),
    ("a.sh", "cat /t" + "mp/wt/x", True),
    ("a.sh", "cat /ho" + "me/jane/x", True),
    ("a.cpp", "// the part 1 of 2 is specific, unspecified or specialised", False),
    ("a.cpp", "// a part of 1.5 m", False),
    ("a.cpp", "// frame" + "wo" + "rk/core, ${path}/wo" + "rk/x and ./ro" + "ot/x", False),
]


def self_test():
    """Each planted text alone in a tree: the check must find exactly the refused ones."""
    findings = []
    for name, text, is_refused in PLANTED:
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(f"first line\n{text}\n", encoding="utf-8")
            found, _ = check(pathlib.Path(folder))
            if len(found) != (1 if is_refused else 0):
                findings.append(f"planted {name}: {text!r}: expected {'one' if is_refused else 'no'} finding, got {found}")
    return findings, len(PLANTED)


if __name__ == "__main__":
    run(__doc__, check, "files", self_test, "planted texts")
