#include "zro/values/internal/ColorForm.h"

#include <array>
#include <cstddef>
#include <string_view>

#include "zro/vocabulary/internal/SharedNames.h"

namespace ZroCommon::internal {
namespace {

using Color = std::optional<ZRColor>;

// Up to five numbers, which is as many as any form has.
struct Numbers {
    std::array<float, 5> values{};
    std::size_t count = 0;
};

// Up to the closing bracket. A percentage is a number of hundredths.
std::optional<Numbers> readNumbers(ValueReader& reader) {
    Numbers numbers;
    while (!reader.scanSeparator(u')')) {
        const ZRValue value = reader.nextValue();
        const bool isNumber = value.isNumber() || value.isPercentage();
        if (!isNumber || numbers.count == numbers.values.size()) {
            return {};
        }
        numbers.values[numbers.count++] = value.getRealValue(ZRValueUnitNumber);
        reader.skipSeparator(u',');
    }
    return numbers;
}

// The name of a form or profile, as it stands: "#CMYK" is no name to the lexer, which takes "#C"
// for a colour.
std::u16string_view readProfile(ValueReader& reader) {
    const std::u16string_view profile = reader.nextPlain(u",)");
    reader.skipSeparator(u',');
    return profile;
}

Color cmykColor(const Color& rgb, const Numbers& numbers) {
    const auto [c, m, y, k, more] = numbers.values;
    if (numbers.count != 4) {
        return {};
    }
    return rgb ? ZRColor(*rgb, c, m, y, k) : ZRColor(c, m, y, k);
}

Color grayColor(const Color& rgb, const Numbers& numbers) {
    if (numbers.count != 1) {
        return {};
    }
    return rgb ? ZRColor(*rgb, numbers.values[0]) : ZRColor(numbers.values[0]);
}

// The tint and the CMYK may be missing, the tint is 1 then.
ZRColor separationColor(const Color& rgb, const UnicodeString& name, const Numbers& numbers) {
    const auto [given, c, m, y, k] = numbers.values;
    const bool hasTint = numbers.count > 0;
    const bool hasCMYK = numbers.count > 1;
    const float tint = hasTint ? given : 1.0F;
    ZRColor color;
    if (hasCMYK) {
        color = rgb ? ZRColor(*rgb, name, tint, c, m, y, k) : ZRColor(name, tint, c, m, y, k);
    } else {
        color = rgb ? ZRColor(*rgb, name, tint) : ZRColor(name, tint);
    }
    color.adjustSeparationFlags(rgb.has_value(), hasTint, hasCMYK);
    return color;
}

Color readSeparation(ValueReader& reader, const Color& rgb) {
    const ZRValue name = reader.nextValue();
    if (!name.isName() && !name.isString()) {
        return {};
    }
    reader.skipSeparator(u',');
    const auto numbers = readNumbers(reader);
    return numbers ? Color(separationColor(rgb, name.getStringValue(), *numbers)) : Color();
}

Color readRegistration(ValueReader& reader, const Color& rgb) {
    const auto numbers = readNumbers(reader);
    return numbers ? Color(separationColor(rgb, u"All", *numbers)) : Color();
}

// A profile's colour for the screen, where the source gives none, by the number of its components.
ZRColor approximation(const Numbers& numbers) {
    const auto [a, b, c, d, more] = numbers.values;
    switch (numbers.count) {
    case 1: return {a};
    case 3: return ZRColor(1 - a, 1 - b, 1 - c, 0.0F);
    case 4: return {a, b, c, d};
    default: return {};
    }
}

Color profileColor(const Color& rgb, std::u16string_view profile, const Numbers& numbers) {
    const auto [a, b, c, d, more] = numbers.values;
    if (profile.empty() || numbers.count > 4) {
        return {};
    }
    const UnicodeString name(profile.data(), static_cast<int32_t>(profile.size()));
    ZRColor color(rgb ? *rgb : approximation(numbers), name, a, b, c, d);
    return color.isInvalid() ? Color() : color;
}

}  // namespace

Color readColorForm(ValueReader& reader, const Color& rgb) {
    const std::u16string_view profile = readProfile(reader);
    switch (findBuiltinName(profile)) {
    case ZRN_hash_SEPARATION:
    case ZRN_hash_SPOTCOLOR: return readSeparation(reader, rgb);
    case ZRN_hash_REGISTRATION: return readRegistration(reader, rgb);
    default: break;
    }
    const auto numbers = readNumbers(reader);
    if (!numbers) {
        return {};
    }
    switch (findBuiltinName(profile)) {
    case ZRN_hash_CMYK: return cmykColor(rgb, *numbers);
    case ZRN_hash_GRAYSCALE: return grayColor(rgb, *numbers);
    default: return profileColor(rgb, profile, *numbers);
    }
}

}  // namespace ZroCommon::internal
