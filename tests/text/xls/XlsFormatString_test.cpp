#include "zro/text/xls/XlsFormatString.h"

#include <limits>

#include "tests/support/Threads.h"
#include "tests/text/xls/Cells.h"

namespace ZroCommon::testing {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(XlsFormatString, ChoosesASection) {
    expectCells({R"(-1 as "a" -> -a)", R"(0 -1 as "a";"b" -> a | b)",
                 R"(1 -1 -0 as "a";"b";"c" -> a | b | c)", R"(0 as "a";"b";"c";@ -> c)",
                 R"(0 as "a";"b";"c";0 -> c)", R"(6 5 as [>5]"a" -> a | )",
                 "75 as [>100]0;[<50]0 -> ", R"(75 as [>100]0;"b" -> b)",
                 R"(-1 as 0;[<-5]"b" -> -1)", R"(3 as [>5]"a";[<0]"b";"c" -> c)",
                 R"(-1 as "a";[<-5]"b";"c" -> -c)", R"(2 as [=1]"a";[<>2]"b";"c" -> c)",
                 // A condition may say that the section is for negative numbers.
                 "-1 as [<=0]0;0 -> -1", "-1 as [<0]0;0 -> 1", "-2 as [<-1]0;0 -> -2",
                 "-1 as 0;[<0]0 -> -1", "-1 as 0.00;\\-0.00 -> -1.00", "-1 as 0;0;@ -> 1",
                 "5 as @ -> 5", "5 as @;0 -> 5", "5 as [-]0 -> untouched",
                 R"(5 as [>]"a";[<>--5]"b" -> b)", R"(16777216 as [>=16777217]"a";"b" -> a)"});
}

// On purpose: conditions hold floats, and 0.1 is below the float next to it.
TEST(XlsFormatString, ATenthIsNotAtLeastATenth) {
    expectCells({R"(0.1 as [>=0.1]"a";"b" -> b)"});
}

TEST(XlsFormatString, WhatIsNoNumberIsTooWide) {
    for (const char16_t* format : {u"0", u"0;0;0", u"[>1]0;0", u"General", u"yyyy", u"@", u"E+0"}) {
        EXPECT_EQ(cellText({}, format, kNaN, 3).substr(0, 3), "###") << utf8(format);
        EXPECT_EQ(cellText({}, format, kInfinity, 3).substr(0, 3), "###") << utf8(format);
    }
}

TEST(XlsFormatString, FormatStringClearsFill) {
    XlsFormatString formats;
    EXPECT_TRUE(formats.isFill());
    EXPECT_EQ(utf8(formats.FormatString(u"*x0", 5)), "x5");
    EXPECT_FALSE(formats.isFill());
    EXPECT_EQ(formats.FormatString(u"0 0", 5), UnicodeString()) << "an invalid format";
    formats.setDate1904(1);
    EXPECT_EQ(formats.GetYearBase(), 1904);
    EXPECT_EQ(formats.GetBookVersion(), 0x800);
}

TEST(XlsFormatString, FillsUpToTheWidth) {
    expectCells({"5 as *-0 in 8 -> -------5", "5 as \\$* 0.0 in 8 -> $    5.0",
                 "5 as 0*x*y in 3 -> 5yy", "5 as 0*\u3042 in 3 -> 5\u3042\u3042",
                 "61 as yyyy*. in 6 -> 1900..", "5 as 0* in 3 -> 5", "12345 as 0*x in 3 -> ###(-3)",
                 "5 as 0 in -1 -> (-3)"});
    EXPECT_EQ(cellText({}, u"0*x", 5, std::numeric_limits<int>::max()).size(), 32767U);
}

TEST(XlsFormatString, ShowsTexts) {
    for (const auto& [format, text, outcome, color] :
         Rows<const char16_t*, const char*, short, int>{
             {u"[Blue]0", "abc", 0, 124},
             {u"0;0;0;[Red]\"<\"@\\>General", "<abc>abc", 1, 122},
             {u"0;0;0;General@", "abcabc", 1, 0},
             {u"@*.", "abc..", 1, 0},
             {u"@0h\\\"", "abc", 0, 0},
             {u"0;0;0;\"no text\"", "no text", 1, 0},
             {u"0 0", "untouched", 0, 99},
         }) {
        CELLV cell;
        cell.text = u"abc";
        UnicodeString result(u"untouched");
        unsigned char found = 99;
        EXPECT_EQ(XlsFormatString().fmtstr(&cell, ZRValue(5), format, result, &found), outcome);
        EXPECT_EQ(utf8(result), text) << utf8(format);
        EXPECT_EQ(int{found}, color) << utf8(format);
    }
}

// Whether a text is too wide is the caller's to say; what formats a cell meanwhile does no harm.
bool isLongerThanFour(void* user, const UnicodeString& text, const ZRLength& length, int a, int b) {
    EXPECT_EQ(a + b, 5);
    EXPECT_EQ(length, ZRLength(9.0F));
    for (int format = 0; format < 99; ++format) {
        cellText({}, testing::text(std::to_string(format) + "0"), 1);
    }
    ++*static_cast<int*>(user);
    return text.length() > 4;
}

TEST(XlsFormatString, AsksTheCallerForTheWidth) {
    int calls = 0;
    for (const auto& [number, expected] : {std::pair{1234.0, "x1234"}, {12345.0, "###"}}) {
        CELLV cell;
        cell.number = number;
        UnicodeString result;
        unsigned char color = 0;
        const short outcome =
            XlsFormatString().fmtnum(&cell, ZRValue(3), u"[Cyan]*x0", result, &color,
                                     isLongerThanFour, ZRLength(9.0F), 2, 3, &calls);
        EXPECT_EQ(outcome, number > 9999 ? -3 : 0);
        EXPECT_EQ(utf8(result), number > 9999 ? "###" : "1234");
        EXPECT_EQ(int{color}, 127);
    }
    EXPECT_EQ(calls, 2);
}

TEST(XlsFormatString, WalksSectionsOfTheCaller) {
    const XlsFormatString formats;
    FMT section;
    section.compiled = u"\\-0/8,#\"open";
    section.intPlaces = section.valueSign = 2;
    UnicodeString result;
    EXPECT_EQ(formats.fmtnumN(&section, -12, ZRValue(99), result, nullptr, {}, 0, 0, nullptr), 0);
    EXPECT_EQ(utf8(result), "--1/2open");
    EXPECT_EQ(section.signState, 0);
    section.compiled = u"D2*";
    EXPECT_EQ(formats.fmtnumD(&section, 1e9, ZRValue(2), result, nullptr, {}, 0, 0, nullptr), -3);
    EXPECT_EQ(utf8(result), "##");
}

// Every thread has formats of its own, more of them than are remembered.
TEST(XlsFormatString, ThreadsFormatAtOnce) {
    inThreads(4, [](int thread) {
        for (int round = 0; round < 2000; ++round) {
            const std::string literal = std::to_string(round % 50) + "." + std::to_string(thread);
            const UnicodeString format = text("\"" + literal + "\"0");
            EXPECT_EQ(utf8(XlsFormatString().FormatString(format, 7)), literal + "7");
        }
    });
}

}  // namespace
}  // namespace ZroCommon::testing
