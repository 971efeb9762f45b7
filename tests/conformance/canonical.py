#!/usr/bin/env python3
"""Compares the canonical XML of documents with that of what the program saves of them.

usage: canonical.py ZRO DATA_DIR CONFORMANCE_MD

Every real document that loads is saved, and `xmllint --c14n` of input and output are the same but for
what a saved tree leaves out: comments and processing instructions, attributes that are empty or come
from a DTD only, and white space of an attribute value that a reference gave. The valid cases of the
W3C suite that come with a canonical output are held to that in the same way. The page lists those
that differ, each with its reason. Ends with 77 where there is nothing to compare.
"""
import collections
import concurrent.futures
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path
from xml.parsers import expat

SUFFIXES = {".fo", ".xml", ".svg", ".mml", ".xsl", ".xhtml", ".html", ".xconf"}
NOT_COMPARABLE = 77


def with_what_it_names(path: Path, seen: set[Path]) -> bytes:
    """A document with the files that it, or one of these, names in a declaration."""
    if path in seen or not path.is_file():
        return b""
    seen.add(path)
    text = path.read_bytes()
    named = re.findall(rb"(?:SYSTEM|PUBLIC\s+[\"'][^\"']*[\"'])\s*[\"']([^\"']+)[\"']", text)
    return text + b"".join(with_what_it_names(path.parent / name.decode("latin-1"), seen)
                           for name in named)


def defaulted_attributes(path: Path) -> set[tuple[str, str]]:
    """(element, attribute) pairs that a DTD gives a value."""
    found = set()
    text = with_what_it_names(path, set())
    for element, rest in re.findall(rb"<!ATTLIST\s+([^\s>]+)(.*?)>", text, re.S):
        for name in re.findall(rb"([\w:.-]+)\s+(?:\w+|%\w+;|\([^)]*\)|NOTATION\s*\([^)]*\))\s+"
                               rb"(?:#FIXED\s+)?[\"']", rest):
            found.add((element.decode("latin-1"), name.decode("latin-1")))
    return found


def outline(document: bytes, dropped: set[tuple[str, str]] = frozenset()) -> list:
    """Elements with their attributes, and text, in order."""
    events: list = []

    def start(name: str, attributes: dict[str, str]) -> None:
        kept = {key: re.sub(r"[\t\n\r]", " ", value) for key, value in attributes.items()
                if value and (name, key) not in dropped}
        events.append((name, tuple(sorted(kept.items()))))

    def text(data: str) -> None:
        if events and isinstance(events[-1], str):
            events[-1] += data
        else:
            events.append(data)

    parser = expat.ParserCreate(encoding="utf-8")
    parser.StartElementHandler = start
    parser.EndElementHandler = lambda name: events.append((name,))
    parser.CharacterDataHandler = text
    parser.Parse(document, True)
    return events


def canonical(path: Path) -> bytes | None:
    run = subprocess.run(["xmllint", "--nonet", "--c14n", str(path)], capture_output=True)
    return run.stdout if run.returncode == 0 else None


def save(zro: str, path: Path, folder: Path) -> Path | None:
    saved = folder / "saved.xml"
    run = subprocess.run([zro, "format", str(path), str(saved)], capture_output=True)
    return saved if run.returncode == 0 else None


def difference(before: list, behind: list) -> str:
    for left, right in zip(before, behind):
        if left != right:
            return f"{left!r:.300} became {right!r:.300}"
    return "" if len(before) == len(behind) else f"{len(before)} parts became {len(behind)}"


def compare(zro: str, path: Path, expected: Path | None) -> tuple[str, str]:
    """("same", ""), ("refused", which program) or ("differs", how)."""
    with tempfile.TemporaryDirectory() as folder:
        saved = save(zro, path, Path(folder))
        if saved is None:
            return "refused", "zro"
        reference = expected.read_bytes() if expected else canonical(path)
        if reference is None:
            return "refused", "xmllint"
        output = canonical(saved)
        if output is None:
            return "differs", "what was saved is not well-formed"
        dropped = defaulted_attributes(path)
        how = difference(outline(reference, dropped), outline(output, dropped))
        return ("differs", how) if how else ("same", "")


def cases(data: Path) -> list[tuple[Path, Path | None]]:
    found: list[tuple[Path, Path | None]] = []
    for folder in ("fo", "xml"):
        found += [(path, None) for path in sorted((data / folder).rglob("*"))
                  if path.suffix in SUFFIXES and path.is_file()]
    for output in sorted((data / "xmlconf").rglob("valid/**/out/*.xml")):
        document = output.parent.parent / output.name
        if document.exists():
            found.append((document, output))
    return found


def explained(page: Path) -> set[str]:
    section = page.read_text().partition("## Canonical XML")[2]
    return set(re.findall(r"^\| `([^`]+)` \|", section, re.M))


def main() -> int:
    zro, data = sys.argv[1], Path(sys.argv[2])
    expected = explained(Path(sys.argv[3]))
    todo = cases(data)
    if not todo or not shutil.which("xmllint"):
        print(f"missing: documents under {data} (the CMake variable ZRO_TEST_DATA_DIR says where the "
              "test data lies), or the program xmllint (the Debian package libxml2-utils has it)")
        return NOT_COMPARABLE
    counts = collections.Counter()
    faults = []
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        results = pool.map(lambda case: compare(zro, *case), todo)
        for (path, _), (verdict, how) in zip(todo, results):
            counts[verdict] += 1
            name = str(path.relative_to(data))
            if (verdict == "differs") != (name in expected):
                faults.append(f"{verdict}, and the page says otherwise: {name}: {how}")
            if verdict == "refused":
                print(f"not compared, since {how} refuses it: {name}")
    print("\n".join(faults))
    print(", ".join(f"{count} {verdict}" for verdict, count in sorted(counts.items())))
    return 1 if faults or not counts["same"] else 0


if __name__ == "__main__":
    sys.exit(main())
