// The syntax of colours: CSS's #F00 and rgb(), and XSL's rgb-icc() with icc-color() behind a
// colour.

#include "zro/values/ZRValue.h"

#include <optional>

#include "zro/values/ZRColor.h"
#include "zro/values/internal/ColorForm.h"
#include "zro/values/internal/TerminatedText.h"
#include "zro/values/internal/ValueReader.h"

namespace ZroCommon {
namespace {

using internal::TokenKind;
using internal::ValueReader;
using Color = std::optional<ZRColor>;

bool skipOpening(ValueReader& reader) {
    return reader.skipSeparator(u'(');
}

bool skipClosing(ValueReader& reader) {
    return reader.skipSeparator(u')');
}

// A channel from 0 to 255, or a percentage of that; any number does, whatever its unit.
std::optional<int> readChannel(ValueReader& reader) {
    const ZRValue value = reader.nextSigned();
    if (reader.token().kind != TokenKind::kNumber) {
        return {};
    }
    reader.skipSeparator(u',');
    if (value.isPercentage()) {
        const float share = value.getRealValue(ZRValueUnitPercent) / 100;
        return ZRValue(share * 255, ZRValueUnitNumber).getIntegerValue();
    }
    return value.getIntegerValue();
}

Color readChannels(ValueReader& reader) {
    const auto r = readChannel(reader);
    const auto g = r ? readChannel(reader) : r;
    const auto b = g ? readChannel(reader) : g;
    return b ? Color(ZRColor(*r, *g, *b)) : Color();
}

// What may stand behind a colour: nothing, or its form.
Color readRest(ValueReader& reader, const Color& rgb, bool extended) {
    if (!rgb || reader.isAtEnd()) {
        return rgb;
    }
    if (!extended || reader.nextValue().getNameValue() != ZRN_icc_color || !skipOpening(reader)) {
        return {};
    }
    const Color color = internal::readColorForm(reader, rgb);
    return skipClosing(reader) ? color : Color();
}

Color readRgbFunction(ValueReader& reader, bool extended) {
    const Color rgb = readChannels(reader);
    return skipClosing(reader) ? readRest(reader, rgb, extended) : Color();
}

Color readIccFunction(ValueReader& reader, bool hasRGB) {
    const Color rgb = hasRGB ? readChannels(reader) : Color();
    if (hasRGB && !rgb) {
        return {};
    }
    const Color color = internal::readColorForm(reader, rgb);
    return skipClosing(reader) ? color : Color();
}

Color readFunction(ValueReader& reader, ZRName name, bool extended) {
    switch (name) {
    case ZRN_rgb: return readRgbFunction(reader, extended);
    case ZRN_rgb_icc: return readIccFunction(reader, !reader.scanSeparator(u'#'));
    case ZRN_icc_color: return extended ? readIccFunction(reader, false) : Color();
    default: return {};
    }
}

Color readNamed(ValueReader& reader, ZRName name, bool extended) {
    if (skipOpening(reader)) {
        return readFunction(reader, name, extended);
    }
    if (!extended) {
        return {};
    }
    const ZRColor keyword(name);
    return keyword.isInvalid() ? Color() : readRest(reader, keyword, extended);
}

}  // namespace

ZRValue ZRValue::parseColor(const UnicodeString& text, bool extended) {
    const internal::TerminatedText terminated(text);
    ValueReader reader(terminated.data());
    ZRValue value = reader.nextSigned();
    const int kind = reader.token().kind;
    const bool isWhole = reader.isAtEnd();
    if (isWhole && (kind == TokenKind::kName || kind == TokenKind::kColor)) {
        return value;
    }
    Color color;
    if (kind == TokenKind::kName) {
        color = readNamed(reader, value.getNameValue(), extended);
    } else if (kind == TokenKind::kColor) {
        color = readRest(reader, value.getColorValue(), extended);
    }
    if (color && reader.isAtEnd()) {
        return ZRValue(*color);
    }
    return ZRValue(text.isBogus() ? UnicodeString() : text);
}

}  // namespace ZroCommon
