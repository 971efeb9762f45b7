
#include "tests/support/SmallStack.h"
#include "tests/support/Values.h"

namespace ZroCommon::testing {
namespace {

using LinkCases = Rows<const char16_t*, const char*>;

TEST(ZRValueLinks, ReadsTheOpenParametersOfPdf) {
    for (const auto& [text, value] : LinkCases{
             {u"a.pdf", "map {page: 1; uri: a.pdf; view: xyz}"},
             {u"#page=3", "null"},
             {u"", "map {page: 1; uri: ; view: xyz}"},
             {u"a#page=3-5", "map {last-page: 5; page: 3; uri: a; view: xyz}"},
             {u"a#page=-3", "map {page: -3; uri: a; view: xyz}"},
             {u"a#page=3-", "map {page: 3; uri: a; view: xyz}"},
             {u"a#page=abc", "map {page: 0; uri: a; view: xyz}"},
             {u"a#PAGE=2&page=4", "map {page: 4; uri: a; view: xyz}"},
             {u"a#nameddest=x.y&zoom=2", "map {nameddest: x.y; uri: a; view: xyz; zoom: 2}"},
             {u"a#nameddest=", "map {page: 1; uri: a; view: xyz}"},
             {u"a#view=FitH,1in", "map {page: 1; top: 72pt; uri: a; view: fith}"},
             {u"a#view=fitbv,7", "map {left: 7pt; page: 1; uri: a; view: fitbv}"},
             {u"a#view=fit,7", "map {page: 1; uri: a; view: fit}"},
             {u"a#view=fitr", "map {page: 1; uri: a; view: xyz}"},
             {u"a#viewrect=1,2,3,4mm",
              "map {height: 11.3386pt; left: 1pt; page: 1; top: 2pt; uri: a; "
              "view: viewrect; width: 3pt}"},
             {u"a#viewrect=1,2,3,0", "map {page: 1; uri: a; view: xyz}"},
             {u"a#viewrect=1,2,3", "map {page: 1; uri: a; view: xyz}"},
             {u"a#zoom=150%,1em,-2",
              "map {left: 0pt; page: 1; top: -2pt; uri: a; view: xyz; zoom: 1.5}"},
             {u"a#zoom=0,1,2&view=fit", "map {page: 1; uri: a; view: fit}"},
             {u"a#zoom=2pt", "map {page: 1; uri: a; view: xyz}"},
             {u"a#=1&x&y=2&page=2", "map {page: 2; uri: a; view: xyz}"},
             {u"a#'page=2'&view=\"fit", "map {page: 2; uri: a; view: fit}"},
         }) {
        EXPECT_EQ(dump(ZRValue::parsePDFOpenParameters(text)), value) << utf8(text);
    }
}

TEST(ZRValueLinks, AnEmptyItemEndsTheParameters) {
    const ZRValue value = ZRValue::parsePDFOpenParameters(u"a#page=2&&view=fit");
    EXPECT_EQ(dump(value), "map {page: 2; uri: a; view: xyz}");
}

TEST(ZRValueLinks, ReadsXlinks) {
    for (const auto& [text, value] : LinkCases{
             {u"", "null"},
             {u"a.xml#chap1", "map {nameddest: chap1; uri: a.xml}"},
             {u"#chap1", "map {nameddest: chap1}"},
             {u"a#a:b", "map {nameddest: a; uri: a}"},
             {u"a#5", "map {page: 1; uri: a; view: xyz}"},
             {u"a#", "map {page: 1; uri: a; view: xyz}"},
             {u"#page=2", "map {page: 2; view: xyz}"},
             {u"a", "map {page: 1; uri: a; view: xyz}"},
             {u"a#x=1&nameddest=b#c", "map {nameddest: b#c; uri: a}"},
         }) {
        EXPECT_EQ(dump(ZRValue::parseXlinkHref(text)), value) << utf8(text);
    }
}

TEST(ZRValueLinks, ReadsDestinationsWithinTheDocument) {
    for (const auto& [text, value] : LinkCases{
             {u"chap1", "map {nameddest: chap1}"},
             {u" 12 # view=fit", "map {page: 12; view: fit}"},
             {u"chap1#zoom=2", "map {nameddest: chap1; view: xyz; zoom: 2}"},
             {u"chap1 x#zoom=2", "map {nameddest: chap1}"},
             {u"\u3000#page=3 ", "map {page: 3}"},
             {u"#fff", "null"},
             {u"#abc=1&page=2", "map {page: 2}"},
             {u"-5", "null"},
             {u"'a'#page=1", "null"},
             {u"", "null"},
         }) {
        EXPECT_EQ(dump(ZRValue::parseInternalDestination(text, 0)), value) << utf8(text);
        EXPECT_EQ(dump(ZRValue::parseInternalDestination(text, 1)), value) << utf8(text);
    }
}

TEST(ZRValueLinks, ReadsTheTypeOfADestination) {
    for (const auto& [text, value] : LinkCases{
             {u"fit", "name fit"},
             {u" FitR 2", "name fitr"},
             {u"xyz", "name xyz"},
             {u"xyz 150%", "map {.: xyz; zoom: 150}"},
             {u"xyz-left 1.5 x", "map {.: xyz-left; zoom: 1.5}"},
             {u"xyz -1", "name xyz"},
             {u"xyz 2pt", "name xyz"},
             {u"150%", "map {.: xyz-top; zoom: 150}"},
             {u"2", "map {.: xyz-top; zoom: 2}"},
             {u"0", "name xyz-top"},
             {u"#fff", "name xyz-top"},
             {u"nonsense", "name xyz-top"},
             {u"", "name xyz-top"},
         }) {
        EXPECT_EQ(dump(ZRValue::parseDestinationType(text)), value) << utf8(text);
    }
}

TEST(ZRValueLinks, ReadsSheetsAndCharts) {
    for (const auto& [text, value] : LinkCases{
             {u"a.xls", "null"},
             {u"a.xls#", "map {}"},
             {u"#Sheet=2&chart=0&other=3", "map {chart: 0; sheet: 2}"},
             {u"a.xls#sheet=-1&chart=x", "map {}"},
             {u"a#sheet=1.5&chart=#fff", "map {}"},
         }) {
        EXPECT_EQ(dump(ZRValue::parseExcelOpenParameters(text)), value) << utf8(text);
    }
}

TEST(ZRValueLinks, ReadsAnyParametersOfAFragment) {
    for (const auto& [text, value] : LinkCases{
             {u"a", "string a"},
             {u"a#", "string a"},
             {u"#", "null"},
             {u"a#K=v", "map {.: a; k: v}"},
             {u"#k=%20v%3D1 &&x&=y&m==", "map {k: v=1; m: =}"},
         }) {
        EXPECT_EQ(dump(ZRValue::parseUriFragmentParameters(text, true)), value) << utf8(text);
    }
    const ZRValue kept = ZRValue::parseUriFragmentParameters(u"a#Color=v", false);
    EXPECT_EQ(dump(kept.getNamedItem(ZRName(u"Color"))), "string v");
}

TEST(ZRValueLinks, ReadsEveryBeginningOfAText) {
    for (const UnicodeString& whole :
         {UnicodeString(u"#page=3-5&view=fith,'1&zoom=%31%,2&viewrect=1,2,3,4#&k%=%4"),
          UnicodeString(u"a\xD800#sheet=1&k=%u\xDC00%&nameddest=\"x\"&page=1\0&", 40)}) {
        forEveryBeginning(whole, [](const UnicodeString& text) {
            const bool hasHash = text.indexOf(u'#') >= 0;
            EXPECT_EQ(ZRValue::parsePDFOpenParameters(text).isNull(), text.startsWith(u'#'));
            EXPECT_EQ(ZRValue::parseXlinkHref(text).isNull(), text.isEmpty());
            EXPECT_FALSE(ZRValue::parseInternalDestination(text, 0).isString());
            EXPECT_FALSE(ZRValue::parseDestinationType(text).isEmpty());
            EXPECT_EQ(ZRValue::parseExcelOpenParameters(text).isCompound(), hasHash);
            EXPECT_TRUE(hasHash || ZRValue::parseUriFragmentParameters(text, true).isString());
        });
    }
    const UnicodeString brackets = text("a#page=" + std::string(1'000'000, '('));
    onSmallStack([&] {
        EXPECT_EQ(dump(ZRValue::parsePDFOpenParameters(brackets)),
                  "map {page: 0; uri: a; view: xyz}");
    });
}

}  // namespace
}  // namespace ZroCommon::testing
