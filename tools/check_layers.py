#!/usr/bin/env python3
"""Holds the layering of the library: which room may include what.

Usage: check_layers.py ROOMS_TXT [SOURCE_ROOT]

ROOMS_TXT is written by the configure step, a line a room: "name | rooms it uses | its files".
Prints every breach and exits with 1 when there are any.
"""

import pathlib
import re
import sys

UMBRELLA = "zro/ZroCommon.h"
SUFFIXES = {".h", ".cpp", ".inc"}
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')

STANDARD = set("""
    algorithm any array atomic barrier bit bitset charconv chrono codecvt compare complex concepts
    condition_variable coroutine deque exception execution filesystem forward_list fstream
    functional future initializer_list iomanip ios iosfwd iostream istream iterator latch limits
    list locale map memory memory_resource mutex new numbers numeric optional ostream queue random
    ranges ratio regex scoped_allocator semaphore set shared_mutex source_location span sstream
    stack stdexcept stop_token streambuf string string_view syncstream system_error thread tuple
    type_traits typeindex typeinfo unordered_map unordered_set utility valarray variant vector
    version cassert cctype cerrno cfenv cfloat cinttypes climits clocale cmath csetjmp csignal
    cstdarg cstddef cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype
    """.split())

# Libraries and instructions that only some rooms may see, and never in a public header. The room
# `platform` sees everything: it is the one door to the operating system.
PRIVATE_HEADERS = {
    "zlib.h": {"compression"},
    "cpuid.h": {"compression"},
    "curl/curl.h": {"http"},
    "emmintrin.h": {"xml"},
    "immintrin.h": {"compression", "xml"},
}


class Rooms:
    """The rooms as listed, and where each file belongs."""

    def __init__(self, listing):
        self.uses = {}
        self.home = {}
        self.twice = []
        for line in listing.splitlines():
            name, uses, files = (part.strip() for part in line.split("|"))
            self.uses[name] = uses.split()
            for file in files.split():
                if file in self.home:
                    self.twice.append(file)
                self.home[file] = name


def circles(uses):
    """One finding for each circle of rooms, unknown rooms aside."""
    found, done = [], set()

    def walk(room, road):
        if room in road:
            found.append("rooms use each other in a circle: "
                         + " -> ".join(road[road.index(room):] + [room]))
            return
        if room in done:
            return
        for used in uses.get(room, []):
            walk(used, road + [room])
        done.add(room)

    for room in uses:
        walk(room, [])
    return found


def is_public(file):
    return file.endswith((".h", ".inc")) and "/internal/" not in file


def own_include(rooms, file, target):
    """What is wrong with including `target`, a header of ours, from `file`; None when nothing."""
    room = rooms.home[file]
    if target == UMBRELLA:
        return "the library itself does not include the umbrella header"
    other = rooms.home.get(target)
    if other is None:
        return f'"{target}" belongs to no room'
    if is_public(file) and not is_public(target):
        return f'public header includes the internal "{target}"'
    if other != room and other not in rooms.uses[room]:
        return f'room {room} has no licence for room {other} ("{target}")'
    return None


def foreign_include(rooms, file, target):
    """The same for a header of the standard library, ICU or the system."""
    if target in STANDARD or target.startswith("unicode/"):
        return None
    room = rooms.home[file]
    if is_public(file):
        return f"public header includes <{target}>, which is neither standard nor ICU"
    if room == "platform" or room in PRIVATE_HEADERS.get(target, set()):
        return None
    return f"<{target}> is for the room platform only"


def breaches_of_file(rooms, file, text):
    """All findings of one file, each with its line number."""
    for number, line in enumerate(text.splitlines(), 1):
        finding = None
        include = INCLUDE.match(line)
        if include and include.group(1) == "<":
            finding = foreign_include(rooms, file, include.group(2))
        elif include:
            finding = own_include(rooms, file, include.group(2))
        elif re.search(r"\bwchar_t\b", line):
            finding = "wchar_t: a code unit of text is char16_t"
        elif re.search(r"\berrno\b", line) and rooms.home[file] != "platform":
            finding = "errno is for the room platform only"
        if finding:
            yield f"{file}:{number}: {finding}"


def breaches(rooms, root):
    yield from circles(rooms.uses)
    for room, uses in rooms.uses.items():
        yield from (f"room {room} uses {u}, which does not exist" for u in uses
                    if u not in rooms.uses)
    yield from (f"{file}: listed by two rooms" for file in rooms.twice)
    present = {p.relative_to(root).as_posix() for p in (root / "zro").rglob("*")
               if p.suffix in SUFFIXES}
    yield from (f"{file}: in no room" for file in sorted(present - rooms.home.keys() - {UMBRELLA}))
    for file in sorted(rooms.home.keys() & present):
        yield from breaches_of_file(rooms, file, (root / file).read_text(encoding="utf-8"))


def main(arguments):
    root = pathlib.Path(__file__).resolve().parent.parent
    if len(arguments) > 1:
        root = pathlib.Path(arguments[1])
    rooms = Rooms(pathlib.Path(arguments[0]).read_text(encoding="utf-8"))
    found = list(breaches(rooms, root))
    print("\n".join(found) if found else
          f"{len(rooms.uses)} rooms, {len(rooms.home)} files: every include is licensed")
    return int(bool(found))


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
