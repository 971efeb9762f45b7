#!/usr/bin/env python3
"""Runs clang-tidy over the project's own sources.

Usage: tidy.py BUILD_FOLDER [-j N] [--all] [path prefixes...]

Takes the sources from the folder's compile_commands.json, those under the prefixes if any are
given. What passed once is remembered by its preprocessed text under ~/.cache (XDG_CACHE_HOME) and
not looked at again, unless --all is given. Exits with 1 on a finding.
"""

import argparse
import concurrent.futures
import hashlib
import json
import os
import pathlib
import shlex
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
TIDY = "clang-tidy-14"
CLANG = "clang++-14"

# What only GCC knows on a command line of its own.
GCC_ONLY = ("-fno-fat-lto-objects", "-ffat-lto-objects", "-flto=auto", "-Wno-restrict")


class Source:
    """One source and the command that compiles it."""

    def __init__(self, entry):
        self.path = pathlib.Path(entry["file"])
        self.folder = entry["directory"]
        words = shlex.split(entry["command"])
        start = next(i for i, word in enumerate(words) if word.startswith("-"))
        self.flags = self.compiler_flags(words[start:])
        self.name = self.path.relative_to(ROOT).as_posix()

    @staticmethod
    def compiler_flags(words):
        flags, rest = [], iter(words)
        for word in rest:
            if word in ("-o", "-c", "-MF", "-MT"):
                next(rest)
            elif word != "-MD" and word not in GCC_ONLY:
                flags.append(word)
        return flags + ["-fconstexpr-steps=20000000"]

    def fingerprint(self, settings):
        """Changes with anything that clang-tidy could see; None when it does not compile."""
        text = subprocess.run([CLANG, *self.flags, "-E", "-C", "-P", str(self.path)],
                              cwd=self.folder, capture_output=True, check=False)
        if text.returncode != 0:
            return None
        # The place of the checkout must not matter.
        flags = " ".join(self.flags).replace(str(ROOT), "")
        own = text.stdout.replace(str(ROOT).encode(), b"")
        return hashlib.sha256(settings + flags.encode() + own).hexdigest()

    def check(self, settings, cache):
        """What clang-tidy says about this source; empty when it is content."""
        fingerprint = self.fingerprint(settings)
        mark = cache / fingerprint if fingerprint else None
        if mark is not None and mark.exists():
            return ""
        result = subprocess.run([TIDY, "--quiet", str(self.path), "--", *self.flags],
                                cwd=self.folder, capture_output=True, check=False, text=True)
        if result.returncode == 0:
            if mark is not None:
                mark.touch()
            return ""
        return result.stdout.strip() or result.stderr.strip()


def sources_of(build, prefixes):
    entries = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
    sources = {}
    for entry in entries:
        path = pathlib.Path(entry["file"])
        if ROOT in path.parents and build not in path.parents:
            source = Source(entry)
            if not prefixes or source.name.startswith(tuple(prefixes)):
                sources[source.name] = source
    return [sources[name] for name in sorted(sources)]


def main(arguments):
    parser = argparse.ArgumentParser()
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("-j", type=int, default=os.cpu_count())
    parser.add_argument("--all", action="store_true")
    parser.add_argument("prefixes", nargs="*")
    options = parser.parse_intermixed_args(arguments)

    home = os.environ.get("XDG_CACHE_HOME") or pathlib.Path.home() / ".cache"
    cache = pathlib.Path(home) / "zro-tidy"
    cache.mkdir(parents=True, exist_ok=True)
    version = subprocess.run([TIDY, "--version"], capture_output=True, check=True).stdout
    settings = version + (ROOT / ".clang-tidy").read_bytes()
    if options.all:
        settings += os.urandom(16)

    sources = sources_of(options.build.resolve(), options.prefixes)
    found = 0
    with concurrent.futures.ThreadPoolExecutor(options.j) as pool:
        for source, words in zip(sources, pool.map(lambda s: s.check(settings, cache), sources)):
            if words:
                print(f"{source.name}\n{words}", flush=True)
                found += 1
    print(f"clang-tidy: {len(sources)} sources, {found} with findings")
    return int(found != 0)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
