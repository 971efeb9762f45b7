#include "zro/vocabulary/ZRNameList.h"

#include <array>

#include <gtest/gtest.h>

namespace ZroCommon {
namespace {

constexpr std::array kNames = {ZRN_before, ZRN_after, ZRN_before, ZRN_EMPTY, ZRN_start};

TEST(ZRNameList, FindsNames) {
    const ZRNameList list(kNames.data(), kNames.size());
    EXPECT_EQ(list.getCount(), 5);
    EXPECT_EQ(list.getItem(1), ZRN_after);
    EXPECT_EQ(list.indexOf(ZRN_before), 0);
    EXPECT_EQ(list.indexOf(ZRN_EMPTY), 3);
    EXPECT_EQ(list.indexOf(ZRN_end), -1);
    EXPECT_TRUE(list.hasItem(ZRN_start) && !list.hasItem(ZRN_end));
    for (const int index : {5, 1000000, -1}) {
        EXPECT_TRUE(list.getItem(index).isEmpty()) << index;
    }
}

TEST(ZRNameList, EndsAtAnEmptyNameWithoutACount) {
    const ZRNameList list(kNames.data());
    EXPECT_EQ(list.getCount(), 3);
    EXPECT_TRUE(list.getItem(3).isEmpty() && !list.hasItem(ZRN_start));
    for (const ZRNameList& none : {ZRNameList(), ZRNameList(nullptr), ZRNameList(nullptr, 5),
                                   ZRNameList(kNames.data(), -1)}) {
        EXPECT_EQ(none.getCount(), 0);
        EXPECT_EQ(none.indexOf(ZRN_before), -1);
    }
}

TEST(ZRNameListInstance, IsFilledItemByItem) {
    ZRNameListInstance list(3);
    EXPECT_EQ(list.indexOf(ZRN_EMPTY), 0);
    for (const int index : {2, 3, -1}) {
        list.setItem(ZRN_end, index);
    }
    EXPECT_EQ(list.indexOf(ZRN_end), 2);
    EXPECT_EQ(list.getCount(), 3);
    EXPECT_EQ(ZRNameListInstance(-1).getCount(), 0);
}

// On purpose: what was assigned is the other list's array, not a copy.
TEST(ZRNameListInstance, AssignmentSharesTheArray) {
    ZRNameListInstance source(2);
    ZRNameListInstance target(5);
    target = source;
    source.setItem(ZRN_end, 1);
    target.setItem(ZRN_start, 4);
    EXPECT_EQ(target.getCount(), 2);
    EXPECT_TRUE(target.hasItem(ZRN_end) && !target.hasItem(ZRN_start));
}

}  // namespace
}  // namespace ZroCommon
