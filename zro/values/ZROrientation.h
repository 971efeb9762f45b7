#pragma once

#include "zro/foundation/Export.h"
#include "zro/values/ZRValue.h"

namespace ZroCommon {

/// A turn of a box counter-clockwise: always 0, 90, 180 or 270 degrees.
class ZRO_API ZROrientation {
public:
    ZROrientation() = default;
    /// To the nearest quarter turn, halves away from zero, and any number of turns: 45 and 450 are
    /// 90, -45 is 270.
    ZROrientation(int degrees) : m_degrees(nearestQuarter(degrees)) {}
    /// By `getIntegerValue`.
    ZROrientation(const ZRValue& value) : ZROrientation(value.getIntegerValue()) {}

    operator int() const { return m_degrees; }
    /// An integer without a unit.
    operator ZRValue() const { return m_degrees; }

    /// A quarter turn one way or the other.
    bool isPerpendicular() const { return m_degrees == 90 || m_degrees == 270; }

private:
    static int nearestQuarter(int degrees) {
        const long long moved = degrees < 0 ? degrees - 45LL : degrees + 45LL;
        return static_cast<int>(static_cast<unsigned long long>(moved / 90) & 3U) * 90;
    }

    int m_degrees = 0;
};

}  // namespace ZroCommon
