#!/usr/bin/env python3
"""Holds the layout of the sources to .clang-format.

Usage: check_format.py [--fix]

Looks at the tracked C++ files; exits with 1 when one is not laid out as clang-format 14 would, and
with 77 when the tool is missing or this is no git checkout.
"""

import pathlib
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
TOOL = "clang-format-14"


def main(arguments):
    listing = subprocess.run(["git", "-C", str(ROOT), "ls-files", "*.h", "*.cpp"],
                             capture_output=True, check=False, text=True)
    if shutil.which(TOOL) is None or listing.returncode != 0:
        print(f"{TOOL} or the git checkout is missing: skipped")
        return 77
    files = [name for name in listing.stdout.split("\n") if name and (ROOT / name).is_file()]
    mode = ["-i"] if "--fix" in arguments else ["--dry-run", "-Werror"]
    return int(subprocess.run([TOOL, *mode, *files], cwd=ROOT, check=False).returncode != 0)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
