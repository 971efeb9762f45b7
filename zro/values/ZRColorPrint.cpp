#include "zro/values/ZRColor.h"

#include "zro/foundation/internal/PrintReal.h"

namespace ZroCommon {
namespace {

void appendHex(UnicodeString& text, unsigned int rgb) {
    constexpr int kLeast = 6;
    const int digits = rgb > 0xFFFFFF ? 8 : kLeast;
    text.append(u'#');
    for (int digit = digits - 1; digit >= 0; --digit) {
        const unsigned int value = rgb >> (4U * static_cast<unsigned int>(digit)) & 0xFU;
        text.append(static_cast<char16_t>(value < 10 ? u'0' + value : u'A' + value - 10));
    }
}

void appendNumbers(UnicodeString& text, std::initializer_list<float> numbers) {
    for (const float number : numbers) {
        internal::appendReal(text.append(u','), static_cast<double>(number));
    }
}

}  // namespace

UnicodeString ZRColor::toString(bool preferName) const {
    UnicodeString text;
    if (m_profileType == ZRN_EMPTY) {
        const ZRName name = preferName ? getColorName() : ZRName();
        if (!name.isEmpty()) {
            return name.toString();
        }
        if (!isInvalid()) {
            appendHex(text, m_rgb);
        }
        return text;
    }
    appendForm(text);
    return text;
}

void ZRColor::appendForm(UnicodeString& text) const {
    switch (m_profileType) {
    case ZRN_hash_CMYK:
        appendStart(text, hasCMYKRGB(), getProfileType());
        appendNumbers(text, {getC(), getM(), getY(), getK()});
        break;
    case ZRN_hash_GRAYSCALE:
        appendStart(text, hasGrayscaleRGB(), getProfileType());
        appendNumbers(text, {getGrayscale()});
        break;
    case ZRN_hash_SEPARATION:
        appendStart(text, hasSeparationRGB(), getProfileType());
        text.append(u",\"").append(m_name).append(u'"');
        appendNumbers(text, {getSeparationTint()});
        if (hasSeparationCMYK()) {
            appendNumbers(text,
                          {getSeparationC(), getSeparationM(), getSeparationY(), getSeparationK()});
        }
        break;
    default:
        appendStart(text, true, m_name);
        appendNumbers(text, {getC(), getM(), getY(), getK()});
        break;
    }
    text.append(u')');
}

// The RGB is left out when the source gave none, and when it is none.
void ZRColor::appendStart(UnicodeString& text, bool hasRGB, const UnicodeString& form) const {
    if (hasRGB && !isSpecial()) {
        appendHex(text, m_rgb);
        text.append(u" icc-color(");
    } else {
        text.append(u"rgb-icc(");
    }
    text.append(form);
}

}  // namespace ZroCommon
