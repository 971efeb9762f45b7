#!/usr/bin/env python3
"""Holds docs/oddities.md to its word: each row names a test that there is.

Usage: check_oddities.py
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
TEST = re.compile(r"^TEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)\)", re.M)
ROW = re.compile(r"^\|.*\| `(\w+\.\w+)` \|$", re.M)


def main():
    tests = set()
    for path in (ROOT / "tests").rglob("*_test.cpp"):
        tests.update(".".join(name) for name in TEST.findall(path.read_text(encoding="utf-8")))
    text = (ROOT / "docs" / "oddities.md").read_text(encoding="utf-8")
    rows = [row for row in text.splitlines()
            if row.startswith("|") and not row.startswith(("|---", "| What surprises"))]
    named = ROW.findall(text)
    for name in named:
        if name not in tests:
            print(f"docs/oddities.md names {name}, and there is no such test")
    if len(named) != len(rows):
        print(f"docs/oddities.md: {len(rows) - len(named)} rows without a test")
    missing = len(rows) - len(named) + len(set(named) - tests)
    if missing == 0:
        print(f"{len(rows)} oddities, each with its test")
    return int(missing != 0)


if __name__ == "__main__":
    sys.exit(main())
