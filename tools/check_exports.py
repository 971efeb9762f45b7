#!/usr/bin/env python3
"""Holds the list of what the shared library exports.

Usage: check_exports.py [--write] LIBRARY LIST OBJECTS

LIST has one name a line: the classes, functions and objects of the namespace ZroCommon that the
library exports something of. A name too few breaks programs that exist; a name too many is a
promise nobody meant to give. OBJECTS is the linker's list of the objects that a program may have
its own copy of. Exits with 1 on a difference from either, and on any symbol outside of the
namespace.
"""

import pathlib
import re
import subprocess
import sys

PREFIXES = re.compile(r"^(vtable for |VTT for |typeinfo for |typeinfo name for "
                      r"|guard variable for |(non-)?virtual thunk to |construction vtable for )+")
OWN = re.compile(r"ZroCommon::(~?\w+|operator\W+)")


def exported_symbols(library):
    listing = subprocess.run(["nm", "-D", "-C", "--defined-only", "--without-symbol-versions",
                              library], capture_output=True, check=True, text=True).stdout
    for line in listing.splitlines():
        kind, symbol = re.match(r"^\S+ (\S) (.*)$", line).groups()
        if kind != "A":  # the name of the symbol version itself
            yield symbol


def exported_objects(library):
    listing = subprocess.run(["readelf", "--dyn-syms", "--wide", library], capture_output=True,
                             check=True, text=True).stdout
    rows = (line.split() for line in listing.splitlines())
    names = {row[7].split("@")[0] for row in rows
             if len(row) > 7 and row[3] == "OBJECT" and row[6] not in ("UND", "ABS")}
    return {name for name in names if not re.match("_ZT[VTIS]", name)}


def main(arguments):
    library, listing, objects = [a for a in arguments if a != "--write"]
    path = pathlib.Path(listing)
    names, strangers = set(), []
    for symbol in exported_symbols(library):
        own = OWN.match(PREFIXES.sub("", symbol))
        if own and own.group(1) != "internal":
            names.add(own.group(1).strip())
        else:
            strangers.append(symbol)
    if "--write" in arguments:
        path.write_text("".join(f"{name}\n" for name in sorted(names)), encoding="utf-8")
        return 0
    listed = set(path.read_text(encoding="utf-8").split("\n")) - {""}
    bound = set(re.findall(r"\b(_Z\w+);", pathlib.Path(objects).read_text(encoding="utf-8")))
    exported = exported_objects(library)
    found = ([f"not of the public namespace: {s}" for s in strangers]
             + [f"no longer exported: {n}" for n in sorted(listed - names)]
             + [f"exported but not listed: {n}" for n in sorted(names - listed)]
             + [f"{objects} is not in step: {n}" for n in sorted(bound ^ exported)])
    print("\n".join(found) if found else f"{len(names)} names exported, as listed")
    return int(bool(found))


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
