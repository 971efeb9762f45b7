#!/usr/bin/env python3
"""Each rule of check_layers.py catches a breach made for it, and leaves a clean tree alone."""

import pathlib
import tempfile
import unittest

import check_layers

CLEAN = {
    "zro/low/A.h": "#include <vector>\n#include <unicode/unistr.h>\n",
    "zro/low/internal/B.h": '#include "zro/low/A.h"\n',
    "zro/high/C.h": '#include "zro/low/A.h"\n',
    "zro/platform/D.cpp": "#include <unistd.h>\nint code = errno;\n",
}


def findings(changes=None, high_uses="low", low_uses=""):
    """What is found in the clean tree after `changes`; files beginning with ? are in no room."""
    files = {**CLEAN, **(changes or {})}
    lines = []
    for room, uses in (("low", low_uses), ("high", high_uses), ("platform", "")):
        own = [f for f in files if f.startswith(f"zro/{room}/")]
        lines.append(f"{room} | {uses} | {' '.join(own)}")
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        for name, text in files.items():
            path = root / name.lstrip("?")
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        return list(check_layers.breaches(check_layers.Rooms("\n".join(lines)), root))


class CheckLayers(unittest.TestCase):
    def test_clean_tree_has_no_findings(self):
        self.assertEqual(findings(), [])

    def test_each_breach_is_found(self):
        cases = [
            ("no licence", dict(changes={"zro/low/A.h": '#include "zro/high/C.h"\n'})),
            ("belongs to no room", dict(changes={"zro/low/A.h": '#include "zro/low/Gone.h"\n'})),
            ("includes the internal", dict(changes={"zro/low/A.h":
                                                    '#include "zro/low/internal/B.h"\n'})),
            ("neither standard nor ICU", dict(changes={"zro/low/A.h": "#include <zlib.h>\n"})),
            ("platform only", dict(changes={"zro/low/A.cpp": "#include <dlfcn.h>\n"})),
            ("errno", dict(changes={"zro/low/A.cpp": "int e = errno;\n"})),
            ("wchar_t", dict(changes={"zro/low/A.h": "wchar_t unit;\n"})),
            ("in no room", dict(changes={"?zro/low/Stray.cpp": ""})),
            ("umbrella", dict(changes={"zro/low/A.cpp": '#include "zro/ZroCommon.h"\n'})),
            ("circle", dict(low_uses="high")),
            ("does not exist", dict(low_uses="nowhere")),
        ]
        for word, arguments in cases:
            with self.subTest(word):
                found = findings(**arguments)
                self.assertEqual(len(found), 1, found)
                self.assertIn(word, found[0])


if __name__ == "__main__":
    unittest.main()
