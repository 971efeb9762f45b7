#!/usr/bin/env python3
"""Looks through the tracked files for words that do not belong in them.

Usage: check_words.py

To-do marks, commented-out merges, paths of one machine, and references to documents that a reader
of the repository does not have. Exits with 1 on a finding, with 77 outside a git checkout.
"""

import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

# Texts from outside keep their own words; this file has to name what it looks for.
EXEMPT = re.compile(r"^(LICENSE$|tests/data/|fuzz/corpus/|tools/check_words\.py$|zro/.*\.inc$)")
BINARY = {".png", ".zip", ".gz", ".ico", ".docx"}

WORDS = [
    (re.compile(r"\b(TODO|FIXME|XXX|HACK)\b"), "finish it, or leave the code whole"),
    (re.compile(r"^(<<<<<<<|>>>>>>>) "), "left over from a merge"),
    (re.compile(r"(?<![\w/.])/(work|root|home)/\w"), "a path of one machine"),
    (re.compile(r"\bPart \d+\.\d+"), "a reference that no reader can follow"),
    (re.compile(r"\bspec(s|ification|ifications)?\b", re.I), "name the standard, or say the rule"),
]


def tracked_files():
    listing = subprocess.run(["git", "-C", str(ROOT), "ls-files", "-z"], capture_output=True,
                             check=True).stdout.decode()
    return [name for name in listing.split("\0") if name]


def findings_in(name):
    path = ROOT / name
    if EXEMPT.match(name) or path.suffix in BINARY or not path.is_file():
        return
    for number, line in enumerate(path.read_text(encoding="utf-8", errors="replace").splitlines(), 1):
        for pattern, reason in WORDS:
            if pattern.search(line):
                yield f"{name}:{number}: {reason}: {line.strip()[:80]}"


def main():
    try:
        files = tracked_files()
    except (OSError, subprocess.CalledProcessError):
        print("not a git checkout: skipped")
        return 77
    found = [finding for name in files for finding in findings_in(name)]
    print("\n".join(found) if found else f"{len(files)} tracked files: no stray words")
    return int(bool(found))


if __name__ == "__main__":
    sys.exit(main())
