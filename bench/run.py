#!/usr/bin/env python3
"""Makes the documents, runs every benchmark program of a build folder and prints the comparison.

    run.py BUILD_FOLDER [--quick] [--write FILE] [--only PROGRAM]...

--quick measures fewer rounds on smaller documents. --write puts the tables between the marker lines
of FILE (docs/performance.md). The exit status tells whether everything ran, not whether the goals
are met: figures depend on the machine and on what else it does.
"""

import argparse
import json
import operator
import pathlib
import re
import statistics
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
PROGRAMS = ("xml_pull_bench", "xml_tree_bench", "xml_write_bench", "first_element_bench",
            "names_bench", "text_bench", "values_bench", "load_bench", "endless_bench",
            "growth_bench", "xls_format_bench", "gzip_bench", "zip_bench", "opc_bench",
            "ole_bench", "transcode_bench", "fetch_bench")
BINDING = ("fo-10m", "docbook", "japanese", "small")
CORPUS_TITLES = {
    "fo-10m": "FO of 10 MB", "docbook": "DocBook-made FO", "japanese": "Japanese FO",
    "small": "10,000 documents of 2 KB", "text": "text-heavy", "attributes": "attribute-heavy",
    "fo-100k": "FO of 100 KB", "fo-100m": "FO of 100 MB",
}
BEGIN, END = "<!-- measured: begin -->", "<!-- measured: end -->"
LINEAR = 20  # a tenth of the size may take a tenth to a twentieth of the time; quadratic is 100
SHORTEST = 1e6  # nanoseconds: growth of shorter times says nothing


class Figures:
    """What the programs printed, by job, corpus and contender."""

    def __init__(self, records):
        self.records = records

    def find(self, job, corpus, contender):
        for record in self.records:
            if (record["job"], record["corpus"], record["contender"]) == (job, corpus, contender):
                return record
        return None

    def names(self, key, job):
        return list(dict.fromkeys(r[key] for r in self.records if r["job"] == job))

    def value(self, job, corpus, contender, field="ns"):
        record = self.find(job, corpus, contender)
        return None if record is None else record.get(field)

    def speed(self, job, corpus, contender):
        """Megabytes of input a second."""
        record = self.find(job, corpus, contender)
        return None if record is None else record["bytes"] / record["ns"] * 1000

    def paired(self, job, corpus, left, right, combine):
        """The median of what `combine` makes of the two contenders' times, round by round.

        Both were measured within moments in a round, so what the machine did then is in both.
        """
        rounds = [self.value(job, corpus, name, "rounds") for name in (left, right)]
        if None in rounds:
            return None
        return statistics.median(combine(a, b) for a, b in zip(*rounds, strict=True))

    def ratio(self, job, corpus, left, right):
        """How many times the time of `right` the contender `left` takes."""
        return self.paired(job, corpus, left, right, operator.truediv)


class Goal:
    """One row of the table of goals; `is_met` is None when a side was not measured."""

    def __init__(self, what, target, value, unit, at_most):
        self.what, self.target, self.value, self.unit = what, target, value, unit
        self.at_most = at_most

    @property
    def is_met(self):
        if self.value is None:
            return None
        return self.value <= self.target if self.at_most else self.value >= self.target

    def row(self):
        sign = "at most" if self.at_most else "at least"
        value = "not measured" if self.value is None else f"{self.value:.3g} {self.unit}"
        verdict = {True: "met", False: "not met", None: "-"}[self.is_met]
        return [self.what, f"{sign} {self.target:g} {self.unit}", value, verdict]


def ratio_goals(figures, job, title, peer, times):
    for corpus in BINDING:
        yield Goal(f"{title}, {CORPUS_TITLES[corpus]}: times {peer}", times,
                   figures.ratio(job, corpus, peer, "zro"), "x", False)


def value_goals(figures):
    """Values from text and back, as multiples of what std::from_chars takes for the two digits."""
    unit = figures.value("values", "12pt", "from_chars")
    for case, times in (("12pt", 6), ("auto", 4), ("#ff0000", 5), ("rgb(1,2,3)", 12),
                        ("print 12pt", 15), ("copy 12pt", 0.5)):
        yield Goal(f"Value, {case}: times from_chars", times,
                   ratio(figures.value("values", case, "zro"), unit), "x", True)
    for case in ("#ff0000", "cornflowerblue"):
        yield Goal(f"Colour, {case}: times Qt's", 1, figures.ratio("values", case, "zro", "qt"), "x",
                   True)


def transcoding_goals(figures):
    """The streams, as a multiple of the speed of ICU's converters fed with blocks."""
    for encoding in figures.names("corpus", "decode"):
        yield Goal(f"{encoding} to UTF-16: times ICU by blocks", 0.8,
                   figures.ratio("decode", encoding, "icu", "zro"), "x", False)


def opening_goals(figures):
    """Resources by URI, next to the program curl and to the standard library."""
    yield Goal("100 MB over HTTP: times the program curl", 0.9,
               figures.ratio("http", "100 MB", "curl", "zro"), "x", False)
    yield Goal("100 MB over HTTP: memory it takes", 4,
               scaled(figures.value("http", "100 MB", "zro", "grown"), 1 / 2**20), "MiB", True)
    yield Goal("A file opened by its URI: times std::ifstream", 1.5,
               figures.ratio("open", "file", "zro", "ifstream"), "x", True)


def ratio(left, right):
    return None if left is None or right is None else left / right


def scaled(value, factor):
    return None if value is None else value * factor


def goals(figures):
    yield from ratio_goals(figures, "pull", "Pull parse", "qt", 4)
    yield from ratio_goals(figures, "pull", "Pull parse", "libxml2-reader", 1.5)
    yield from ratio_goals(figures, "tree", "Tree", "libxml2", 1.5)
    yield from ratio_goals(figures, "tree", "Tree", "xerces", 3)
    yield Goal("Tree, FO of 10 MB: live heap per input byte", 7.5,
               figures.value("tree", "fo-10m", "zro", "heap_per_byte"), "bytes", True)
    yield from ratio_goals(figures, "write", "Write", "qt", 4)
    yield from ratio_goals(figures, "write", "Write", "libxml2", 2)
    for source in ("memory", "file"):
        yield Goal(f"First element of 100 MB, pull mode, from {source}", 20,
                   scaled(figures.value("first", "fo-100m", f"zro-tree {source}"), 1e-3), "us", True)
    yield Goal("1 GB walked in pull mode, finished nodes removed: peak memory", 64,
               scaled(figures.value("endless", "stream", "zro", "peak"), 1 / 2**20), "MiB", True)
    yield Goal("Builtin name looked up, in document order", 10,
               figures.value("names", "document order", "zro"), "ns", True)
    yield from value_goals(figures)
    for corpus in figures.names("corpus", "gzip"):
        loops = [name for name in figures.names("contender", "gzip") if name.startswith("gzread")]
        best = min(loops, key=lambda name: figures.value("gzip", corpus, name))
        for road in ("file", "stream"):
            yield Goal(f"Gzip from a {road}, {CORPUS_TITLES[corpus]}: times the best gzread loop", 1,
                       figures.ratio("gzip", corpus, best, f"zro {road}"), "x", False)
    yield from transcoding_goals(figures)
    yield from opening_goals(figures)
    load = figures.paired("load", "library", "zro", "empty", operator.sub)
    yield Goal("Load of the library over an empty one", 60, scaled(load, 1e-3), "us", True)
    for corpus, times in (("5000 small", 1.1), ("40 large", 1)):
        yield Goal(f"ZIP, {corpus} entries: times libzip", times,
                   figures.ratio("zip", corpus, "libzip", "zro"), "x", False)
    for job, title, times in (("ole open", "opened and listed", 1),
                              ("ole read", "all streams in pieces of 4 KB", 0.5)):
        for corpus in figures.names("corpus", job):
            yield Goal(f"Compound file, {corpus}, {title}: times libgsf", times,
                       figures.ratio(job, corpus, "libgsf", "zro"), "x", False)
    yield Goal("Compound file, a stream of 1 GB: time at ten times the size", LINEAR,
               ratio(figures.value("ole long", "whole", "zro"),
                     figures.value("ole long", "a tenth", "zro")), "x", True)
    least = figures.value("opc", "docx", "zlib, two parts")
    path = figures.paired("opc", "docx", "zro, path", "zro, open and walk", operator.sub)
    yield Goal("Kind of a docx in memory: times zlib on its two parts", 4,
               figures.ratio("opc", "docx", "zro, memory", "zlib, two parts"), "x", True)
    yield Goal("The same by path, without opening and walking", 4, ratio(path, least), "x", True)
    growth = [r["ratio"] for r in figures.records
              if r["job"] == "growth" and r["ns"] >= SHORTEST]
    yield Goal("Growth: worst time at ten times the size", LINEAR, max(growth, default=None), "x",
               True)


def table(head, rows):
    lines = ["| " + " | ".join(head) + " |", "|" + "---|" * len(head)]
    return "\n".join(lines + ["| " + " | ".join(row) + " |" for row in rows])


def number(value, digits=3):
    return "-" if value is None else f"{value:.{digits}g}"


def speed_table(figures, job):
    contenders = figures.names("contender", job)
    rows = []
    for corpus in figures.names("corpus", job):
        speeds = (figures.speed(job, corpus, name) for name in contenders)
        rows.append([CORPUS_TITLES.get(corpus, corpus)] + [number(speed) for speed in speeds])
    return table(["MB/s"] + contenders, rows)


def field_table(figures, job, title, field):
    contenders = figures.names("contender", job)
    rows = [[CORPUS_TITLES.get(corpus, corpus)]
            + [number(figures.value(job, corpus, name, field)) for name in contenders]
            for corpus in figures.names("corpus", job)
            if any(figures.value(job, corpus, name, field) for name in contenders)]
    return table([title] + contenders, rows)


def growth_table(figures):
    operations = figures.names("contender", "growth")
    rows = []
    for case in figures.names("corpus", "growth"):
        cells = [figures.find("growth", case, operation) for operation in operations]
        size = next(cell["size"] for cell in cells if cell)
        rows.append([case, f"{size:g}"]
                    + [f"{cell['ns'] / 1e6:.3g} ({cell['ratio']:.3g})" if cell else "-"
                       for cell in cells])
    return table(["ms (times a tenth of the size)", "size"] + operations, rows)


def machine():
    """One line that says what the figures were measured on."""
    cpu = "unknown processor"
    for line in pathlib.Path("/proc/cpuinfo").read_text(encoding="utf-8").splitlines():
        if line.startswith("model name"):
            cpu = line.split(":", 1)[1].strip()
            break
    compiler = subprocess.run(["c++", "--version"], capture_output=True, text=True, check=False)
    return f"{cpu}; {compiler.stdout.splitlines()[0] if compiler.stdout else 'unknown compiler'}"


def sections(figures):
    jobs = {record["job"] for record in figures.records}
    yield "Goals", table(["what", "goal", "measured", ""], [g.row() for g in goals(figures)])
    for job, title in (("pull", "Pull parse"), ("tree", "Tree: load, walk, free"),
                       ("write", "Write (MB of the document read)"),
                       ("zip", "ZIP packages: list and expand (MB expanded)"),
                       ("http", "HTTP from this machine (MB by the clock on the wall)"),
                       ("ole open", "Compound files: open and list (MB of the file)"),
                       ("ole read", "Compound files: all streams in pieces of 4 KB (MB of streams)"),
                       ("ole long", "Compound files: a stream whose blocks lie backward"),
                       ("decode", "Legacy encodings to UTF-16 (MB of bytes)"),
                       ("encode", "UTF-16 to legacy encodings (MB of bytes)")):
        if job in jobs:
            yield title, speed_table(figures, job)
    if "tree" in jobs:
        yield ("Tree: live heap per input byte",
               field_table(figures, "tree", "bytes", "heap_per_byte"))
    if "first" in jobs:
        rows = [[name] + [number(scaled(figures.value("first", corpus, name), 1e-3))
                          for corpus in figures.names("corpus", "first")]
                for name in figures.names("contender", "first")]
        yield ("Time to the first element",
               table(["us"] + [CORPUS_TITLES[c] for c in figures.names("corpus", "first")], rows))
    if "names" in jobs:
        yield "Builtin name by UTF-16 text", field_table(figures, "names", "ns", "ns")
    if "values" in jobs:
        yield "Values, by text", field_table(figures, "values", "ns", "ns")
    if "text" in jobs:
        yield ("Base64 of 192 KB through streams, and numbers from UTF-16",
               field_table(figures, "text", "ns", "ns"))
    if "gzip" in jobs:
        yield "Gzip read to the end (MB of the document)", speed_table(figures, "gzip")
    if "opc" in jobs:
        yield "Kind of an office document, ns", field_table(figures, "opc", "document", "ns")
    if "endless" in jobs:
        stream = figures.find("endless", "stream", "zro")
        yield ("A document without end, walked in pull mode", table(
            ["MB read", "MB/s", "peak memory, MiB"],
            [[number(stream["bytes"] / 2**20, 4), number(figures.speed("endless", "stream", "zro")),
              number(stream["peak"] / 2**20)]]))
    if "growth" in jobs:
        yield "Growth, on a stack of 256 KiB", growth_table(figures)


def report(figures, quick):
    heading = f"{machine()}; medians of processor time{', quick run' if quick else ''}."
    parts = [f"### {title}\n\n{body}" for title, body in sections(figures)]
    return heading + "\n\n" + "\n\n".join(parts)


def write_into(path, text):
    page = path.read_text(encoding="utf-8")
    pattern = re.escape(BEGIN) + ".*?" + re.escape(END)
    if not re.search(pattern, page, flags=re.DOTALL):
        sys.exit(f"run.py: no lines {BEGIN} and {END} in {path}")
    page = re.sub(pattern, lambda _: f"{BEGIN}\n{text}\n{END}", page, flags=re.DOTALL)
    path.write_text(page, encoding="utf-8")


def data_folder(build):
    """The folder of real documents, as the build was told."""
    cache = (build / "CMakeCache.txt").read_text(encoding="utf-8")
    found = re.search(r"^ZRO_TEST_DATA_DIR:\w+=(.*)$", cache, flags=re.MULTILINE)
    return pathlib.Path(found[1]) if found else None


def make_documents(build, target, quick):
    command = [sys.executable, str(HERE / "make_corpus.py"), str(target)]
    data = data_folder(build)
    if data is not None:
        command += ["--docbook", str(data / "fo" / "docbook" / "pg-interfaces.fo")]
    subprocess.run(command + (["--quick"] if quick else []), check=True)


def run_program(path, documents, quick):
    command = [str(path), "--data", str(documents)]
    if quick:
        command += ["--rounds", "3", "--megabytes", "100"]
    print(f"running {path.name}", file=sys.stderr, flush=True)
    result = subprocess.run(command, stdout=subprocess.PIPE, text=True, check=False)
    records = [json.loads(line) for line in result.stdout.splitlines() if line]
    return records, result.returncode == 0


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("--quick", action="store_true")
    parser.add_argument("--write", type=pathlib.Path, metavar="FILE")
    parser.add_argument("--only", action="append", choices=PROGRAMS, metavar="PROGRAM")
    options = parser.parse_args()

    documents = options.build / "bench-data"
    make_documents(options.build, documents, options.quick)
    records, failed = [], []
    for name in options.only or PROGRAMS:
        path = options.build / "bench" / name
        if not path.exists():
            failed.append(f"{name} (not built)")
            continue
        lines, is_good = run_program(path, documents, options.quick)
        records += lines
        if not is_good:
            failed.append(name)
    text = report(Figures(records), options.quick)
    print(text)
    if options.write:
        write_into(options.write, text)
    if failed:
        sys.exit("run.py: failed: " + ", ".join(failed))


if __name__ == "__main__":
    main()
