// Property sets of compound files: what is served, and what damage does to it.
#include "zro/containers/ole/OleSummaryInformation.h"

#include <vector>

#include "tests/containers/OleFile.h"
#include "tests/support/Cheap.h"
#include "tests/support/PropertySetBuilder.h"
#include "tests/support/Test.h"
#include "zro/containers/ole/OlePropertySet.h"
#include "zro/values/ZRValue.h"

namespace ZroCommon::testing {
namespace {

using namespace std::string_literals;

const std::string kLinks = "_PID_HLINKS\0"s;
constexpr std::uint64_t kVector = 0x1000;
constexpr std::uint64_t kHuge = 0xFFFFFFFF;

const PropertySetBuilder& builder() {
    static const PropertySetBuilder s_builder;
    return s_builder;
}

std::string fileWith(const std::string& summary) {
    return OleBuilder().stream(u"\5SummaryInformation", summary).build().bytes;
}

// The result of opening, and each property that there is: "1 2[title]". One that failed and left a
// value has "!" before it.
std::string told(const std::string& stream) {
    OleFile file(fileWith(stream));
    OleSummaryInformation summary;
    std::string all = std::to_string(summary.initSummaryInformation(&*file));
    for (unsigned long id = 0; id < 22; ++id) {
        ZRValue value;
        const bool isThere = summary.getProperty(id, value) == 1;
        EXPECT_TRUE(!isThere || !value.isNull());
        if (!value.isNull()) {
            const std::string text = "[" + utf8(value.toString()) + "]";
            all += (isThere ? " " : " !") + std::to_string(id) + text;
        }
    }
    return all;
}

// The results of opening and asking, and the links.
std::string linksOf(const std::string& stream) {
    OleFile file(OleBuilder().stream(u"\5DocumentSummaryInformation", stream).build().bytes);
    OleSummaryInformation summary;
    std::string all = std::to_string(summary.initDocumentSummaryInformation(&*file));
    std::vector<UnicodeString> links;
    all += " " + std::to_string(summary.getHyperLinks(links));
    for (const UnicodeString& link : links) {
        all += " " + utf8(link);
    }
    return all;
}

TEST(OleSummaryInformation, ServesNumbersAndTexts) {
    const PropertySetBuilder& b = builder();
    const auto t = [&b](const char* bytes) {
        return b.text(bytes);
    };
    PropertySetBuilder::Section texts;
    for (std::uint32_t id = 0; id < 21; ++id) {
        texts.emplace_back(id + 1, t("x"));
    }
    const std::string cutText = b.number(30) + b.withLength("a\0b"s);
    const std::string ab = b.withLength("a\0"s) + b.withLength("b");
    const std::string names = b.dictionary({{2, "x"}});
    const PropertySetBuilder big(true);
    expectRows<std::string, const char*>(
        told,
        {
            {b.stream({}), "1"},
            {b.stream({texts}),
             "1 1[x] 2[x] 3[x] 4[x] 5[x] 6[x] 7[x] 8[x] 9[x] 14[x] 15[x] 16[x] 18[x] 19[x]"},
            {b.stream({{{19, b.integer(kHuge)}, {2, cutText}, {4, b.integer(0, 30)}}}),
             "1 2[a] 4[] 19[-1]"},
            {b.stream({{{2, b.integer(1, 31)}, {3, b.integer(1, 64)}, {4, b.integer(1, 0x10003)}}}),
             "1"},
            {b.stream({{{2, b.integer(2, kVector | 30) + ab}, {3, b.integer(0, kVector | 3)}}}),
             "1 2[b]"},
            {b.stream({{{2, t("a")}, {2, t("b")}}, {{2, t("c")}, {3, t("d")}}}), "1 2[a] 3[d]"},
            {b.stream({{{0, names}, {2, t("a")}, {3, t("b")}}, {{2, t("c")}}}), "1 2[c]"},
            {big.stream({{{2, big.text("abc")}, {14, big.integer(5)}}}), "1 2[abc] 14[5]"},
        });
}

TEST(OleSummaryInformation, DecodesByTheCodePage) {
    const PropertySetBuilder& b = builder();
    std::string thai;
    for (int i = 0; i < 9000; ++i) {
        thai += "\u0E01";
    }
    for (const auto& [codePage, bytes, text] : Rows<std::uint64_t, std::string, std::string>{
             {1252, "caf\xE9", "café"},
             {65001, "\xE6\x97\xA5\xFF", "日\uFFFD"},
             {932, "\x93\xFA", "日"},
             {874, std::string(9000, '\xA1'), thai},
             {12345, "abc", ""},
             {0, "abc", ""},
             {0x7FFFFFFF, "abc", ""},
         }) {
        EXPECT_EQ(told(b.stream({{{1, b.integer(codePage, 2)}, {2, b.text(bytes)}}})),
                  "1 1[" + std::to_string(codePage) + "] 2[" + text + "]");
    }
}

// On purpose: cp932 is the last resort.
TEST(OleSummaryInformation, WithoutACodePageTextsAreJapanese) {
    const std::string day = builder().text("\x93\xFA");
    EXPECT_EQ(told(builder().stream({{{2, day}}})), "1 2[日]");
    EXPECT_EQ(told(builder().stream({{{2, day}, {1, builder().text("1252")}}})), "1 1[1252] 2[日]");
}

// On purpose: the two bytes behind a 16-bit number belong to it.
TEST(OleSummaryInformation, ShortIntegersAreReadWithTheirPadding) {
    const PropertySetBuilder& b = builder();
    EXPECT_EQ(told(b.stream({{{1, b.integer(0xFFFFFDE9, 2)}, {2, b.text("a")}}})), "1 1[-535] 2[]");
}

// On purpose: ICU's "cp1200" is big-endian, and a zero byte ends every text.
TEST(OleSummaryInformation, TextsInUtf16AreNotUnderstood) {
    const PropertySetBuilder& b = builder();
    EXPECT_EQ(told(b.stream({{{1, b.integer(1200, 2)}, {2, b.text("\x6F\x66"s + "a\0b\0"s)}}})),
              "1 1[1200] 2[\u6F66\uFFFD]");
}

// On purpose: only one mark says that numbers are reversed.
TEST(OleSummaryInformation, AnyOtherMarkMeansTheUsualByteOrder) {
    EXPECT_EQ(told("ab" + builder().stream({{{2, builder().text("a")}}}).substr(2)), "1 2[a]");
}

TEST(OleSummaryInformation, ListsHyperlinks) {
    const PropertySetBuilder& b = builder();
    const std::string wide = b.wide(u"a\0"s);
    const std::string a = b.blob(1, wide);
    const std::string no = b.blob(1, b.wide(u"no"));
    const auto named = [&b](const std::string& name, const std::string& blob) {
        return b.stream({{{0, b.dictionary({{2, name}})}, {2, blob}}});
    };
    const std::string four =
        b.wide(u"\0"s) + b.integer(31) + b.wide(u"b\0c"s) + b.wide(u"") + b.wide(u"\u65E5");
    const std::string names =
        b.dictionary({{5, kLinks}, {4, "x"}, {3, kLinks}, {2, kLinks}, {1, kLinks}});
    const PropertySetBuilder big(true);
    const std::string bigNames = big.dictionary({{2, kLinks}});
    expectRows<std::string, const char*>(
        linksOf,
        {
            {named(kLinks, b.blob(5, four)), "1 1 b 日"},
            {named(kLinks, b.blob(0, "")), "1 1"},
            {b.stream({{{0, names}, {1, no}, {4, no}, {2, b.text("")}, {3, a}, {5, no}}}), "1 1 a"},
            {b.stream({{{2, no}}, {{0, names}, {2, a}}}), "1 1 a"},
            {named(kLinks + "x", a), "1 1 a"},
            {named("_PID_HLINKS", a), "1 -1"},
            {b.stream({{{2, a}}}), "1 -1"},
            {named(kLinks, b.blob(3, wide)), "1 -1 a"},
            {named(kLinks, b.blob(2, wide + b.integer(0x7FFFFFFF, 31))), "1 -1 a"},
            {named(kLinks, b.blob(1, b.integer(kHuge, 31))), "1 -1"},
            {big.stream({{{0, bigNames}, {2, big.blob(1, big.wide(u"\u65E5"))}}}), "1 1 日"},
        });
}

// On purpose: a variant of another type is not stepped over.
TEST(OleSummaryInformation, UnknownVariantsAreTypesOneAfterTheOther) {
    const PropertySetBuilder& b = builder();
    const std::string blob = b.blob(3, b.number(5) + b.wide(u"a") + b.number(8));
    EXPECT_EQ(linksOf(b.stream({{{0, b.dictionary({{2, kLinks}})}, {2, blob}}})), "1 1 a");
}

// On purpose: the last property is bounded by what stands behind the table, here the number 30.
TEST(OleSummaryInformation, ADictionaryThatIsListedLastIsCut) {
    const PropertySetBuilder& b = builder();
    EXPECT_EQ(
        linksOf(b.stream(
            {{{3, b.text("")}, {2, b.blob(1, b.wide(u"a"))}, {0, b.dictionary({{2, kLinks}})}}})),
        "1 -1");
}

TEST(OleSummaryInformation, ADocumentSummaryServesNoProperties) {
    const std::string stream = builder().stream({{{2, builder().text("a")}}});
    OleFile file(OleBuilder().stream(u"\5DocumentSummaryInformation", stream).build().bytes);
    OleSummaryInformation summary;
    ZRValue value;
    EXPECT_EQ(summary.initDocumentSummaryInformation(&*file), 1);
    EXPECT_EQ(summary.getProperty(2, value), -1);
    EXPECT_EQ(summary.initSummaryInformation(&*file), -1) << "there is no such stream";
    EXPECT_EQ(summary.initDocumentSummaryInformation(nullptr), -1);
    EXPECT_EQ(summary.getSummaryInformation(), -1);
    std::vector<UnicodeString> links;
    EXPECT_EQ(summary.getHyperLinks(links), -1);
}

TEST(OleSummaryInformation, DamageEndsAtOnceAndKeepsWhatWasAheadOfIt) {
    const PropertySetBuilder& b = builder();
    const std::string sound = b.stream({{{2, b.text("a")}, {3, b.text("b")}}});
    const std::string one = b.head(1) + b.entry(48);
    const auto property = [&b](const std::string& value) {
        return b.stream({{{2, value}}});
    };
    for (const auto& [stream, expected] : Rows<std::string, const char*>{
             {"", "-1"},
             {sound.substr(0, 27), "-1"},
             {sound.substr(0, 55), "-1"},
             {sound.substr(0, sound.size() - 9), "-1 2[a]"},
             {sound.substr(0, sound.size() - 7), "1 2[a]"},
             {b.head(kHuge), "-1"},
             {b.head(kHuge) + sound.substr(28), "-1 2[a] 3[b]"},
             {b.head(1) + b.entry(0x7FFFFFFF) + sound.substr(48), "-1"},
             {one + b.numbers({8, kHuge}), "-1"},
             {one + b.numbers({8, 1, 2, 0x7FFFFF00, 0}), "-1"},
             {b.stream({{{0, b.numbers({kHuge, 2, 0})}, {2, b.text("a")}}}), "-1"},
             {property(b.integer(kHuge, 30)), "1"},
             {property(b.integer(0x7FFFFFFF, 30)), "1"},
             {property(b.integer(kHuge, kVector | 3) + b.number(5)), "1 !2[5]"},
             {property(b.integer(kHuge, kVector | 64)), "1"},
         }) {
        const Cheap cheap("for " + std::to_string(stream.size()) + " bytes");
        EXPECT_EQ(told(stream), expected) << "for " << stream.size() << " bytes";
    }
}

TEST(OleSummaryInformation, WhatOverlapsWithoutEndIsRefused) {
    const PropertySetBuilder& b = builder();
    constexpr std::size_t kCount = 3000;
    std::string entries;
    std::string table;
    for (std::size_t i = 0; i < kCount; ++i) {
        entries += b.entry(28 + 20 * kCount);
        table += b.numbers({2, 8});
    }
    const std::string stream = b.head(kCount) + entries + b.numbers({8, kCount}) + table;
    const Cheap cheap("all");
    EXPECT_EQ(told(stream + b.number(0)), "-1 2[8]");
}

// On purpose: the start of the set counts twice in the positions of properties.
TEST(OleSummaryInformation, ASecondParseStartsWhereTheStreamStands) {
    const PropertySetBuilder& b = builder();
    const std::string sets = b.head(1) + b.entry(96) + b.head(1) + b.entry(48);
    const std::string section = b.numbers({16, 1, 14, 68, 0}) + std::string(96, '\0');
    OleFile file(fileWith(sets + section + b.integer(8)));
    OleSummaryInformation summary;
    ZRValue value;
    ASSERT_EQ(summary.initSummaryInformation(&*file), 1);
    ASSERT_EQ(summary.getSummaryInformation(), 1);
    EXPECT_EQ(summary.getProperty(14, value), 1);
    EXPECT_EQ(value.getIntegerValue(), 8);
}

// On purpose: each text is set only when the file has it.
TEST(OlePropertySet, KeepsWhatTheNextFileLacks) {
    const PropertySetBuilder& b = builder();
    const std::string texts =
        b.stream({{{2, b.text("T")}, {3, b.text("S")}, {4, b.text("A")}, {5, b.text("K")}}});
    OleFile first(fileWith(texts));
    OleFile second(fileWith(b.stream({{{3, b.text("")}, {4, b.integer(5)}}})));
    OlePropertySet set;
    set.init(nullptr);
    EXPECT_EQ(set.getTitle() + set.getSubject() + set.getAuthor() + set.getKeywords(), u"");
    set.init(&*first);
    EXPECT_EQ(set.getTitle() + set.getSubject() + set.getAuthor() + set.getKeywords(), u"TSAK");
    set.init(&*second);
    EXPECT_EQ(set.getTitle() + set.getSubject() + set.getAuthor() + set.getKeywords(), u"TK");
}

}  // namespace
}  // namespace ZroCommon::testing
