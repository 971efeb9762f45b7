#pragma once

#include <string>

#include "tests/cli/Workplace.h"
#include "tests/support/OleBuilder.h"
#include "tests/support/OpcBuilder.h"
#include "tests/support/PropertySetBuilder.h"

namespace ZroCommon::testing {

/// The ZIP packages that sessions work with.
inline void writePackages(const Workplace& place) {
    const ZipBuilder a = ZipBuilder().deflated("a", std::string(2000, 'a')).stored("d/b\n", "two");
    const ZipBuilder one = ZipBuilder().stored("a", "");
    const std::string inner = ZipBuilder().deflated("a", "abc").package();
    const ZipMember streamed{.name = "s", .data = "xyz", .flags = 8, .compressedSize = 0};
    place.write("text", "text");
    place.write("a.zip", a.package());
    place.write("outer.zip", ZipBuilder().deflated("in/a.zip", a.package()).package());
    place.write("o.zip", ZipBuilder().stored("i.zip", inner).stored("d/a", "abc").package());
    place.write("streamed.zip", ZipBuilder().add(streamed).descriptor(3, 3).package());
    place.write("cut.zip", a.records().substr(0, 83));
    place.write("zip64.zip", ZipBuilder().add({.name = "z", .compressedSize = ~0U}).package());
    place.write("open.zip", ZipBuilder(one).descriptor(0, 0).records());
    place.write("foreign.zip", ZipBuilder(one).raw("abcdef").package());
}

/// An office document with a main part "d.xml" and core properties.
inline std::string officeDocumentWith(const std::string& properties,
                                      const std::string& target = "d.xml") {
    const std::string core =
        "http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties";
    return ZipBuilder()
        .stored("[Content_Types].xml",
                contentTypes(overrideType("/d.xml", "application/vnd.openxmlformats-officedocument."
                                                    "wordprocessingml.document.main+xml")))
        .stored("_rels/.rels",
                relationships(officeDocument(target) + relationship("r", core, "c.xml")))
        .stored("d.xml", "<d/>")
        .stored("c.xml", "<!DOCTYPE c SYSTEM 'http://h/x.dtd'>"
                         "<c xmlns:d='http://purl.org/dc/elements/1.1/'>"
                             + properties + "</c>")
        .package();
}

/// Office packages, sound ones and others.
inline void writeOfficePackages(const Workplace& place) {
    const std::string links = relationship("rId1", "http://t/hyperlink", "http://h/x", "External")
                              + relationship("rId2", "http://t/image", "media/x.png")
                              + relationship("rId3", "http://t/place", "#there");
    place.write("letter.docx", officePackage("word/document.xml", "t/main")
                                   .deflated("word/_rels/document.xml.rels", relationships(links))
                                   .stored("other", "")
                                   .package());
    const std::pair<const char*, std::string> types[] = {
        {"empty.docx", ""},
        {"root.docx", "<Types/>"},
        {"other.docx", contentTypes(defaultType("xml", "x") + "\n<Other/>")},
        {"bare.docx", contentTypes("<Default Extension='x'/>")},
        {"nameless.docx", contentTypes(overrideType("", "x"))},
        {"nested.docx",
         contentTypes("<Default Extension='x' ContentType='x'><Default/></Default>")}};
    for (const auto& [name, markup] : types) {
        place.write(name, ZipBuilder().deflated("[Content_Types].xml", markup).package());
    }
    place.write("misnested.docx",
                ZipBuilder().deflated("_rels/.rels", relationships("\n<a></b>")).package());
    place.write("a.docx",
                officeDocumentWith("<d:title>T&amp;T</d:title><d:creator>Bo</d:creator>"));
    place.write("slash.docx", officeDocumentWith("", "/d.xml"));
    place.write("broken.docx", officeDocumentWith("<d:title>T</d:creator>"));
}

/// A compound file of 2004-02-29 12:30, and what damage makes of it.
inline void writeCompoundFiles(const Workplace& place) {
    constexpr std::int64_t kTime = std::int64_t{212042190} * 600'000'000;  // since 1601, in 0.1 us
    const OleImage image = OleBuilder()
                               .stream(u"WordDocument", std::string(5000, 'w'))
                               .storage(u"Pool")
                               .stream(u"\1CompObj", "one", 2)
                               .build()
                               .entry(2, 108, kTime, 8);
    const auto directory = static_cast<long>(image.directoryStart);
    const auto damaged = [&image] {
        return OleImage(image);
    };
    place.write("a.doc", image.bytes);
    place.write("text.doc", "abc");
    place.write("long.doc", std::string(512, 'x'));
    place.write("shift.doc", damaged().header(30, 40, 2).bytes);
    place.write("fat.doc", damaged().header(76, 99).bytes);
    place.write("loop.doc", damaged().fat(image.directoryStart, directory).bytes);
    place.write("circle.doc", damaged().fat(2, 0).bytes);
    place.write("end.doc", damaged().fat(2, -1).bytes);
    place.write("early.doc", damaged().fat(2, -2).bytes);
    place.write("outside.doc",
                damaged().entry(1, OleBuilder::kStart, 99).entry(1, OleBuilder::kSize, 4096).bytes);
}

/// Compound files with property sets.
inline void writeProperties(const Workplace& place) {
    using namespace std::string_literals;
    const PropertySetBuilder set;
    const std::string links =
        set.stream({{{0, set.dictionary({{2, "_PID_HLINKS\0"s}})},
                     {2, set.blob(2, set.wide(u"http://h/") + set.wide(u"#\u65E5"))}}});
    const auto document = [&links](const std::string& summary) {
        return OleBuilder()
            .stream(u"WordDocument", "w")
            .stream(u"\5SummaryInformation", summary)
            .stream(u"\5DocumentSummaryInformation", links)
            .build()
            .bytes;
    };
    place.write("old.doc", document(set.stream({{{1, set.integer(1252, 2)},
                                                 {2, set.text("Caf\xE9\n")},
                                                 {4, set.text("Ann")},
                                                 {14, set.integer(7)}}})));
    place.write("cut.doc", document(set.stream({{{2, set.text("T")}}}).substr(0, 60)));
    place.write("bare.doc", OleBuilder().stream(u"x", "x").build().bytes);
}

}  // namespace ZroCommon::testing
