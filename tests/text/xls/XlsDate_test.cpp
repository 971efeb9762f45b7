#include <gtest/gtest.h>

#include "tests/text/xls/Cells.h"
#include "zro/text/xls/internal/SerialDate.h"

namespace ZroCommon::testing {
namespace {

TEST(XlsDate, ShowsDates) {
    expectTexts({
        {u"yyyy\\-mm\\-dd", {45000.75, 2958465}, "2023-03-15 | 9999-12-31"},
        {u"d/m/yy", 45000, "15/3/23"},
        {u"dddd, mmmm\\ d", 45000, "Wednesday,March 15"},
        {u"ddd\\ mmm\\ mmmmm", 45000, "Wed Mar M"},
        {u"aaa\\ aaaa", 45000, "水 水曜日"},
        {u"yyyy\\-m\\-d", {59, 60, 61}, "1900-2-28 | 1900-2-29 | 1900-3-1"},
        {u"yyyy\\ d\\ dddd", 0, "1900 0 Saturday"},
        {u"dddd", 1, "Sunday"},
        {u"yyyy", 2958466, "####(-3)", 4},
        {u"h", 2958466, "0"},
        {u"yyyy", -1, "##(-3)", 2},
        {u"h", -1, "##(-3)", 2},
        {u"yyyy", 1, "###(-3)", 3},
        {u"[Red]%\\xyy", 61, "%x00"},
        {u"m/d/yyyy", 73051, "1/1/2100"},
        {u"m/d", {73109, 73110}, "2/28 | 3/1"},
    });
}

TEST(XlsDate, CountsFrom1904) {
    expectTexts({{u"yyyy\\-mm\\-dd\\ dddd", 0, "1904-01-01 Friday"},
                 {u"yyyy\\-mm\\-dd", -1, "-1904-01-02"},
                 {u"yyyy\\-mm\\-dd", 2957003, "9999-12-31"},
                 {u"yyyy", 2957004, "##########(-3)", 10},
                 {u"ggge", 3132, "明治45"},
                 {u"[h]:mm", -1.5, "-36:00"}},
                true);
}

TEST(XlsDate, ShowsTimes) {
    expectTexts({
        {u"h:mm\\ AM/PM", {0.5, 0, 0.999999}, "12:00 PM | 12:00 AM | 12:00 PM"},
        {u"h:mm\\ am/pm", 0.75, "6:00 pm"},
        {u"hh:mm:ss\\ A/P", 0.999, "11:58:34 P"},
        {u"h:mm:ss", 0.999999, "0:00:00"},
        {u"hh:mm", 1.25, "06:00"},
        {u"mm:ss.0", 0.5 - 0.4 / 86400, "59:59.6"},
        {u"h:mm:ss.00", 0.5 - 0.001 / 86400, "12:00:00.0"},
        {u"[h]", 1.5, "36"},
        {u"[hh]:mm", 0.25, "06:00"},
        {u"[m]", 1.5, "2160"},
        {u"[mm]:ss", 1.0 / 24, "60:00"},
        {u"[ss]", {1.5, 2000000}, "129600 | 172800000000"},
        {u"[h]", 1e300, "###(-3)", 3},
    });
}

// On purpose: "[s]" knows no days.
TEST(XlsDate, OneLetterOfElapsedSecondsCountsTheDayAlone) {
    EXPECT_EQ(cellText(u"[s]", 1.5), "43200");
}

// On purpose: fractions are numbers, without zeros ahead, and eat a character.
TEST(XlsDate, FractionsOfSecondsLoseTheirZeros) {
    const double twentieth = 0.5 + 0.05 / 86400;
    EXPECT_EQ(cellText(u"ss.00", twentieth), "00.5");
    EXPECT_EQ(cellText(u"ss.000", 0.5), "00.0");
    EXPECT_EQ(cellText(u"ss.0000", twentieth), "00.50");
    EXPECT_EQ(cellText(u"ss.0\\ AM/PM", 0.5), "00.0AM/PM");
    EXPECT_EQ(cellText(u"h\\\"mm", 0), "0m2");
}

TEST(XlsDate, ShowsEras) {
    expectTexts({
        {u"ggge", {4594, 4595, 32516}, "明治45 | 大正1 | 平成1"},
        {u"gg\\ ee", 9855, "大 15"},
        {u"g", 9856, "S"},
        {u"ge", 32515, "S64"},
        {u"rr", 45000, "平成35"},
        {u"r", 9856, "昭和01"},
    });
}

// On purpose: a single "r" goes without the name of the last era.
TEST(XlsDate, TheLastEraHidesItsName) {
    EXPECT_EQ(cellText(u"r", 32516), "01");
}

TEST(XlsDate, OtherVersionsOfABookHaveJapaneseWeekdays) {
    XlsFormatString formats;
    formats.bookFlags = 0;
    EXPECT_EQ(cellText(formats, u"dddd", 45000), "水");
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
