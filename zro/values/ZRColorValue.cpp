// Colours as values, both ways: an integer RGB, or a map of it and of the form beside it.

#include "zro/values/ZRColor.h"

#include <array>

#include "zro/values/ZRNamedValueMap.h"
#include "zro/values/ZRValue.h"

namespace ZroCommon {
namespace {

constexpr auto kInks = std::to_array({ZRN_cyan, ZRN_magenta, ZRN_yellow, ZRN_black});

constexpr int kHasRGB = 1;
constexpr int kHasTint = 2;
constexpr int kHasCMYK = 4;

ZRValue number(float value) {
    return {value, ZRValueUnitNumber};
}

void setInks(ZRValue& form, float c, float m, float y, float k) {
    form.setNamedItem(ZRN_cyan, number(c));
    form.setNamedItem(ZRN_magenta, number(m));
    form.setNamedItem(ZRN_yellow, number(y));
    form.setNamedItem(ZRN_black, number(k));
}

ZRValue newForm() {
    ZRValue form;
    form.makeCompound();
    return form;
}

ZRValue cmykForm(const ZRColor& color) {
    ZRValue form = newForm();
    setInks(form, color.getC(), color.getM(), color.getY(), color.getK());
    return form;
}

ZRValue separationForm(const ZRColor& color) {
    ZRValue form = newForm();
    form.setNamedItem(ZRN_name, ZRValue(color.getSeparationColorName()));
    form.setNamedItem(ZRN_value, number(color.getSeparationTint()));
    setInks(form, color.getSeparationC(), color.getSeparationM(), color.getSeparationY(),
            color.getSeparationK());
    form.setNamedItem(ZRN_hash_SEPARATION, ZRValue((color.hasSeparationRGB() ? kHasRGB : 0)
                                                   | (color.hasSeparationTint() ? kHasTint : 0)
                                                   | (color.hasSeparationCMYK() ? kHasCMYK : 0)));
    return form;
}

ZRValue iccForm(const ZRColor& color) {
    ZRValue form = newForm();
    form.setNamedItem(ZRN_name, ZRValue(color.getICCColorProfileName()));
    setInks(form, color.getC(), color.getM(), color.getY(), color.getK());
    return form;
}

ZRValue formOf(const ZRColor& color) {
    switch (color.getProfileType()) {
    case ZRN_hash_CMYK: return cmykForm(color);
    case ZRN_hash_GRAYSCALE: return number(color.getGrayscale());
    case ZRN_hash_SEPARATION: return separationForm(color);
    default: return iccForm(color);
    }
}

// What is no number reads as 0.
float numberOf(const ZRValue& value) {
    return value.isNumeric() ? value.getRealValue(ZRValueUnitNone) : 0.0F;
}

using Inks = std::array<float, kInks.size()>;

Inks inksOf(const ZRValue& form) {
    Inks inks{};
    for (std::size_t index = 0; index < kInks.size(); ++index) {
        inks[index] = numberOf(form.getNamedItem(kInks[index]));
    }
    return inks;
}

ZRColor separationOf(const ZRColor& rgb, const ZRValue& form) {
    const auto [c, m, y, k] = inksOf(form);
    ZRColor color(rgb, form.getNamedItem(ZRN_name).getStringValue(),
                  numberOf(form.getNamedItem(ZRN_value)), c, m, y, k);
    const int flags = form.getNamedItem(ZRN_hash_SEPARATION).getIntegerValue();
    color.adjustSeparationFlags((flags & kHasRGB) != 0, (flags & kHasTint) != 0,
                                (flags & kHasCMYK) != 0);
    return color;
}

const ZRValue* findForm(const ZRNamedValueMap& map, ZRName form) {
    const ZRNamedValue* item = map.findNamedItem(form);
    return item != nullptr && !item->isNull() ? item : nullptr;
}

ZRColor colorOfMap(const ZRNamedValueMap& map) {
    ZRColor rgb(map.getNamedItem(ZRN_EMPTY).getIntegerValue());
    if (const ZRValue* form = findForm(map, ZRN_icc_color)) {
        const auto [a, b, c, d] = inksOf(*form);
        return {rgb, form->getNamedItem(ZRN_name).getStringValue(), a, b, c, d};
    }
    if (const ZRValue* form = findForm(map, ZRN_hash_CMYK)) {
        const auto [c, m, y, k] = inksOf(*form);
        return {rgb, c, m, y, k};
    }
    if (const ZRValue* form = findForm(map, ZRN_hash_GRAYSCALE)) {
        return {rgb, numberOf(*form)};
    }
    if (const ZRValue* form = findForm(map, ZRN_hash_SEPARATION)) {
        return separationOf(rgb, *form);
    }
    return rgb;
}

}  // namespace

ZRValue::ZRValue(const ZRColor& color)
    : ZRValue(ZRValueTypeInteger, ZRValueUnitColor, color.getRGB()) {
    if (!color.getProfileType().isEmpty()) {
        setNamedItem(color.getProfileType(), formOf(color));
        m_unit = ZRValueUnitColor;
    }
}

ZRColor ZRValue::getColorValue() const {
    if (!isColor()) {
        return ZRColor::getInvalidColor();
    }
    return isInteger() ? ZRColor(word()) : colorOfMap(*map());
}

}  // namespace ZroCommon
