#pragma once

#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"
#include "zro/vocabulary/ZRName.h"

namespace ZroCommon {

class ZRValue;

/// A colour: an RGB for the screen and, where the source said so, beside it the CMYK, gray,
/// separation or ICC form that a printing back end needs.
///
/// Conversions are plain formulas, without colour management. Components run from 0 to 1 and are
/// clamped to that; a NaN counts as 0. Three values of the RGB are no colours: transparent, the
/// current colour, and the invalid colour, which is what failed conversions give. A small value:
/// copy it freely. Nothing here throws.
class ZRO_API ZRColor {
public:
    /// Black.
    ZRColor() = default;
    /// 0xRRGGBB.
    ZRColor(unsigned int rgb) : m_rgb(rgb) {}
    template <std::same_as<int> Number>
    ZRColor(Number rgb) : m_rgb(static_cast<unsigned int>(rgb)) {}
    /// Channels from 0 to 255; what lies outside is clamped.
    ZRColor(int r, int g, int b);

    /// Gray: 0 is black, 1 is white.
    ZRColor(float gray);
    /// Gray, with the RGB of another colour.
    ZRColor(const ZRColor& rgbColor, float gray);
    /// CMYK; the RGB is computed from the components as they are, without clamping.
    ZRColor(float c, float m, float y, float k);
    ZRColor(const ZRColor& rgbColor, float c, float m, float y, float k);

    // A separation: a printing ink by its name, and how much of it. An empty name is "All", which
    // means registration. The CMYK stands in for the ink where that is missing.

    ZRColor(const UnicodeString& name, float tint);
    ZRColor(const UnicodeString& name, float tint, float c, float m, float y, float k);
    ZRColor(const ZRColor& rgbColor, const UnicodeString& name, float tint);
    ZRColor(const ZRColor& rgbColor, const UnicodeString& name, float tint, float c, float m,
            float y, float k);

    /// An ICC colour: the name of its profile and the components, which are not clamped.
    ZRColor(const ZRColor& rgbColor, const UnicodeString& profile, float a, float b, float c,
            float d);

    /// A colour keyword of CSS, "transparent" or "currentColor", in any case; else the invalid
    /// colour.
    ZRColor(ZRName keyword);
    ZRColor(ZRNameEnum keyword) : ZRColor(ZRName(keyword)) {}
    /// `ZRValue::getColorValue`.
    ZRColor(const ZRValue& value);

    static ZRColor getTransparent() { return {kTransparent}; }
    static ZRColor getCurrentColor() { return {kCurrentColor}; }
    static ZRColor getInvalidColor() { return {kInvalid}; }
    bool isTransparent() const { return m_rgb == kTransparent; }
    bool isCurrentColor() const { return m_rgb == kCurrentColor; }
    /// No RGB and none of the other two values. An ICC colour is invalid also by the name of its
    /// profile: one that begins with "#" names a form, not a profile.
    bool isInvalid() const;

    /// 0xRRGGBB, or one of the three special values.
    unsigned int getRGB() const { return m_rgb; }
    operator unsigned int() const { return m_rgb; }
    int getR() const { return getR(m_rgb); }
    int getG() const { return getG(m_rgb); }
    int getB() const { return getB(m_rgb); }
    static int getR(unsigned int rgb) { return static_cast<int>(rgb >> 16U & 0xFFU); }
    static int getG(unsigned int rgb) { return static_cast<int>(rgb >> 8U & 0xFFU); }
    static int getB(unsigned int rgb) { return static_cast<int>(rgb & 0xFFU); }
    unsigned int getBGR() const { return reverseRGB(m_rgb); }
    static ZRColor fromBGR(unsigned int bgr) { return {reverseRGB(bgr)}; }
    /// Swaps the red and the blue byte.
    static unsigned int reverseRGB(unsigned int rgb) {
        return (rgb & 0xFF00FF00U) | (rgb >> 16U & 0xFFU) | (rgb & 0xFFU) << 16U;
    }

    /// The form beside the RGB: "#CMYK", "#GRAYSCALE", "#SEPARATION", "icc-color", or empty.
    ZRName getProfileType() const { return m_profileType; }
    bool isCMYK() const { return m_profileType == ZRN_hash_CMYK; }
    bool isGrayscale() const { return m_profileType == ZRN_hash_GRAYSCALE; }
    bool isSeparation() const { return m_profileType == ZRN_hash_SEPARATION; }
    bool isICCColorProfile() const { return m_profileType == ZRN_icc_color; }

    // Components. They lie in common slots, and each of these reads its slot whatever the form.

    float getC() const { return slot(0); }
    float getM() const { return slot(1); }
    float getY() const { return slot(2); }
    float getK() const { return slot(3); }
    float getGrayscale() const { return slot(0); }
    float getSeparationTint() const { return slot(0); }
    float getSeparationC() const { return slot(1); }
    float getSeparationM() const { return slot(2); }
    float getSeparationY() const { return slot(3); }
    float getSeparationK() const { return slot(4); }
    /// Components 0 to 3 of an ICC colour; 0 outside of the six slots.
    float getICCValue(int index) const {
        return index >= 0 && index < 6 ? slot(static_cast<std::size_t>(index)) : 0.0F;
    }
    bool hasCMYKRGB() const { return flag(4, 0); }
    bool hasGrayscaleRGB() const { return flag(1, 0); }
    /// Whether the source gave the RGB, the tint and the CMYK of a separation.
    bool hasSeparationRGB() const { return flag(5, 0); }
    bool hasSeparationTint() const { return flag(5, 1); }
    bool hasSeparationCMYK() const { return flag(5, 2); }
    void adjustSeparationFlags(bool hasRGB, bool hasTint, bool hasCMYK);

    /// The name of a separation or profile.
    UnicodeString getSeparationColorName() const { return m_name; }
    /// The same, interned.
    ZRName getICCColorProfileName() const { return {m_name}; }
    /// The name is "all" in any case: the ink is to be printed on every plate.
    bool isRegistrationName() const;
    bool isRegistration() const { return isSeparation() && isRegistrationName(); }
    /// The screen colour of the ink at its tint.
    unsigned int getSeparationRGB() const;

    /// A plain colour with two thirds of each channel.
    ZRColor getDark() const;
    /// A plain colour half-way to white.
    ZRColor getLight() const;
    /// The CSS keyword of the RGB, "transparent" and "currentColor" too; empty when there is none.
    /// One name a value, so never an alias such as "aqua" or "grey".
    ZRName getColorName() const;

    /// Of components as they are; the result is 0xRRGGBB.
    static unsigned int cmyk2rgb(float c, float m, float y, float k);
    /// A CMYK colour. Its RGB comes from the components, so it need not be the one given.
    static ZRColor rgb2cmyk(unsigned int rgb);

    /// RGB and form are equal. Names that mean registration are alike.
    bool operator==(const ZRColor& other) const;

    /// "#RRGGBB", or the keyword if one is preferred and exists; the invalid colour is empty. Other
    /// forms print as "#RRGGBB icc-color(...)", or without a known RGB as "rgb-icc(...)".
    UnicodeString toString(bool preferName) const;

private:
    static constexpr unsigned int kTransparent = 0xFFFFFFFF;
    static constexpr unsigned int kCurrentColor = 0xFE000000;
    static constexpr unsigned int kInvalid = 0xFF000000;

    float slot(std::size_t index) const { return std::bit_cast<float>(m_slots[index]); }
    void setSlot(std::size_t index, float number) {
        m_slots[index] = std::bit_cast<std::uint32_t>(number);
    }
    bool flag(std::size_t index, unsigned byte) const {
        return (m_slots[index] >> (8 * byte) & 0xFFU) != 0;
    }
    void setClamped(std::size_t first, float c, float m, float y, float k);
    void setSeparation(const UnicodeString& name, float tint);
    void appendForm(UnicodeString& text) const;
    void appendStart(UnicodeString& text, bool hasRGB, const UnicodeString& form) const;
    bool isSpecial() const { return m_rgb > 0xFFFFFF; }

    unsigned int m_rgb = 0;
    ZRNameEnum m_profileType = ZRN_EMPTY;
    UnicodeString m_name;
    // CMYK: four numbers and a flag. Gray: one and a flag. Separation: tint, CMYK and flags. ICC:
    // four numbers.
    std::array<std::uint32_t, 6> m_slots{};
};

}  // namespace ZroCommon
