#include "zro/values/internal/OpenParameters.h"

#include <array>
#include <optional>

#include <unicode/locid.h>

#include "zro/values/internal/ValueReader.h"

namespace ZroCommon::internal {
namespace {

// The fields of an argument, parted by commas.
class Fields {
public:
    explicit Fields(const UnicodeString& argument) : m_reader(argument) {}

    /// The next field, or nothing behind the last one.
    std::optional<UnicodeString> next() {
        UnicodeString field;
        m_reader.nextSeparated(u',', field);
        return m_reader.token().kind == TokenKind::kEnd ? std::optional<UnicodeString>() : field;
    }

    /// The next field as points: a length or a plain number; anything else is 0.
    std::optional<ZRValue> nextCoordinate() {
        const auto field = next();
        if (!field) {
            return {};
        }
        const ZRValue value = ZRValue::parse(*field);
        ZRLength points = value.getLengthValue();
        if (points.isAuto()) {
            points = value.getRealValue(ZRValueUnitNumber);
        }
        return ZRValue(points.isAuto() ? ZRLength() : points);
    }

    /// Sets the item if there is a field for it.
    void readInto(ZRValue& target, ZRName item) {
        if (const auto coordinate = nextCoordinate()) {
            target.setNamedItem(item, *coordinate);
        }
    }

private:
    ValueReader m_reader;
};

void readPage(const UnicodeString& argument, ZRValue& target) {
    const int32_t hyphen = argument.indexOf(u'-', 1);  // one at the start is a sign
    const auto page = [](const UnicodeString& text) {
        return ZRValue(ZRValue::parse(text).getIntegerValue());
    };
    if (hyphen < 0) {
        target.setNamedItem(ZRN_page, page(argument));
        return;
    }
    target.setNamedItem(ZRN_page, page(argument.tempSubString(0, hyphen)));
    if (hyphen + 1 < argument.length()) {
        target.setNamedItem(ZRN_last_page, page(argument.tempSubString(hyphen + 1)));
    }
}

void readView(const UnicodeString& argument, ZRValue& target) {
    Fields fields(argument);
    UnicodeString view = fields.next().value_or(UnicodeString());
    const ZRValue name = ZRValue::parse(view.toLower(icu::Locale::getRoot()));
    if (!isFitName(name) || name.getNameValue() == ZRN_fitr) {
        return;
    }
    target.setNamedItem(ZRN_view, name);
    switch (name.getNameValue()) {
    case ZRN_fith:
    case ZRN_fitbh: fields.readInto(target, ZRN_top); break;
    case ZRN_fitv:
    case ZRN_fitbv: fields.readInto(target, ZRN_left); break;
    default: break;
    }
}

void readViewRect(const UnicodeString& argument, ZRValue& target) {
    static constexpr auto kItems = std::to_array({ZRN_left, ZRN_top, ZRN_width, ZRN_height});
    Fields fields(argument);
    std::array<ZRValue, kItems.size()> sides;
    for (ZRValue& side : sides) {
        side = fields.nextCoordinate().value_or(ZRValue(ZRLength()));
    }
    if (!(sides[2].getLengthValue() > 0 && sides[3].getLengthValue() > 0)) {
        return;
    }
    target.setNamedItem(ZRN_view, ZRN_viewrect);
    for (std::size_t index = 0; index < kItems.size(); ++index) {
        target.setNamedItem(kItems[index], sides[index]);
    }
}

void readZoom(const UnicodeString& argument, ZRValue& target) {
    Fields fields(argument);
    const ZRValue factor = ZRValue::parse(fields.next().value_or(UnicodeString()));
    const float zoom = factor.getRealValue(ZRValueUnitNumber);
    if (!(zoom > 0)) {
        return;
    }
    target.setNamedItem(ZRN_zoom, ZRValue(zoom, ZRValueUnitNumber));
    fields.readInto(target, ZRN_left);
    fields.readInto(target, ZRN_top);
    target.setNamedItem(ZRN_view, ZRN_xyz);
}

void apply(const Parameter& parameter, ZRValue& target) {
    switch (parameter.key) {
    case ZRN_nameddest:
        if (!parameter.argument.isEmpty()) {
            target.setNamedItem(ZRN_nameddest, ZRName(parameter.argument));
        }
        break;
    case ZRN_page: readPage(parameter.argument, target); break;
    case ZRN_view: readView(parameter.argument, target); break;
    case ZRN_viewrect: readViewRect(parameter.argument, target); break;
    case ZRN_zoom: readZoom(parameter.argument, target); break;
    default: break;
    }
}

}  // namespace

bool isFitName(const ZRValue& value) {
    const ZRNameEnum name = value.getNameValue();
    return name >= ZRN_fit && name <= ZRN_fitv;
}

bool readParameter(const UnicodeString& item, Parameter& parameter) {
    const int32_t equals = item.indexOf(u'=');
    if (equals <= 0) {
        return false;
    }
    UnicodeString key = item.tempSubString(0, equals);
    parameter.key = ZRName(key.toLower(icu::Locale::getRoot()));
    parameter.argument = UnicodeString(item, equals + 1);
    return true;
}

void readOpenParameters(const UnicodeString& fragment, ZRValue& target) {
    ValueReader reader(fragment);
    UnicodeString item;
    Parameter parameter;
    for (reader.nextSeparated(u'&', item); !item.isEmpty(); reader.nextSeparated(u'&', item)) {
        if (readParameter(item, parameter)) {
            apply(parameter, target);
        }
    }
}

}  // namespace ZroCommon::internal
