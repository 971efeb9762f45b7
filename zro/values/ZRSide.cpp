#include "zro/values/ZRSide.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace ZroCommon {
namespace {

// In index order. A side and its opposite are neighbours, so flipping bit 0 swaps them.
constexpr auto kSides = std::to_array(
    {ZRN_before, ZRN_after, ZRN_start, ZRN_end, ZRN_top, ZRN_bottom, ZRN_left, ZRN_right});

using FourSides = std::array<ZRNameEnum, 4>;

// The way round the box, counter-clockwise.
constexpr FourSides kCycle = {ZRN_top, ZRN_left, ZRN_bottom, ZRN_right};

// Where before, after, start and end lie, by the index of the writing mode.
constexpr auto kPlaces = std::to_array({
    FourSides{ZRN_top, ZRN_bottom, ZRN_left, ZRN_right},
    FourSides{ZRN_top, ZRN_bottom, ZRN_right, ZRN_left},
    FourSides{ZRN_right, ZRN_left, ZRN_top, ZRN_bottom},
    FourSides{ZRN_right, ZRN_left, ZRN_bottom, ZRN_top},
    FourSides{ZRN_bottom, ZRN_top, ZRN_left, ZRN_right},
    FourSides{ZRN_bottom, ZRN_top, ZRN_right, ZRN_left},
    FourSides{ZRN_left, ZRN_right, ZRN_top, ZRN_bottom},
    FourSides{ZRN_left, ZRN_right, ZRN_bottom, ZRN_top},
});

const FourSides& placesIn(ZRWritingMode mode) {
    const auto index = static_cast<std::size_t>(mode.getIndex());
    return kPlaces[index < kPlaces.size() ? index : 0];
}

ZRSide quarterTurned(ZRSide side, std::size_t steps) {
    const auto* here = std::find(kCycle.begin(), kCycle.end(), ZRNameEnum{side});
    if (here == kCycle.end()) {
        return side;  // relative sides turn with the text
    }
    const auto position = static_cast<std::size_t>(here - kCycle.begin());
    return kCycle[(position + steps) % kCycle.size()];
}

// The properties of a family, by the index of their side.
struct Family {
    ZRNameEnum base;
    std::array<ZRNameEnum, kSides.size()> names;
};

constexpr auto kFamilies = std::to_array({
    Family{ZRN_border_color,
           {ZRN_border_before_color, ZRN_border_after_color, ZRN_border_start_color,
            ZRN_border_end_color, ZRN_border_top_color, ZRN_border_bottom_color,
            ZRN_border_left_color, ZRN_border_right_color}},
    Family{ZRN_border_style,
           {ZRN_border_before_style, ZRN_border_after_style, ZRN_border_start_style,
            ZRN_border_end_style, ZRN_border_top_style, ZRN_border_bottom_style,
            ZRN_border_left_style, ZRN_border_right_style}},
    Family{ZRN_border_width,
           {ZRN_border_before_width, ZRN_border_after_width, ZRN_border_start_width,
            ZRN_border_end_width, ZRN_border_top_width, ZRN_border_bottom_width,
            ZRN_border_left_width, ZRN_border_right_width}},
    Family{ZRN_border_precedence,
           {ZRN_border_before_precedence, ZRN_border_after_precedence, ZRN_border_start_precedence,
            ZRN_border_end_precedence}},
    Family{ZRN_padding,
           {ZRN_padding_before, ZRN_padding_after, ZRN_padding_start, ZRN_padding_end,
            ZRN_padding_top, ZRN_padding_bottom, ZRN_padding_left, ZRN_padding_right}},
    Family{ZRN_margin,
           {ZRN_EMPTY, ZRN_EMPTY, ZRN_EMPTY, ZRN_EMPTY, ZRN_margin_top, ZRN_margin_bottom,
            ZRN_margin_left, ZRN_margin_right}},
    Family{ZRN_space, {ZRN_space_before, ZRN_space_after, ZRN_space_start, ZRN_space_end}},
    Family{ZRN_position,
           {ZRN_EMPTY, ZRN_EMPTY, ZRN_EMPTY, ZRN_EMPTY, ZRN_top_position, ZRN_bottom_position,
            ZRN_left_position, ZRN_right_position}},
    Family{ZRN_region, {ZRN_region_before, ZRN_region_after, ZRN_region_start, ZRN_region_end}},
});

// Family and side of a property by its number, from 1; 0 for all other names.
constexpr auto kParts = [] {
    std::array<std::uint8_t, ZRN_LAST_BUILTIN + 1> parts{};
    std::uint8_t part = 0;
    for (const Family& family : kFamilies) {
        for (const ZRNameEnum name : family.names) {
            ++part;
            if (name != ZRN_EMPTY) {
                parts[static_cast<std::size_t>(name)] = part;
            }
        }
    }
    return parts;
}();

struct Parts {
    ZRNameEnum base = ZRN_EMPTY;
    ZRNameEnum side = ZRN_EMPTY;
};

Parts partsOf(ZRNameEnum name) {
    const auto number = static_cast<std::size_t>(name);
    if (number >= kParts.size() || kParts[number] == 0) {
        return {};
    }
    const std::size_t part = kParts[number] - 1U;
    return {kFamilies[part / kSides.size()].base, kSides[part % kSides.size()]};
}

}  // namespace

ZRSide::ZRSide(int index) {
    const auto row = static_cast<std::size_t>(index);
    m_name = row < kSides.size() ? kSides[row] : ZRN_EMPTY;
}

int ZRSide::getIndex() const {
    const auto* side = std::find(kSides.begin(), kSides.end(), m_name);
    return side == kSides.end() ? -1 : static_cast<int>(side - kSides.begin());
}

ZRSide ZRSide::toOpposite() const {
    const int index = getIndex();
    return index < 0 ? ZRSide() : ZRSide(index ^ 1);
}

ZRSide ZRSide::toAbsolute(ZRWritingMode mode) const {
    if (isAbsolute()) {
        return *this;
    }
    const int index = getIndex();
    return index < 0 ? ZRSide() : ZRSide(placesIn(mode)[static_cast<std::size_t>(index)]);
}

ZRSide ZRSide::toRelative(ZRWritingMode mode) const {
    if (isRelative()) {
        return *this;
    }
    const FourSides& places = placesIn(mode);
    const auto* place = std::find(places.begin(), places.end(), m_name);
    return place == places.end() ? ZRSide() : ZRSide(static_cast<int>(place - places.begin()));
}

ZRSide ZRSide::rotate(ZROrientation orientation) const {
    switch (orientation) {
    case 90: return quarterTurned(*this, 1);
    case 180: return toOpposite();  // On purpose: unlike a quarter turn, relative sides swap too.
    case 270: return quarterTurned(*this, 3);
    default: return *this;
    }
}

ZRName ZRSide::concatName(ZRName base) const {
    const int index = getIndex();
    if (index < 0) {
        return {};
    }
    ZRNameEnum family = base;
    if (family == ZRN_margin || family == ZRN_space) {
        family = isAbsolute() ? ZRN_margin : ZRN_space;
    }
    for (const Family& candidate : kFamilies) {
        if (candidate.base == family) {
            return candidate.names[static_cast<std::size_t>(index)];
        }
    }
    return {};
}

ZRName ZRSide::getSideFromName(ZRName name) {
    return partsOf(name).side;
}

ZRName ZRSide::removeSideFromName(ZRName name) {
    return partsOf(name).base;
}

ZRName ZRSide::toRelativeName(ZRName name, ZRWritingMode mode) {
    bool isAlongLines = !mode.isVerticalText();
    switch (name) {
    case ZRN_width:
    case ZRN_min_width:
    case ZRN_max_width: break;
    case ZRN_height:
    case ZRN_min_height:
    case ZRN_max_height: isAlongLines = !isAlongLines; break;
    default: {
        const Parts parts = partsOf(name);
        return ZRSide(parts.side).toRelative(mode).concatName(parts.base);
    }
    }
    return isAlongLines ? ZRN_inline_progression_dimension : ZRN_block_progression_dimension;
}

ZRName ZRSide::toAbsoluteName(ZRName name, ZRWritingMode mode) {
    const bool isVertical = mode.isVerticalText();
    switch (name) {
    case ZRN_block_progression_dimension: return isVertical ? ZRN_width : ZRN_height;
    case ZRN_inline_progression_dimension: return isVertical ? ZRN_height : ZRN_width;
    default: break;
    }
    const Parts parts = partsOf(name);
    return ZRSide(parts.side).toAbsolute(mode).concatName(parts.base);
}

}  // namespace ZroCommon
