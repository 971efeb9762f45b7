// Office packages that want to do harm, and questions out of order.
#include <memory>
#include <new>
#include <sstream>

#include "tests/support/Memory.h"
#include "tests/support/OpcBuilder.h"
#include "tests/support/Test.h"
#include "tests/support/XmlEvents.h"
#include "zro/containers/zip/ZRZipFile.h"

namespace ZroCommon::testing {
namespace {

constexpr const char* kPlain = "t/plain";

std::unique_ptr<ZRZipFile> opened(const ZipBuilder& builder) {
    return std::make_unique<ZRZipFile>(new std::istringstream(builder.package()), true);
}

// What is known of the part "a" when both parts that tell begin with `prolog` and have `content`
// ahead of what they tell.
std::string knownBehind(const std::string& prolog, const std::string& content = {}) {
    const auto package =
        opened(ZipBuilder()
                   .deflated("[Content_Types].xml",
                             prolog + contentTypes(content + overrideType("/a", kPlain)))
                   .deflated("_rels/.rels", prolog + relationships(content + officeDocument("a")))
                   .stored("a", ""));
    EXPECT_EQ(package->detectOOXDocument(), OOXDOCUMENT_NONE);
    return utf8(package->getContentType(package->getFileEntry(2U)))
           + (package->getOfficeDocument() == nullptr ? "" : " main");
}

TEST(ZRZipPartsHazards, NothingOutsideIsOpened) {
    FakeWeb web({});
    const Rows<const char*, const char*, const char*> cases = {
        {"<!DOCTYPE x SYSTEM 'http://h/x'>", "", "t/plain main"},
        {"<!DOCTYPE x PUBLIC 'p' 'http://h/x' [<!ENTITY e 'e'>]>", "&e;", "t/plain main"},
        {"<!DOCTYPE x [<!ENTITY e SYSTEM 'http://h/x'>]>", "", "t/plain main"},
        {"<!DOCTYPE x [<!ENTITY e SYSTEM 'http://h/x'>]>", "&e;", "t/plain main"},
        {"<!DOCTYPE x [<!ENTITY % p SYSTEM 'http://h/x'>%p;]>", "", "t/plain main"},
        {"<!DOCTYPE x [<!ENTITY % p '<!ENTITY e SYSTEM \"file:/x\">'>%p;]>", "&e;", "t/plain main"},
        {"<!DOCTYPE x SYSTEM 'http://h/x'>", "&undefined;", ""},
    };
    for (const auto& [prolog, content, known] : cases) {
        EXPECT_EQ(knownBehind(prolog, content), known) << prolog;
    }
    EXPECT_TRUE(web.asked().empty()) << web.asked()[0];
}

TEST(ZRZipPartsHazards, WhatGrowsBeyondReasonEnds) {
    std::string laughs = "<!DOCTYPE x [<!ENTITY e0 'ha ha ha ha ha ha ha '>";
    for (int i = 1; i < 10; ++i) {
        const std::string inner = "&e" + std::to_string(i - 1) + ";";
        laughs += "<!ENTITY e" + std::to_string(i) + " '" + inner + inner + inner + inner + inner
                  + inner + inner + inner + inner + inner + "'>";
    }
    EXPECT_EQ(knownBehind(laughs + "]>", "&e3;"), "t/plain main");
    const auto package = opened(
        ZipBuilder()
            .deflated("[Content_Types].xml",
                      laughs + "]>" + contentTypes("&e9;" + defaultType("xml", "X")))
            .deflated("_rels/.rels", relationships(std::string(9 << 20U, ' ')
                                                   + officeDocument("[Content_Types].xml"))));
    EXPECT_EQ(package->getOfficeDocument(), nullptr);
    EXPECT_EQ(package->getContentType(package->getFileEntry(0U)), u"");
}

// Each question would otherwise read some hundred kilobytes, which takes longer than tests may.
TEST(ZRZipPartsHazards, PartsWithoutAnAnswerAreAskedForInLinearTime) {
    std::string unknown;
    std::string many;
    for (int i = 0; i < 5000; ++i) {
        const std::string number = std::to_string(i);
        unknown += overrideType("/unknown" + number, kPlain);
        many += relationship("r" + number, "t", "target" + number);
    }
    ZipBuilder builder;
    builder.deflated("[Content_Types].xml", contentTypes(unknown))
        .deflated("x/_rels/same.rels", relationships(many))
        .deflated("x/_rels/none.rels", relationships(std::string(100000, ' ')));
    for (int i = 0; i < 20000; ++i) {
        builder.stored(i % 2 == 0 ? "x/same" : "x/none", "");
    }
    const auto package = opened(builder);
    for (unsigned i = 0; i < package->getFileEntryCount(); ++i) {
        ZRZipFileEntry* const entry = package->getFileEntry(i);
        EXPECT_TRUE(package->getContentType(entry).isEmpty());
        EXPECT_EQ(package->getRelationshipTargetFromId(u"r4999", entry).isEmpty(),
                  entry->getFileName() != u"x/same");
    }
}

TEST(ZRZipPartsHazards, APackageAnswersForPartsOfOthers) {
    const auto without = opened(ZipBuilder().stored("a", ""));
    const auto with =
        opened(ZipBuilder()
                   .deflated("[Content_Types].xml", contentTypes(overrideType("a", kPlain)))
                   .deflated("_rels/a.rels", relationships(relationship("r", "t", "b")))
                   .stored("a", ""));
    ZRZipFileEntry* const theirs = without->getFileEntry(0U);
    ZRZipFileEntry* const own = with->getFileEntry(2U);
    EXPECT_EQ(without->getRelationshipTargetFromId(u"r", own), u"");
    EXPECT_EQ(with->getRelationshipTargetFromId(u"r", theirs), u"b");
    EXPECT_EQ(with->getRelationshipTargetFromId(u"r", own), u"b");
    EXPECT_EQ(without->getRelationshipTargetFromId(u"r", theirs), u"b") << "once known";
    EXPECT_EQ(with->getContentType(theirs), u"");
    EXPECT_EQ(without->getContentType(own), u"");
    EXPECT_EQ(with->getContentType(own), text(kPlain));
    EXPECT_EQ(with->getContentType(nullptr), u"");
}

TEST(ZRZipPartsHazards, CopiesKnowWhatWasReadInTime) {
    auto package = opened(officePackage("a", kPlain));
    const ZRZipFile early(*package);
    EXPECT_NE(package->getOfficeDocument(), nullptr);
    ZRZipFile late(*package);
    package->open(nullptr, false);
    EXPECT_EQ(package->getOfficeDocument(), nullptr);
    EXPECT_EQ(late.getOfficeDocument(), late.getFileEntry(2U));
    EXPECT_NE(early.getOfficeDocument(), nullptr) << "the bytes are there still";
    EXPECT_EQ(late.getContentType(late.getFileEntry(2U)), u"") << "and these have never been";
}

// The last one: texts have memory of their own from here on.
TEST(ZRZipPartsHazards, ALackOfMemoryIsNoFaultOfAPart) {
    const auto package =
        opened(ZipBuilder()
                   .deflated("[Content_Types].xml",
                             contentTypes(defaultType("a", std::string(100'000, 'x'))
                                          + defaultType("b", kPlain)))
                   .stored("a.b", ""));
    ZRZipFileEntry* const part = package->getFileEntry(1U);
    lendTextsMemory(100'000);
    EXPECT_THROW(package->getContentType(part), std::bad_alloc);
    lendTextsMemory();
    EXPECT_EQ(package->getContentType(part), text(kPlain));
}

}  // namespace
}  // namespace ZroCommon::testing
