#include "tests/text/xls/Cells.h"
#include "zro/text/xls/internal/SerialDate.h"

namespace ZroCommon::testing {
namespace {

TEST(XlsDate, ShowsDates) {
    expectCells({"45000.75 2958465 as yyyy\\-mm\\-dd -> 2023-03-15 | 9999-12-31",
                 "45000 as d/m/yy -> 15/3/23", "45000 as dddd, mmmm\\ d -> Wednesday,March 15",
                 "45000 as ddd\\ mmm\\ mmmmm -> Wed Mar M", "45000 as aaa\\ aaaa -> 水 水曜日",
                 "59 60 61 as yyyy\\-m\\-d -> 1900-2-28 | 1900-2-29 | 1900-3-1",
                 "0 as yyyy\\ d\\ dddd -> 1900 0 Saturday", "1 as dddd -> Sunday",
                 "2958466 as yyyy in 4 -> ####(-3)", "2958466 as h -> 0",
                 "-1 as yyyy in 2 -> ##(-3)", "-1 as h in 2 -> ##(-3)", "1 as yyyy in 3 -> ###(-3)",
                 "61 as [Red]%\\xyy -> %x00", "73051 as m/d/yyyy -> 1/1/2100",
                 "73109 73110 as m/d -> 2/28 | 3/1"});
}

TEST(XlsDate, CountsFrom1904) {
    expectCells({"0 as yyyy\\-mm\\-dd\\ dddd -> 1904-01-01 Friday",
                 "-1 2957003 as yyyy\\-mm\\-dd -> -1904-01-02 | 9999-12-31",
                 "2957004 as yyyy in 10 -> ##########(-3)", "3132 as ggge -> 明治45",
                 "-1.5 as [h]:mm -> -36:00"},
                true);
}

TEST(XlsDate, ShowsTimes) {
    expectCells({"0.5 0 0.999999 as h:mm\\ AM/PM -> 12:00 PM | 12:00 AM | 12:00 PM",
                 "0.75 as h:mm\\ am/pm -> 6:00 pm", "0.999 as hh:mm:ss\\ A/P -> 11:58:34 P",
                 "0.999999 as h:mm:ss -> 0:00:00", "1.25 as hh:mm -> 06:00", "1.5 as [h] -> 36",
                 "0.25 as [hh]:mm -> 06:00", "1.5 as [m] -> 2160",
                 "0.041666666666666664 as [mm]:ss -> 60:00",
                 "1.5 2000000 as [ss] -> 129600 | 172800000000", "1e300 as [h] in 3 -> ###(-3)"});
    EXPECT_EQ(cellText({}, u"mm:ss.0", 0.5 - 0.4 / 86400), "59:59.6");
    EXPECT_EQ(cellText({}, u"h:mm:ss.00", 0.5 - 0.001 / 86400), "12:00:00.0");
}

// On purpose: "[s]" knows no days.
TEST(XlsDate, OneLetterOfElapsedSecondsCountsTheDayAlone) {
    expectCells({"1.5 as [s] -> 43200"});
}

// On purpose: fractions are numbers, without zeros ahead, and eat a character.
TEST(XlsDate, FractionsOfSecondsLoseTheirZeros) {
    const double twentieth = 0.5 + 0.05 / 86400;
    EXPECT_EQ(cellText({}, u"ss.00", twentieth), "00.5");
    EXPECT_EQ(cellText({}, u"ss.0000", twentieth), "00.50");
    expectCells(
        {"0.5 as ss.000 -> 00.0", "0.5 as ss.0\\ AM/PM -> 00.0AM/PM", "0 as h\\\"mm -> 0m2"});
}

TEST(XlsDate, ShowsEras) {
    expectCells({"4594 4595 32516 as ggge -> 明治45 | 大正1 | 平成1", "9855 as gg\\ ee -> 大 15",
                 "9856 as g -> S", "32515 as ge -> S64", "45000 as rr -> 平成35",
                 "9856 as r -> 昭和01"});
    XlsFormatString other;
    other.bookFlags = 0;
    EXPECT_EQ(cellText(other, u"dddd", 45000), "水") << "in other versions of a book";
}

// On purpose: a single "r" goes without the name of the last era.
TEST(XlsDate, TheLastEraHidesItsName) {
    expectCells({"32516 as r -> 01"});
}

// Whole years and months subtracted one by one, by the rule of each year.
TEST(XlsDate, TheCalendarHasNoGap) {
    for (const bool isSystem1904 : {false, true}) {
        int serial = isSystem1904 ? 0 : 1;
        for (int year = isSystem1904 ? 1904 : 1900; year <= 9999; ++year) {
            const bool isLeap =
                year < 2080 ? year % 4 == 0 : year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
            const int days[] = {31, isLeap ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
            for (int month = 1; month <= 12; ++month) {
                const auto first = internal::SerialDate::of(serial, isSystem1904);
                serial += days[month - 1];
                const auto last = internal::SerialDate::of(serial - 1, isSystem1904);
                ASSERT_TRUE(first && first->year == year && first->month == month
                            && first->day == 1);
                ASSERT_TRUE(last && last->month == month && last->day == days[month - 1]);
            }
        }
        EXPECT_FALSE(internal::SerialDate::of(serial, isSystem1904));
    }
}

}  // namespace
}  // namespace ZroCommon::testing
