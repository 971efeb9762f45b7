
#include "tests/support/SmallStack.h"
#include "tests/support/Values.h"

namespace ZroCommon::testing {
namespace {

// A reader of links, from text to text.
auto dumpOf(ZRValue (*read)(const UnicodeString&)) {
    return [read](const std::string& source) {
        return dump(read(text(source)));
    };
}

TEST(ZRValueLinks, ReadsTheOpenParametersOfPdf) {
    expectLines(dumpOf(&ZRValue::parsePDFOpenParameters),
                R"(
a.pdf -> map {page: 1; uri: a.pdf; view: xyz}
#page=3 -> null
a#page=3-5 -> map {last-page: 5; page: 3; uri: a; view: xyz}
a#page=-3 -> map {page: -3; uri: a; view: xyz}
a#page=3- -> map {page: 3; uri: a; view: xyz}
a#page=abc -> map {page: 0; uri: a; view: xyz}
a#PAGE=2&page=4 -> map {page: 4; uri: a; view: xyz}
a#nameddest=x.y&zoom=2 -> map {nameddest: x.y; uri: a; view: xyz; zoom: 2}
a#nameddest= -> map {page: 1; uri: a; view: xyz}
a#view=FitH,1in -> map {page: 1; top: 72pt; uri: a; view: fith}
a#view=fitbv,7 -> map {left: 7pt; page: 1; uri: a; view: fitbv}
a#view=fit,7 -> map {page: 1; uri: a; view: fit}
a#view=fitr -> map {page: 1; uri: a; view: xyz}
a#viewrect=1,2,3,4mm -> map {height: 11.3386pt; left: 1pt; page: 1; top: 2pt; uri: a; view:
 viewrect; width: 3pt}
a#viewrect=1,2,3,0 -> map {page: 1; uri: a; view: xyz}
a#viewrect=1,2,3 -> map {page: 1; uri: a; view: xyz}
a#zoom=150%,1em,-2 -> map {left: 0pt; page: 1; top: -2pt; uri: a; view: xyz; zoom: 1.5}
a#zoom=0,1,2&view=fit -> map {page: 1; uri: a; view: fit}
a#zoom=2pt -> map {page: 1; uri: a; view: xyz}
a#page=2&&view=fit -> map {page: 2; uri: a; view: xyz}
a#=1&x&y=2&page=2 -> map {page: 2; uri: a; view: xyz}
a#'page=2'&view="fit -> map {page: 2; uri: a; view: fit})");
    expectTexts(dumpOf(&ZRValue::parsePDFOpenParameters), {" -> map {page: 1; uri: ; view: xyz}"});
}

TEST(ZRValueLinks, ReadsXlinks) {
    expectLines(dumpOf(&ZRValue::parseXlinkHref),
                R"(
a.xml#chap1 -> map {nameddest: chap1; uri: a.xml}
#chap1 -> map {nameddest: chap1}
a#a:b -> map {nameddest: a; uri: a}
a#5 -> map {page: 1; uri: a; view: xyz}
a# -> map {page: 1; uri: a; view: xyz}
#page=2 -> map {page: 2; view: xyz}
a -> map {page: 1; uri: a; view: xyz}
a#x=1&nameddest=b#c -> map {nameddest: b#c; uri: a})");
    expectTexts(dumpOf(&ZRValue::parseXlinkHref), {" -> null"});
}

TEST(ZRValueLinks, ReadsDestinationsWithinTheDocument) {
    const auto destination = [](const std::string& source) {
        const std::string first = dump(ZRValue::parseInternalDestination(text(source), 0));
        EXPECT_EQ(dump(ZRValue::parseInternalDestination(text(source), 1)), first);
        return first;
    };
    expectLines(destination, R"(
chap1 -> map {nameddest: chap1}
chap1#zoom=2 -> map {nameddest: chap1; view: xyz; zoom: 2}
chap1 x#zoom=2 -> map {nameddest: chap1}
#fff -> null
#abc=1&page=2 -> map {page: 2}
-5 -> null
'a'#page=1 -> null)");
    expectTexts(destination, {" 12 # view=fit -> map {page: 12; view: fit}",
                              "\u3000#page=3  -> map {page: 3}", " -> null"});
}

TEST(ZRValueLinks, ReadsTheTypeOfADestination) {
    expectLines(dumpOf(&ZRValue::parseDestinationType), R"(
fit -> name fit
xyz -> name xyz
xyz 150% -> map {.: xyz; zoom: 150}
xyz-left 1.5 x -> map {.: xyz-left; zoom: 1.5}
xyz -1 -> name xyz
xyz 2pt -> name xyz
150% -> map {.: xyz-top; zoom: 150}
2 -> map {.: xyz-top; zoom: 2}
0 -> name xyz-top
#fff -> name xyz-top
nonsense -> name xyz-top)");
    expectTexts(dumpOf(&ZRValue::parseDestinationType),
                {" FitR 2 -> name fitr", " -> name xyz-top"});
}

TEST(ZRValueLinks, ReadsSheetsAndCharts) {
    expectLines(dumpOf(&ZRValue::parseExcelOpenParameters), R"(
a.xls -> null
a.xls# -> map {}
#Sheet=2&chart=0&other=3 -> map {chart: 0; sheet: 2}
a.xls#sheet=-1&chart=x -> map {}
a#sheet=1.5&chart=#fff -> map {})");
}

TEST(ZRValueLinks, ReadsAnyParametersOfAFragment) {
    const auto parameters = [](const std::string& source) {
        return dump(ZRValue::parseUriFragmentParameters(text(source), true));
    };
    expectLines(parameters, R"(
a -> string a
a# -> string a
# -> null
a#K=v -> map {.: a; k: v}
#k=%20v%3D1 &&x&=y&m== -> map {k: v=1; m: =})");
    const ZRValue kept = ZRValue::parseUriFragmentParameters(u"a#Color=v", false);
    EXPECT_EQ(dump(kept.getNamedItem(ZRName(u"Color"))), "string v");
}

TEST(ZRValueLinks, DepthNeedsNoStack) {
    const UnicodeString brackets = text("a#page=" + std::string(1'000'000, '('));
    onSmallStack([&] {
        EXPECT_EQ(dump(ZRValue::parsePDFOpenParameters(brackets)),
                  "map {page: 0; uri: a; view: xyz}");
    });
}

}  // namespace
}  // namespace ZroCommon::testing
