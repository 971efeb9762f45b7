#!/usr/bin/env python3
"""Keeps zro/ZroCommon.h, the include for everything, in step with the public headers.

Usage: umbrella.py [--check] ROOMS_TXT

Writes the umbrella header from the rooms that the build lists, or with --check says which headers
it lacks or has too many, and exits with 1 when there are any.
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
UMBRELLA = ROOT / "zro" / "ZroCommon.h"
HEAD = "#pragma once\n\n/// \\file\n/// Everything the library offers, in one include.\n\n"


def public_headers(rooms_file):
    """The headers of all rooms, outside internal/ folders, in the order of their paths."""
    headers = set()
    for line in rooms_file.read_text(encoding="utf-8").splitlines():
        files = line.split("|")[2].split()
        headers.update(f for f in files if f.endswith(".h") and "/internal/" not in f)
    return sorted(headers)


def main(arguments):
    check = "--check" in arguments
    headers = public_headers(pathlib.Path([a for a in arguments if a != "--check"][0]))
    if not check:
        UMBRELLA.write_text(HEAD + "".join(f'#include "{h}"\n' for h in headers), encoding="utf-8")
        return 0
    included = re.findall(r'^#include "([^"]+)"', UMBRELLA.read_text(encoding="utf-8"), re.M)
    for header in sorted(set(headers) - set(included)):
        print(f"zro/ZroCommon.h does not include {header}; run ./dev umbrella")
    for header in sorted(set(included) - set(headers)):
        print(f"zro/ZroCommon.h includes {header}, which is no public header of any room")
    return int(set(headers) != set(included))


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
