#include "zro/values/ZRLength.h"

#include "zro/foundation/internal/SaturatingInt.h"
#include "zro/values/ZRValue.h"
#include "zro/values/internal/Units.h"

namespace ZroCommon {

ZRLength::ZRLength(float number, ZRValueUnitType unit)
    : m_points(number * internal::pointsPer(unit)) {}

ZRLength::ZRLength(const ZRValue& value) : ZRLength(value.getLengthValue()) {}

float ZRLength::getRealValue(ZRValueUnitType unit) const {
    return m_points / internal::pointsPer(unit);
}

int ZRLength::getPixelCount(float dpi) const {
    const float pixels = dpi * m_points / 72;
    return internal::saturatingInt(pixels + (pixels < 0 ? -0.5 : 0.5));
}

}  // namespace ZroCommon
