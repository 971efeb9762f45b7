#include "zro/values/ZRWritingMode.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace ZroCommon {
namespace {

struct Row {
    ZRNameEnum name;
    ZRNameEnum characters;
    ZRNameEnum lines;
    ZRNameEnum shift;
    ZRNameEnum paging;
};

// In index order.
constexpr auto kRows = std::to_array({
    Row{ZRN_lr_tb, ZRN_left_to_right, ZRN_top_to_bottom, ZRN_bottom_to_top, ZRN_left_to_right},
    Row{ZRN_rl_tb, ZRN_right_to_left, ZRN_top_to_bottom, ZRN_bottom_to_top, ZRN_right_to_left},
    Row{ZRN_tb_rl, ZRN_top_to_bottom, ZRN_right_to_left, ZRN_left_to_right, ZRN_right_to_left},
    Row{ZRN_bt_rl, ZRN_bottom_to_top, ZRN_right_to_left, ZRN_left_to_right, ZRN_right_to_left},
    Row{ZRN_lr_bt, ZRN_left_to_right, ZRN_bottom_to_top, ZRN_bottom_to_top, ZRN_left_to_right},
    Row{ZRN_rl_bt, ZRN_right_to_left, ZRN_bottom_to_top, ZRN_bottom_to_top, ZRN_right_to_left},
    Row{ZRN_tb_lr, ZRN_top_to_bottom, ZRN_left_to_right, ZRN_right_to_left, ZRN_left_to_right},
    Row{ZRN_bt_lr, ZRN_bottom_to_top, ZRN_left_to_right, ZRN_right_to_left, ZRN_left_to_right},
});

const Row& rowOf(int index) {
    const auto row = static_cast<std::size_t>(index);
    return kRows[row < kRows.size() ? row : 0];
}

int indexOf(ZRNameEnum name) {
    switch (name) {
    case ZRN_rl: return 1;
    case ZRN_tb: return 2;
    default: break;
    }
    const auto* row = std::find_if(kRows.begin(), kRows.end(),
                                   [name](const Row& candidate) { return candidate.name == name; });
    return row == kRows.end() ? 0 : static_cast<int>(row - kRows.begin());
}

int indexOf(ZRNameEnum mode, ZRNameEnum direction) {
    const bool isRtl = direction == ZRN_rtl;
    const int fromRight = isRtl || direction == ZRN_right_to_left ? 1 : 0;
    const int upwards = isRtl || direction == ZRN_bottom_to_top ? 1 : 0;
    switch (mode) {
    case ZRN_rl_tb:
    case ZRN_lr_tb:
    case ZRN_top_to_bottom: return 0 + fromRight;
    case ZRN_tb_rl:
    case ZRN_bt_rl:
    case ZRN_right_to_left: return 2 + upwards;
    case ZRN_rl_bt:
    case ZRN_lr_bt:
    case ZRN_bottom_to_top: return 4 + fromRight;
    case ZRN_tb_lr:
    case ZRN_bt_lr:
    case ZRN_left_to_right: return 6 + upwards;
    default: return 0;
    }
}

}  // namespace

ZRWritingMode::ZRWritingMode(ZRName name) : m_index(indexOf(name)) {}

ZRWritingMode::ZRWritingMode(ZRName mode, ZRName direction) : m_index(indexOf(mode, direction)) {}

ZRName ZRWritingMode::getName() const {
    return rowOf(m_index).name;
}

ZRName ZRWritingMode::getIPDirection() const {
    return rowOf(m_index).characters;
}

ZRName ZRWritingMode::getBPDirection() const {
    return rowOf(m_index).lines;
}

ZRName ZRWritingMode::getShiftDirection() const {
    return rowOf(m_index).shift;
}

ZRName ZRWritingMode::getPagingDirection() const {
    return rowOf(m_index).paging;
}

ZRName ZRWritingMode::leftRight2oddEven(ZRName name) const {
    switch (name) {
    case ZRN_left: return isPagingFromRight() ? ZRN_odd : ZRN_even;
    case ZRN_right: return isPagingFromRight() ? ZRN_even : ZRN_odd;
    default: return name;
    }
}

ZRName ZRWritingMode::oddEven2leftRight(ZRName name) const {
    switch (name) {
    case ZRN_odd: return isPagingFromRight() ? ZRN_left : ZRN_right;
    case ZRN_even: return isPagingFromRight() ? ZRN_right : ZRN_left;
    default: return name;
    }
}

}  // namespace ZroCommon
