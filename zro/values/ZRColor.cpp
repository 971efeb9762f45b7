#include "zro/values/ZRColor.h"

#include <algorithm>

#include <unicode/uchar.h>

#include "zro/foundation/internal/SaturatingInt.h"
#include "zro/values/ZRValue.h"

namespace ZroCommon {
namespace {

// NaN gives 0 too. A zero keeps its sign.
float zeroone(float number) {
    return number >= 0 ? std::min(number, 1.0F) : 0.0F;
}

unsigned int channelOf(float number) {
    const float channel = number * 255.0F + 0.5F;
    return static_cast<unsigned int>(
        std::clamp(internal::saturatingInt(static_cast<double>(channel)), 0, 255));
}

unsigned int pack(unsigned int r, unsigned int g, unsigned int b) {
    return r << 16U | g << 8U | b;
}

unsigned int grayRGB(float gray) {
    const unsigned int channel = channelOf(gray);
    return pack(channel, channel, channel);
}

unsigned int byteOf(int channel) {
    return static_cast<unsigned int>(std::clamp(channel, 0, 255));
}

UnicodeString inkName(const UnicodeString& name) {
    return name.isEmpty() ? UnicodeString(u"All") : name;
}

}  // namespace

ZRColor::ZRColor(int r, int g, int b) : m_rgb(pack(byteOf(r), byteOf(g), byteOf(b))) {}

ZRColor::ZRColor(float gray) : ZRColor(ZRColor(grayRGB(zeroone(gray))), gray) {}

ZRColor::ZRColor(const ZRColor& rgbColor, float gray)
    : m_rgb(rgbColor.m_rgb), m_profileType(ZRN_hash_GRAYSCALE) {
    setSlot(0, zeroone(gray));
    m_slots[1] = 1;
}

ZRColor::ZRColor(float c, float m, float y, float k)
    : ZRColor(ZRColor(cmyk2rgb(c, m, y, k)), c, m, y, k) {}

ZRColor::ZRColor(const ZRColor& rgbColor, float c, float m, float y, float k)
    : m_rgb(rgbColor.m_rgb), m_profileType(ZRN_hash_CMYK) {
    setClamped(0, c, m, y, k);
    m_slots[4] = 1;
}

ZRColor::ZRColor(const UnicodeString& name, float tint) : m_rgb(grayRGB(1 - zeroone(tint))) {
    setSeparation(name, tint);
    setClamped(1, 1, 1, 1, 1);
    adjustSeparationFlags(false, true, false);
}

ZRColor::ZRColor(const UnicodeString& name, float tint, float c, float m, float y, float k)
    : ZRColor(ZRColor(cmyk2rgb(c, m, y, k)), name, tint, c, m, y, k) {
    adjustSeparationFlags(false, true, true);
}

ZRColor::ZRColor(const ZRColor& rgbColor, const UnicodeString& name, float tint)
    : m_rgb(rgbColor.m_rgb) {
    setSeparation(name, tint);
    const ZRColor ink = rgb2cmyk(m_rgb);
    setClamped(1, ink.getC(), ink.getM(), ink.getY(), ink.getK());
    adjustSeparationFlags(true, true, false);
}

ZRColor::ZRColor(const ZRColor& rgbColor, const UnicodeString& name, float tint, float c, float m,
                 float y, float k)
    : m_rgb(rgbColor.m_rgb) {
    setSeparation(name, tint);
    setClamped(1, c, m, y, k);
    adjustSeparationFlags(true, true, true);
}

ZRColor::ZRColor(const ZRColor& rgbColor, const UnicodeString& profile, float a, float b, float c,
                 float d)
    : m_rgb(rgbColor.m_rgb), m_profileType(ZRN_icc_color), m_name(profile) {
    setSlot(0, a);
    setSlot(1, b);
    setSlot(2, c);
    setSlot(3, d);
}

ZRColor::ZRColor(const ZRValue& value) : ZRColor(value.getColorValue()) {}

void ZRColor::setClamped(std::size_t first, float c, float m, float y, float k) {
    setSlot(first, zeroone(c));
    setSlot(first + 1, zeroone(m));
    setSlot(first + 2, zeroone(y));
    setSlot(first + 3, zeroone(k));
}

void ZRColor::setSeparation(const UnicodeString& name, float tint) {
    m_profileType = ZRN_hash_SEPARATION;
    m_name = inkName(name);
    setSlot(0, zeroone(tint));
}

void ZRColor::adjustSeparationFlags(bool hasRGB, bool hasTint, bool hasCMYK) {
    m_slots[5] = (hasRGB ? 1U : 0U) | (hasTint ? 0x100U : 0U) | (hasCMYK ? 0x10000U : 0U);
}

bool ZRColor::isInvalid() const {
    const bool hasNoRGB = isSpecial() && !isTransparent() && !isCurrentColor();
    return hasNoRGB || (isICCColorProfile() && m_name.startsWith(u'#'));
}

bool ZRColor::isRegistrationName() const {
    return m_name.caseCompare(u"all", 3, U_FOLD_CASE_DEFAULT) == 0;
}

unsigned int ZRColor::cmyk2rgb(float c, float m, float y, float k) {
    const auto channel = [k](float ink) {
        return channelOf(1 - std::min(1.0F, (1 - k) * ink + k));
    };
    return pack(channel(c), channel(m), channel(y));
}

ZRColor ZRColor::rgb2cmyk(unsigned int rgb) {
    const auto ink = [](int channel) {
        return 1 - static_cast<float>(channel) / 255;
    };
    const float c = ink(getR(rgb));
    const float m = ink(getG(rgb));
    const float y = ink(getB(rgb));
    const float k = std::min({c, m, y});
    // On purpose: the inks are not divided by 1 - k, so they need not give the RGB back.
    return {zeroone(c - k), zeroone(m - k), zeroone(y - k), zeroone(k)};
}

unsigned int ZRColor::getSeparationRGB() const {
    const float tint = getSeparationTint();
    if (tint >= 1) {
        return m_rgb;
    }
    if (hasSeparationRGB() && !hasSeparationCMYK()) {
        const ZRColor ink = rgb2cmyk(m_rgb);
        return cmyk2rgb(ink.getC() * tint, ink.getM() * tint, ink.getY() * tint, ink.getK() * tint);
    }
    return cmyk2rgb(getSeparationC() * tint, getSeparationM() * tint, getSeparationY() * tint,
                    getSeparationK() * tint);
}

ZRColor ZRColor::getDark() const {
    return {2 * getR() / 3, 2 * getG() / 3, 2 * getB() / 3};
}

ZRColor ZRColor::getLight() const {
    const auto lighter = [](int channel) {
        return 255 - ((255 - channel) >> 1);
    };
    return {lighter(getR()), lighter(getG()), lighter(getB())};
}

bool ZRColor::operator==(const ZRColor& other) const {
    if (m_rgb != other.m_rgb || m_profileType != other.m_profileType) {
        return false;
    }
    const auto areEqual = [&](std::size_t slots) {
        for (std::size_t index = 0; index < slots; ++index) {
            if (slot(index) != other.slot(index)) {
                return false;
            }
        }
        return true;
    };
    switch (m_profileType) {
    case ZRN_hash_CMYK: return areEqual(4);
    case ZRN_hash_GRAYSCALE: return areEqual(1);
    case ZRN_hash_SEPARATION:
        // On purpose: by the bits, so that a tint of -0 is not one of 0.
        return (m_name == other.m_name || (isRegistrationName() && other.isRegistrationName()))
               && m_slots == other.m_slots;
    case ZRN_icc_color: return m_name == other.m_name && areEqual(4);
    default: return true;
    }
}

}  // namespace ZroCommon
