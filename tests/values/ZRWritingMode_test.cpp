#include "zro/values/ZRWritingMode.h"

#include <limits>

#include "tests/support/Test.h"

namespace ZroCommon::testing {
namespace {

std::string described(ZRWritingMode mode) {
    std::string all;
    for (const ZRName name : {mode.getName(), mode.getIPDirection(), mode.getBPDirection(),
                              mode.getShiftDirection(), mode.getPagingDirection()}) {
        all += (all.empty() ? "" : " ") + utf8(name.toString());
    }
    return all;
}

TEST(ZRWritingMode, HasDirections) {
    const char* rows[] = {
        "lr-tb left-to-right top-to-bottom bottom-to-top left-to-right",
        "rl-tb right-to-left top-to-bottom bottom-to-top right-to-left",
        "tb-rl top-to-bottom right-to-left left-to-right right-to-left",
        "bt-rl bottom-to-top right-to-left left-to-right right-to-left",
        "lr-bt left-to-right bottom-to-top bottom-to-top left-to-right",
        "rl-bt right-to-left bottom-to-top bottom-to-top right-to-left",
        "tb-lr top-to-bottom left-to-right right-to-left left-to-right",
        "bt-lr bottom-to-top left-to-right right-to-left left-to-right",
    };
    for (int index = 0; index < 8; ++index) {
        const ZRWritingMode mode(index);
        EXPECT_EQ(described(mode), rows[index]);
        EXPECT_EQ(ZRWritingMode(mode.getName()).getIndex(), index);
        const ZRValue value = mode;
        EXPECT_EQ(ZRWritingMode(value).getIndex(), index);
    }
    for (const int index : {8, -1, std::numeric_limits<int>::min()}) {
        EXPECT_EQ(described(index), rows[0]) << index;
        EXPECT_EQ(ZRWritingMode(index).getIndex(), index);
    }
}

TEST(ZRWritingMode, ReadsShortNames) {
    EXPECT_EQ(ZRWritingMode(ZRN_rl).getIndex(), 1);
    EXPECT_EQ(ZRWritingMode(ZRN_tb).getIndex(), 2);
    EXPECT_EQ(ZRWritingMode(ZRN_lr).getIndex(), 0);
    EXPECT_EQ(ZRWritingMode(ZRN_inherit).getIndex(), 0);
    EXPECT_EQ(ZRWritingMode(ZRValue(text("bt-lr"))).getIndex(), 7);
    EXPECT_EQ(ZRWritingMode(ZRValue(5)).getIndex(), 0);
}

TEST(ZRWritingMode, JoinsLinesAndCharacters) {
    const Rows<const char*, int> lines = {{"lr-tb", 0}, {"rl-tb", 0}, {"top-to-bottom", 0},
                                          {"tb-rl", 2}, {"bt-rl", 2}, {"right-to-left", 2},
                                          {"lr-bt", 4}, {"rl-bt", 4}, {"bottom-to-top", 4},
                                          {"tb-lr", 6}, {"bt-lr", 6}, {"left-to-right", 6}};
    for (const auto& [mode, even] : lines) {
        const std::string odd = even % 4 == 0 ? "right-to-left" : "bottom-to-top";
        for (const char* direction : {"right-to-left", "bottom-to-top", "rtl", "ltr", ""}) {
            const bool isOdd = direction == odd || direction == std::string("rtl");
            EXPECT_EQ(ZRWritingMode(text(mode), text(direction)).getIndex(), even + isOdd)
                << mode << " " << direction;
        }
    }
    EXPECT_EQ(ZRWritingMode(ZRN_rl, ZRN_rtl).getIndex(), 0);
}

TEST(ZRWritingMode, AnswersByBits) {
    const auto modesWhere = [](bool (ZRWritingMode::*holds)() const) {
        std::string indexes;
        for (int index = 0; index < 8; ++index) {
            indexes += (ZRWritingMode(index).*holds)() ? std::to_string(index) : "";
        }
        return indexes;
    };
    EXPECT_EQ(modesWhere(&ZRWritingMode::isLTR), "04");
    EXPECT_EQ(modesWhere(&ZRWritingMode::isRTL), "15");
    EXPECT_EQ(modesWhere(&ZRWritingMode::isTTB), "26");
    EXPECT_EQ(modesWhere(&ZRWritingMode::isBTT), "37");
    EXPECT_EQ(modesWhere(&ZRWritingMode::isRtlOrBtt), "1357");
    EXPECT_EQ(modesWhere(&ZRWritingMode::isVerticalText), "2367");
    EXPECT_EQ(modesWhere(&ZRWritingMode::isBPDirLtrOrBtt), "4567");
    EXPECT_EQ(modesWhere(&ZRWritingMode::isBPDirRtlOrBtt), "2345");
}

TEST(ZRWritingMode, CrossesOthers) {
    const ZRWritingMode horizontal(ZRN_rl_tb);
    const ZRWritingMode vertical(ZRN_tb_lr);
    EXPECT_TRUE(horizontal.isPerpendicularTo(0, 90));
    EXPECT_TRUE(vertical.isPerpendicularTo(2, 270));
    EXPECT_FALSE(horizontal.isPerpendicularTo(0, 180));
    EXPECT_TRUE(horizontal.isPerpendicularTo(vertical, 0));
    EXPECT_TRUE(vertical.isPerpendicularTo(horizontal, 180));
    EXPECT_FALSE(vertical.isPerpendicularTo(horizontal, 90));
}

TEST(ZRWritingMode, TurnsLeftAndRightIntoPages) {
    for (int index = 0; index < 8; ++index) {
        const ZRWritingMode mode(index);
        const bool isFromRight = index == 1 || index == 2 || index == 3 || index == 5;
        EXPECT_EQ(mode.leftRight2oddEven(ZRN_left), isFromRight ? ZRN_odd : ZRN_even) << index;
        EXPECT_EQ(mode.leftRight2oddEven(ZRN_right), isFromRight ? ZRN_even : ZRN_odd) << index;
        for (const ZRNameEnum name : {ZRN_left, ZRN_right, ZRN_auto}) {
            EXPECT_EQ(mode.oddEven2leftRight(mode.leftRight2oddEven(name)), name) << index;
        }
    }
}

TEST(ZROrientation, IsTheNearestQuarterTurn) {
    for (int quarter = -8; quarter <= 8; ++quarter) {
        for (const int off : {-44, 0, 44}) {
            const int degrees = quarter * 90 + off;
            EXPECT_EQ(ZROrientation(degrees), (quarter + 8) % 4 * 90) << degrees;
            EXPECT_EQ(ZROrientation(ZRValue(degrees)), (quarter + 8) % 4 * 90) << degrees;
        }
    }
    EXPECT_EQ(ZROrientation(45), 90) << "halves go away from zero";
    EXPECT_EQ(ZROrientation(-45), 270);
    EXPECT_EQ(ZROrientation(std::numeric_limits<int>::max()), 90);
    EXPECT_EQ(ZROrientation(std::numeric_limits<int>::min()), 270);
    EXPECT_EQ(ZROrientation(ZRValue(89.5F, ZRValueUnitDeg)), 90);
    EXPECT_EQ(ZROrientation(ZRValue(ZRN_auto)), 0);
    const ZRValue value = ZROrientation(90);
    EXPECT_TRUE(value.isNumber() && value.getIntegerValue() == 90);
}

}  // namespace
}  // namespace ZroCommon::testing
