#pragma once

#include "zro/foundation/Export.h"
#include "zro/values/ZROrientation.h"
#include "zro/values/ZRValue.h"
#include "zro/vocabulary/ZRName.h"

namespace ZroCommon {

/// A writing mode: the directions of characters and of lines, as an index from 0 to 7.
///
/// 0 lr-tb, 1 rl-tb, 2 tb-rl, 3 bt-rl, 4 lr-bt, 5 rl-bt, 6 tb-lr, 7 bt-lr. Bit 0 is set where
/// characters run from right to left or upwards, bit 1 in vertical text, bit 2 where lines run from
/// left to right or upwards. A small value: copy it freely. The index is not checked; one out of
/// range has the names and directions of lr-tb.
class ZRO_API ZRWritingMode {
public:
    ZRWritingMode() = default;
    ZRWritingMode(int index) : m_index(index) {}
    /// One of the eight names, or "rl" or "tb" for the first mode that begins so. Any other name,
    /// "lr" too, is lr-tb.
    ZRWritingMode(ZRName name);
    ZRWritingMode(ZRNameEnum name) : ZRWritingMode(ZRName(name)) {}
    ZRWritingMode(const ZRValue& value) : ZRWritingMode(value.toZRName()) {}
    /// From a writing mode or the direction of lines, of which the latter counts, and the direction
    /// of characters: "rtl" or a direction such as "right-to-left".
    ZRWritingMode(ZRName mode, ZRName direction);

    int getIndex() const { return m_index; }
    ZRName getName() const;
    operator ZRNameEnum() const { return getName(); }
    operator ZRValue() const { return getName(); }

    /// Where characters run: "left-to-right" and the like.
    ZRName getIPDirection() const;
    /// Where lines run.
    ZRName getBPDirection() const;
    /// Where a positive baseline shift moves.
    ZRName getShiftDirection() const;
    /// Where the pages of a spread follow each other.
    ZRName getPagingDirection() const;

    bool isLTR() const { return m_index == 0 || m_index == 4; }
    bool isRTL() const { return m_index == 1 || m_index == 5; }
    bool isTTB() const { return m_index == 2 || m_index == 6; }
    bool isBTT() const { return m_index == 3 || m_index == 7; }
    bool isRtlOrBtt() const { return bit(0); }
    bool isVerticalText() const { return bit(1); }
    /// Lines run from left to right, or upwards.
    bool isBPDirLtrOrBtt() const { return bit(2); }
    /// Lines run from right to left, or upwards.
    bool isBPDirRtlOrBtt() const { return bit(2) != bit(1); }

    /// Whether the lines of a box of this mode, turned by `orientation`, cross those of `other`.
    bool isPerpendicularTo(ZRWritingMode other, ZROrientation orientation) const {
        return (isVerticalText() == other.isVerticalText()) == orientation.isPerpendicular();
    }

    /// "left" and "right" as pages of a spread, "odd" or "even". Any other name stays.
    ZRName leftRight2oddEven(ZRName name) const;
    /// The other way about.
    ZRName oddEven2leftRight(ZRName name) const;

private:
    bool bit(unsigned number) const { return (static_cast<unsigned>(m_index) >> number & 1U) != 0; }
    bool isPagingFromRight() const { return getPagingDirection() == ZRN_right_to_left; }

    int m_index = 0;
};

}  // namespace ZroCommon
