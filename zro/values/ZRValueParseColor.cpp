// The syntax of colours: CSS's #F00 and rgb(), and XSL's rgb-icc() with icc-color() behind a
// colour.

#include "zro/values/ZRValue.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "zro/foundation/internal/TextView.h"
#include "zro/values/ZRColor.h"
#include "zro/values/internal/ColorForm.h"
#include "zro/values/internal/ValueReader.h"

namespace ZroCommon {
namespace {

using internal::TokenKind;
using internal::ValueReader;

using RGB = std::optional<std::uint32_t>;

bool skipOpening(ValueReader& reader) {
    return reader.skipSeparator(u'(');
}

bool skipClosing(ValueReader& reader) {
    return reader.skipSeparator(u')');
}

// Reads a channel from 0 to 255, or a percentage of that; any number does, whatever its unit.
bool readChannel(ValueReader& reader, int& channel) {
    const ZRValue value = reader.nextSigned();
    if (reader.token().kind != TokenKind::kNumber) {
        return false;
    }
    reader.skipSeparator(u',');
    channel = value.isPercentage()
                  ? ZRValue(value.getRealValue(ZRValueUnitPercent) / 100 * 255, ZRValueUnitNumber)
                        .getIntegerValue()
                  : value.getIntegerValue();
    return true;
}

RGB readChannels(ValueReader& reader) {
    std::uint32_t rgb = 0;
    for (int index = 0; index < 3; ++index) {
        int channel = 0;
        if (!readChannel(reader, channel)) {
            return {};
        }
        rgb = rgb << 8U | static_cast<std::uint32_t>(std::clamp(channel, 0, 255));
    }
    return rgb;
}

// In what follows the result is null where the text is no colour.

// The arguments of a form, with the RGB that the source gives beside it.
ZRValue readForm(ValueReader& reader, RGB rgb) {
    using Color = std::optional<ZRColor>;
    const Color color = internal::readColorForm(reader, rgb ? Color(ZRColor(*rgb)) : Color());
    return color && skipClosing(reader) ? ZRValue(*color) : ZRValue();
}

// What may stand behind a colour: nothing, or its form.
ZRValue readRest(ValueReader& reader, std::uint32_t rgb, bool extended) {
    if (reader.isAtEnd()) {
        return internal::colorValue(rgb);
    }
    if (!extended || reader.nextValue().getNameValue() != ZRN_icc_color || !skipOpening(reader)) {
        return {};
    }
    return readForm(reader, rgb);
}

ZRValue readFunction(ValueReader& reader, ZRName name, bool extended) {
    if (name == ZRN_icc_color) {
        return extended ? readForm(reader, {}) : ZRValue();
    }
    if (name == ZRN_rgb_icc && reader.scanSeparator(u'#')) {
        return readForm(reader, {});
    }
    if (name != ZRN_rgb && name != ZRN_rgb_icc) {
        return {};
    }
    const RGB rgb = readChannels(reader);
    if (!rgb) {
        return {};
    }
    if (name == ZRN_rgb_icc) {
        return readForm(reader, rgb);
    }
    return skipClosing(reader) ? readRest(reader, *rgb, extended) : ZRValue();
}

ZRValue readNamed(ValueReader& reader, ZRName name, bool extended) {
    if (skipOpening(reader)) {
        return readFunction(reader, name, extended);
    }
    if (!extended) {
        return {};
    }
    const ZRColor keyword(name);
    return keyword.isInvalid() ? ZRValue() : readRest(reader, keyword.getRGB(), extended);
}

}  // namespace

ZRValue ZRValue::parseColor(const UnicodeString& text, bool extended) {
    const std::u16string_view units = internal::viewOf(text);
    if (const auto rgb = internal::wholeHexColor(units)) {
        return internal::colorValue(*rgb);
    }
    ValueReader reader(units);
    ZRValue value = reader.nextSigned();
    const int kind = reader.token().kind;
    if (kind == TokenKind::kColor) {
        value = readRest(reader, value.getColorValue().getRGB(), extended);
    } else if (kind != TokenKind::kName) {
        value = {};
    } else if (!reader.isAtEnd()) {
        value = readNamed(reader, value.getNameValue(), extended);
    }
    if (value.isNull() || !reader.isAtEnd()) {
        value = ZRValue(text.isBogus() ? UnicodeString() : text);
    }
    return value;
}

}  // namespace ZroCommon
