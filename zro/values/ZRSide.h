#pragma once

#include "zro/foundation/Export.h"
#include "zro/values/ZROrientation.h"
#include "zro/values/ZRValue.h"
#include "zro/values/ZRWritingMode.h"
#include "zro/vocabulary/ZRName.h"

namespace ZroCommon {

/// One side of a box, relative to the writing mode (before, after, start, end) or absolute on the
/// page (top, bottom, left, right).
///
/// A small value: copy it freely. A name that is no side is kept as it is and has index -1; every
/// question about it is answered with false or the empty name, but for quarter turns, which leave
/// it alone. Nothing throws.
class ZRO_API ZRSide {
public:
    ZRSide() = default;
    ZRSide(ZRName name) : m_name(name) {}
    ZRSide(ZRNameEnum name) : m_name(name) {}
    /// \param index  0 before, 1 after, 2 start, 3 end, 4 top, 5 bottom, 6 left, 7 right; any other
    ///               index gives the empty name.
    explicit ZRSide(int index);

    /// 0 to 7 in the order above, or -1 when the name is no side.
    int getIndex() const;
    ZRName getName() const { return m_name; }
    operator ZRNameEnum() const { return m_name; }
    operator ZRValue() const { return m_name; }

    bool isAbsolute() const { return getIndex() >= 4; }
    bool isRelative() const { return getIndex() >= 0 && !isAbsolute(); }
    /// Start or end.
    bool isInline() const { return m_name == ZRN_start || m_name == ZRN_end; }
    /// Before or after.
    bool isBlock() const { return m_name == ZRN_before || m_name == ZRN_after; }
    /// Left or right.
    bool isHorizontal() const { return m_name == ZRN_left || m_name == ZRN_right; }
    /// Top or bottom.
    bool isVertical() const { return m_name == ZRN_top || m_name == ZRN_bottom; }

    /// The side across the box: before and after, left and right, and so on.
    ZRSide toOpposite() const;
    /// The side on the page. An absolute side stays.
    ZRSide toAbsolute(ZRWritingMode mode) const;
    /// The side in the text. A relative side stays.
    ZRSide toRelative(ZRWritingMode mode) const;
    /// Where this side lies after the box is turned counter-clockwise.
    ZRSide rotate(ZROrientation orientation) const;

    /// The property of this side in a family: "border-top-color" for "border-color". The margins
    /// of relative sides are called "space-before" and so on, whether `base` is "margin" or
    /// "space". Empty where there is no such property.
    ZRName concatName(ZRName base) const;
    /// The side in the name of a property, "top" of "border-top-color".
    static ZRName getSideFromName(ZRName name);
    /// The family of a property, "border-color" of "border-top-color".
    static ZRName removeSideFromName(ZRName name);

    /// The name of a property as it reads relative to the writing mode, "space-before" for
    /// "margin-top", "inline-progression-dimension" for "width". Empty for a name without a side
    /// or dimension.
    static ZRName toRelativeName(ZRName name, ZRWritingMode mode);
    /// The other way about; minimum and maximum dimensions have one name only.
    static ZRName toAbsoluteName(ZRName name, ZRWritingMode mode);

private:
    ZRNameEnum m_name = ZRN_EMPTY;
};

}  // namespace ZroCommon
