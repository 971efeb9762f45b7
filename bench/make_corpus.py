#!/usr/bin/env python3
"""Writes the documents that the benchmarks read, the same bytes on every run and machine.

    make_corpus.py DIRECTORY [--docbook FILE] [--quick]

    fo-100k.fo fo-10m.fo fo-100m.fo   blocks, inlines, tables, lists, footnotes, as stylesheets make them
    text.fo attributes.fo             10 MB each: mostly prose, mostly properties
    japanese.fo                       10 MB of Japanese prose, UTF-8
    small.docs                        10,000 documents of about 2 KB, each ended by a NUL byte
    docbook.fo                        a copy of FILE, a real document made by a stylesheet

--quick leaves fo-100m.fo out. A file that is there already with the right size is kept.
"""

import argparse
import pathlib
import random
import shutil

FO = 'xmlns:fo="http://www.w3.org/1999/XSL/Format"'

ENGLISH = """the a of and to in is it that this with for as by on from at which when where while after
before paper page line margin column sheet press ink type letter word sentence paragraph chapter book
reader printer binder editor author proof galley measure leading kerning spacing rule border baseline
headline footnote caption figure table list index glossary contents appendix cover spine fold trim
quick slow careful even odd narrow wide heavy light plain black grey white broken whole early late
sets keeps turns breaks joins moves carries holds gives takes leaves finds marks counts measures
shows reads writes prints cuts fits grows shrinks follows begins ends falls rises stands rests
never always often seldom twice once again almost nearly rather hardly quite only also then thus
copy fair rough final first second third last next other same such each every both either neither
""".split()

JAPANESE = """組版 は 文字 を 紙 の 上 に 並べる 仕事 です 行 と 行間 段落 見出し 本文 脚注 目次 索引 図版 表 柱
ノンブル 余白 版面 書体 明朝 ゴシック ルビ 句読点 約物 禁則 処理 追い込み 追い出し 字間 詰め 縦書き 横書き
が で も へ から まで より これ それ ここ ため とき もの こと 場合 ただし しかし また さらに そして
読者 編集者 著者 印刷 製本 校正 原稿 入稿 出力 仕上げ 折り 断裁 用紙 インキ 活字 写植 電算 決める 整える
読みやすい 美しい 正しい 細かい 大きな 小さな 新しい 古い 同じ 違う 次の 前の 最後の 最初の
""".split()

BLOCK_SPACE = ('space-before.optimum="1em" space-before.minimum="0.8em" '
               'space-before.maximum="1.2em"')
AFTER_SPACE = ('space-after.optimum="1em" space-after.minimum="0.8em" '
               'space-after.maximum="1.2em"')
KEEP = 'keep-together.within-column="always" keep-with-next.within-column="always"'


class Prose:
    """Sentences out of a word list."""

    def __init__(self, rng, words, joint, stop):
        self.rng, self.words, self.joint, self.stop = rng, words, joint, stop

    def pick(self, items):
        return items[int(self.rng.random() * len(items))]

    def between(self, low, high):
        return low + int(self.rng.random() * (high - low + 1))

    def phrase(self, low, high):
        return self.joint.join(self.pick(self.words) for _ in range(self.between(low, high)))

    def sentence(self):
        text = self.phrase(6, 18)
        return text[0].upper() + text[1:] + self.stop

    def sentences(self, low, high):
        lines = [self.sentence() for _ in range(self.between(low, high))]
        return ("\n      " if self.joint else "").join(lines)


def inline(prose, text):
    kinds = (
        ' font-style="italic"', ' font-weight="bold"', ' font-family="monospace"',
        ' font-family="monospace" font-style="italic"', ' color="#336699"',
        ' baseline-shift="super" font-size="75%"', ' text-decoration="underline"',
    )
    return f"<fo:inline{prose.pick(kinds)}>{text}</fo:inline>"


def rich_text(prose):
    """A paragraph's content: sentences with inlines, links, citations and entities between them."""
    parts = []
    for _ in range(prose.between(2, 5)):
        parts.append(prose.sentences(1, 2))
        kind = prose.rng.random()
        if kind < 0.45:
            parts.append(inline(prose, prose.phrase(1, 3)))
        elif kind < 0.60:
            parts.append(f'<fo:basic-link internal-destination="id-{{id}}.{prose.between(1, 40)}">'
                         f"{inline(prose, prose.phrase(1, 3))}</fo:basic-link>")
        elif kind < 0.68:
            parts.append(f'<fo:page-number-citation ref-id="id-{{id}}.{prose.between(1, 40)}"/>')
        elif kind < 0.80:
            parts.append(prose.phrase(1, 2) + " &lt;" + prose.phrase(1, 1) + "&gt; &amp; &#x2014; ")
    return prose.joint.join(parts)


def paragraph(prose):
    return (f"<fo:block {AFTER_SPACE} {BLOCK_SPACE}>\n      {rich_text(prose)}\n    </fo:block>")


def heading(prose, number):
    return (f'<fo:block id="id-{{id}}.{number}" {KEEP} font-family="sans-serif,Symbol" '
            f'font-weight="bold" {BLOCK_SPACE} text-align="start">'
            f'<fo:block font-size="17.28pt"><fo:marker marker-class-name="section.head.marker">'
            f"{prose.phrase(2, 5)}</fo:marker>{number}. {prose.phrase(2, 5)}</fo:block></fo:block>")


def listing(prose):
    lines = "\n".join("    " * prose.between(0, 3) + prose.phrase(2, 6) + ";"
                      for _ in range(prose.between(3, 9)))
    return (f'<fo:block wrap-option="wrap" {BLOCK_SPACE} {AFTER_SPACE} hyphenate="false" '
            'white-space-collapse="false" white-space-treatment="preserve" '
            'linefeed-treatment="preserve" text-align="start" font-family="monospace">\n'
            f"{lines}\n</fo:block>")


def bullet_list(prose):
    items = "".join(
        f'<fo:list-item id="id-{{id}}.i{prose.between(1, 999)}" {BLOCK_SPACE}>'
        '<fo:list-item-label end-indent="label-end()"><fo:block>&#x2022;</fo:block>'
        '</fo:list-item-label>\n<fo:list-item-body start-indent="body-start()"><fo:block>'
        f"{rich_text(prose)}</fo:block></fo:list-item-body></fo:list-item>\n"
        for _ in range(prose.between(2, 5)))
    return (f'<fo:list-block {BLOCK_SPACE} {AFTER_SPACE} provisional-label-separation="0.2em" '
            f'provisional-distance-between-starts="1.5em">\n{items}</fo:list-block>')


def cell(prose, header):
    weight = ' font-weight="bold"' if header else ""
    return ('<fo:table-cell padding-start="2pt" padding-end="2pt" padding-top="2pt" '
            'padding-bottom="2pt" border-bottom-width="0.5pt" border-bottom-style="solid" '
            f'border-bottom-color="black"><fo:block text-align="left"{weight}>'
            f"{prose.phrase(1, 6)}</fo:block></fo:table-cell>")


def table(prose):
    columns = prose.between(2, 5)
    head = "".join(f'<fo:table-column column-number="{i + 1}" column-width="'
                   f'proportional-column-width({prose.between(1, 3)})"/>\n'
                   for i in range(columns))
    rows = "".join("<fo:table-row>" + "".join(cell(prose, row == 0) for _ in range(columns))
                   + "</fo:table-row>\n" for row in range(prose.between(2, 6)))
    return ('<fo:table border-style="solid" border-width="0.5pt" border-color="black" '
            f'table-layout="fixed" width="100%" border-collapse="collapse" {BLOCK_SPACE}>\n'
            f"{head}<fo:table-body>\n{rows}</fo:table-body></fo:table>")


def footnote(prose):
    return (f"<fo:block {BLOCK_SPACE}>{prose.sentence()}<fo:footnote>"
            '<fo:inline font-size="75%" baseline-shift="super">1</fo:inline><fo:footnote-body>'
            '<fo:block font-size="7.5pt" text-align="justify" start-indent="0pt">'
            f"{prose.sentences(1, 2)}</fo:block></fo:footnote-body></fo:footnote></fo:block>")


def mixed_section(prose):
    parts = [heading(prose, prose.between(1, 40))]
    for _ in range(prose.between(5, 9)):
        kind = prose.rng.random()
        make = (paragraph if kind < 0.55 else bullet_list if kind < 0.72 else
                listing if kind < 0.82 else footnote if kind < 0.90 else table)
        parts.append(make(prose))
    return "<fo:block>\n    " + "\n    ".join(parts) + "\n  </fo:block>\n  "


def text_section(prose):
    return (f'<fo:block id="id-{{id}}" text-indent="1em">\n      {prose.sentences(30, 50)}\n'
            "    </fo:block>\n  ")


def attribute_section(prose):
    rows = "".join(
        f'<fo:block-container id="id-{{id}}.{row}" absolute-position="absolute" '
        f'left="{prose.between(0, 180)}mm" top="{prose.between(0, 250)}mm" '
        f'width="{prose.between(5, 90)}mm" height="{prose.between(5, 40)}mm" overflow="hidden" '
        f'border="0.5pt solid rgb({prose.between(0, 255)},{prose.between(0, 255)},'
        f'{prose.between(0, 255)})" padding="{prose.between(1, 9)}pt" '
        f'background-color="#{prose.between(0, 0xFFFFFF):06x}" display-align="center">'
        f'<fo:block font-size="{prose.between(7, 24)}pt" line-height="1.2" text-align="end" '
        f'start-indent="{prose.between(0, 9)}mm + 2pt" hyphenate="true" language="en" '
        f'country="GB" keep-together.within-page="always">{prose.pick(prose.words)}</fo:block>'
        "</fo:block-container>\n" for row in range(12))
    return rows


def front(language):
    return (f'<?xml version="1.0" encoding="UTF-8"?>\n<fo:root {FO} font-family="serif,Symbol" '
            f'font-size="10pt" text-align="justify" line-height="normal" language="{language}">\n'
            '<fo:layout-master-set><fo:simple-page-master master-name="body" page-width="210mm" '
            'page-height="297mm" margin-top="0.5in" margin-bottom="0.5in" margin-left="1in" '
            'margin-right="1in"><fo:region-body margin-top="0.5in" margin-bottom="0.5in" '
            'column-gap="12pt" column-count="1"/><fo:region-before extent="0.4in" '
            'display-align="before"/><fo:region-after extent="0.4in" display-align="after"/>'
            '</fo:simple-page-master></fo:layout-master-set>\n'
            '<fo:page-sequence master-reference="body" hyphenate="true" initial-page-number="1">\n'
            '<fo:flow flow-name="xsl-region-body" start-indent="4pc" end-indent="0pt">\n  ')


BACK = "\n</fo:flow></fo:page-sequence></fo:root>\n"


def write_document(path, size, prose, section, language):
    """Fills a document up to the size with sections from a pool; only their ids differ."""
    if path.exists() and abs(path.stat().st_size - size) < 40_000:
        return
    pool = [section(prose) for _ in range(300)]
    with path.open("w", encoding="utf-8", newline="\n") as out:
        written = out.write(front(language))
        number = 0
        while written < size - 100:
            number += 1
            text = prose.pick(pool).replace("{id}", str(number))
            out.write(text)
            written += len(text.encode("utf-8"))
        out.write(BACK)


def write_small(path, prose, count):
    if path.exists() and path.stat().st_size > 1800 * count:
        return
    with path.open("wb") as out:
        for number in range(count):
            text = front("en")
            while len(text) < 1550:
                text += paragraph(prose).replace("{id}", str(number))
            out.write((text + BACK).encode("utf-8") + b"\0")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("directory", type=pathlib.Path)
    parser.add_argument("--docbook", type=pathlib.Path, help="a real document to measure on")
    parser.add_argument("--quick", action="store_true", help="without the document of 100 MB")
    options = parser.parse_args()
    directory = options.directory
    directory.mkdir(parents=True, exist_ok=True)

    def english(seed):
        return Prose(random.Random(seed), ENGLISH, " ", ".")

    ten = 10_000_000
    write_document(directory / "fo-100k.fo", 100_000, english(1), mixed_section, "en")
    write_document(directory / "fo-10m.fo", ten, english(1), mixed_section, "en")
    if not options.quick:
        write_document(directory / "fo-100m.fo", 10 * ten, english(1), mixed_section, "en")
    write_document(directory / "text.fo", ten, english(2), text_section, "en")
    write_document(directory / "attributes.fo", ten, english(3), attribute_section, "en")
    japanese = Prose(random.Random(4), JAPANESE, "", "。")
    write_document(directory / "japanese.fo", ten, japanese, mixed_section, "ja")
    write_small(directory / "small.docs", english(5), 10_000)
    if options.docbook and options.docbook.exists():
        shutil.copyfile(options.docbook, directory / "docbook.fo")


if __name__ == "__main__":
    main()
