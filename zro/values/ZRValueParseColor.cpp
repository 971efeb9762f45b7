// The syntax of colours: CSS's #F00 and rgb(), and XSL's rgb-icc() with icc-color() behind a
// colour.

#include "zro/values/ZRValue.h"

#include <algorithm>
#include <optional>

#include "zro/values/ZRColor.h"
#include "zro/values/internal/ColorForm.h"
#include "zro/values/internal/TerminatedText.h"
#include "zro/values/internal/ValueReader.h"

namespace ZroCommon {
namespace {

using internal::TokenKind;
using internal::ValueReader;

// In what follows a colour is a value, and null where the text is none.

bool skipOpening(ValueReader& reader) {
    return reader.skipSeparator(u'(');
}

ZRValue closed(ValueReader& reader, const ZRValue& color) {
    return reader.skipSeparator(u')') ? color : ZRValue();
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

ZRValue readChannels(ValueReader& reader) {
    unsigned int rgb = 0;
    for (int index = 0; index < 3; ++index) {
        int channel = 0;
        if (!readChannel(reader, channel)) {
            return {};
        }
        rgb = rgb << 8U | static_cast<unsigned int>(std::clamp(channel, 0, 255));
    }
    ZRValue color(static_cast<int>(rgb));
    color.setUnitType(ZRValueUnitColor);
    return color;
}

ZRValue readForm(ValueReader& reader, const ZRValue& rgb) {
    using Color = std::optional<ZRColor>;
    const Color color =
        internal::readColorForm(reader, rgb.isNull() ? Color() : Color(rgb.getColorValue()));
    return closed(reader, color ? ZRValue(*color) : ZRValue());
}

// What may stand behind a colour: nothing, or its form.
ZRValue readRest(ValueReader& reader, const ZRValue& rgb, bool extended) {
    if (rgb.isNull() || reader.isAtEnd()) {
        return rgb;
    }
    if (!extended || reader.nextValue().getNameValue() != ZRN_icc_color || !skipOpening(reader)) {
        return {};
    }
    return readForm(reader, rgb);
}

ZRValue readIccFunction(ValueReader& reader) {
    if (reader.scanSeparator(u'#')) {
        return readForm(reader, {});
    }
    const ZRValue rgb = readChannels(reader);
    return rgb.isNull() ? rgb : readForm(reader, rgb);
}

ZRValue readFunction(ValueReader& reader, ZRName name, bool extended) {
    switch (name) {
    case ZRN_rgb: {
        const ZRValue rgb = readChannels(reader);
        return readRest(reader, closed(reader, rgb), extended);
    }
    case ZRN_rgb_icc: return readIccFunction(reader);
    case ZRN_icc_color: return extended ? readForm(reader, {}) : ZRValue();
    default: return {};
    }
}

ZRValue readNamed(ValueReader& reader, ZRName name, bool extended) {
    if (skipOpening(reader)) {
        return readFunction(reader, name, extended);
    }
    if (!extended) {
        return {};
    }
    const ZRColor keyword(name);
    return keyword.isInvalid() ? ZRValue() : readRest(reader, ZRValue(keyword), extended);
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
    ZRValue color;
    if (kind == TokenKind::kName) {
        color = readNamed(reader, value.getNameValue(), extended);
    } else if (kind == TokenKind::kColor) {
        color = readRest(reader, value, extended);
    }
    if (!color.isNull() && reader.isAtEnd()) {
        return color;
    }
    return ZRValue(text.isBogus() ? UnicodeString() : text);
}

}  // namespace ZroCommon
