#pragma once

namespace ZroCommon {

/// A point of the plane, or the distance of two, in `float` or `ZRLength`.
template <class T>
struct ZRPointT {
    T x{};
    T y{};

    bool operator==(const ZRPointT& other) const { return x == other.x && y == other.y; }
};

}  // namespace ZroCommon
