#include "zro/text/ZRChar.h"

#include <algorithm>
#include <iterator>

namespace ZroCommon {
namespace {

struct Range {
    int first;
    int last;
};

template <std::size_t N>
constexpr bool isAscending(const Range (&ranges)[N]) {
    for (std::size_t i = 0; i < N; ++i) {
        if (ranges[i].first > ranges[i].last || (i > 0 && ranges[i].first <= ranges[i - 1].last)) {
            return false;
        }
    }
    return true;
}

template <std::size_t N>
bool contains(const Range (&ranges)[N], int c) {
    const auto* range = std::lower_bound(std::begin(ranges), std::end(ranges), c,
                                         [](Range r, int code) { return r.last < code; });
    return range != std::end(ranges) && range->first <= c;
}

constexpr Range kNameStarts[] = {
    {0x00C0, 0x02FF}, {0x0370, 0x037D}, {0x037F, 0x1FFF}, {0x200C, 0x200D},
    {0x2070, 0x218F}, {0x2C00, 0x2FEF}, {0x3001, 0xD7FF}, {0xF900, 0xEFFFF},
};
static_assert(isAscending(kNameStarts));

// What the western code pages have beyond U+00FF.
constexpr Range kHalf[] = {
    {0x0152, 0x0153}, {0x0160, 0x0161}, {0x0178, 0x0178}, {0x017D, 0x017E}, {0x0192, 0x0192},
    {0x02C6, 0x02C6}, {0x02DC, 0x02DC}, {0x2010, 0x2010}, {0x2013, 0x2014}, {0x2018, 0x201A},
    {0x201C, 0x201E}, {0x2020, 0x2022}, {0x2026, 0x2026}, {0x2030, 0x2030}, {0x2039, 0x203A},
    {0x20AC, 0x20AC}, {0x2122, 0x2122},
};
static_assert(isAscending(kHalf));

constexpr Range kBullets[] = {
    {0x2022, 0x2023}, {0x2043, 0x2043}, {0x204C, 0x204D}, {0x2219, 0x2219}, {0x25D8, 0x25D8},
    {0x25E6, 0x25E6}, {0x2619, 0x2619}, {0x2765, 0x2765}, {0x2767, 0x2767}, {0x29BE, 0x29BF},
};
static_assert(isAscending(kBullets));

// JIS X 4051's small kana, iteration and prolonged sound marks, with their half-width forms.
constexpr Range kNonStarters[] = {
    {0x3005, 0x3005}, {0x3041, 0x3041}, {0x3043, 0x3043}, {0x3045, 0x3045}, {0x3047, 0x3047},
    {0x3049, 0x3049}, {0x3063, 0x3063}, {0x3083, 0x3083}, {0x3085, 0x3085}, {0x3087, 0x3087},
    {0x308E, 0x308E}, {0x3095, 0x3096}, {0x309D, 0x309E}, {0x30A1, 0x30A1}, {0x30A3, 0x30A3},
    {0x30A5, 0x30A5}, {0x30A7, 0x30A7}, {0x30A9, 0x30A9}, {0x30C3, 0x30C3}, {0x30E3, 0x30E3},
    {0x30E5, 0x30E5}, {0x30E7, 0x30E7}, {0x30EE, 0x30EE}, {0x30F5, 0x30F6}, {0x30FC, 0x30FE},
    {0x31F0, 0x31FF}, {0xFF67, 0xFF70},
};
static_assert(isAscending(kNonStarters));

// The symbols of JIS X 0208 whose width Unicode leaves open.
constexpr Range kSymbols[] = {
    {0x00A7, 0x00A8}, {0x00B0, 0x00B1}, {0x00B4, 0x00B4}, {0x00B6, 0x00B6}, {0x00D7, 0x00D7},
    {0x00F7, 0x00F7}, {0x2010, 0x2010}, {0x2015, 0x2015}, {0x2018, 0x2019}, {0x201C, 0x201D},
    {0x2020, 0x2021}, {0x2025, 0x2026}, {0x2030, 0x2030}, {0x2032, 0x2033}, {0x203B, 0x203B},
    {0x2103, 0x2103}, {0x2116, 0x2116}, {0x2121, 0x2121}, {0x212B, 0x212B}, {0x2160, 0x2169},
    {0x2190, 0x2193}, {0x21D2, 0x21D2}, {0x21D4, 0x21D4}, {0x2200, 0x2200}, {0x2202, 0x2203},
    {0x2207, 0x2208}, {0x220B, 0x220B}, {0x2211, 0x2211}, {0x221A, 0x221A}, {0x221D, 0x2220},
    {0x2225, 0x2225}, {0x2227, 0x222C}, {0x222E, 0x222E}, {0x2234, 0x2235}, {0x223D, 0x223D},
    {0x2252, 0x2252}, {0x2260, 0x2261}, {0x2266, 0x2267}, {0x226A, 0x226B}, {0x2282, 0x2283},
    {0x2286, 0x2287}, {0x22A5, 0x22A5}, {0x22BF, 0x22BF}, {0x2312, 0x2312}, {0x2460, 0x2473},
    {0x25A0, 0x25A1}, {0x25B2, 0x25B3}, {0x25BC, 0x25BD}, {0x25C6, 0x25C7}, {0x25CB, 0x25CB},
    {0x25CE, 0x25CF}, {0x25EF, 0x25EF}, {0x2605, 0x2606}, {0x2640, 0x2640}, {0x2642, 0x2642},
    {0x266A, 0x266A}, {0x266D, 0x266D}, {0x266F, 0x266F},
};
static_assert(isAscending(kSymbols));

bool hasCategory(UCharCategory category, std::uint32_t mask) {
    return (1U << static_cast<unsigned>(category) & mask) != 0;
}

}  // namespace

constexpr std::array<std::uint8_t, 128> ZRChar::kAscii = [] {
    std::array<std::uint8_t, 128> kinds{};
    for (const char c : {' ', '\t', '\n', '\r'}) {
        kinds[static_cast<unsigned char>(c)] |= kSpace;
    }
    for (unsigned c = 0; c < kinds.size(); ++c) {
        const bool isDigit = c >= '0' && c <= '9';
        const unsigned lower = c | 0x20U;
        const bool isLetter = lower >= 'a' && lower <= 'z';
        if (isDigit || (isLetter && lower <= 'f')) {
            kinds[c] |= kHexDigit;
        }
        if (isLetter || c == '_') {
            kinds[c] |= kNameStart | kName;
        }
        if (isDigit || c == '-' || c == '.') {
            kinds[c] |= kName;
        }
    }
    return kinds;
}();

char16_t ZRChar::last(const UnicodeString& text) {
    return text.isEmpty() ? u'\uFFFF' : text.charAt(text.length() - 1);
}

int ZRChar::last32(const UnicodeString& text) {
    return text.isEmpty() ? 0xFFFF : text.char32At(text.length() - 1);
}

bool ZRChar::isWhitespace(const UnicodeString& text) {
    return !text.isEmpty() && isEmptyOrWhitespace(text);
}

bool ZRChar::isEmptyOrWhitespace(const UnicodeString& text) {
    const char16_t* units = text.getBuffer();
    return std::all_of(units, units + text.length(),
                       [](char16_t c) { return isWhitespace(int{c}); });
}

bool ZRChar::isHalf(int c) {
    return c < 0x0100 || contains(kHalf, c);
}

bool ZRChar::isBullet(int c) {
    return contains(kBullets, c);
}

bool ZRChar::isNonStarterJIS(int c) {
    return contains(kNonStarters, c);
}

bool ZRChar::isSymbolJIS(int c) {
    return contains(kSymbols, c);
}

bool ZRChar::isNameStartBeyondAscii(int c) {
    return contains(kNameStarts, c);
}

bool ZRChar::isNameBeyondAscii(int c) {
    return contains(kNameStarts, c) || within(c, 0x0300, 0x036F) || c == 0x00B7 || c == 0x203F
           || c == 0x2040;
}

bool ZRChar::isNonSeparateChars(int first, int second) {
    switch (first) {
    case 0x2014:
    case 0x2015:
    case 0x2024:
    case 0x2025:
    case 0x2026: return first == second;
    case 0x3033:
    case 0x3034: return second == 0x3035;
    default: return false;
    }
}

bool ZRChar::isAlphabetic(int c) {
    return u_isUAlphabetic(c) != 0;
}

UEastAsianWidth ZRChar::getEastAsianWidth(int c) {
    return static_cast<UEastAsianWidth>(u_getIntPropertyValue(c, UCHAR_EAST_ASIAN_WIDTH));
}

UCharCategory ZRChar::getCategory(int c) {
    return static_cast<UCharCategory>(u_charType(c));
}

bool ZRChar::isLetter(int c) {
    return hasCategory(getCategory(c), U_GC_L_MASK);
}

bool ZRChar::isPunct(UCharCategory category) {
    return hasCategory(category, U_GC_P_MASK);
}

bool ZRChar::isSymbol(int c) {
    return hasCategory(getCategory(c), U_GC_S_MASK);
}

ULineBreak ZRChar::getLineBreak(int c) {
    return static_cast<ULineBreak>(u_getIntPropertyValue(c, UCHAR_LINE_BREAK));
}

bool ZRChar::isZeroWidthControlCode(int c) {
    constexpr int kSoftHyphen = 0xAD;
    if (c == kSoftHyphen) {
        return false;
    }
    return u_iscntrl(c) != 0 || (u_isgraph(c) == 0 && u_isblank(c) == 0);
}

bool ZRChar::isOpenParenEtc(int c) {
    return isPunct(c) && (getLineBreak(c) == U_LB_OPEN_PUNCTUATION || c == 0x2018 || c == 0x201C);
}

bool ZRChar::isCloseParenEtc(int c) {
    return isPunct(c) && (getLineBreak(c) == U_LB_CLOSE_PUNCTUATION || c == 0x2019 || c == 0x201D);
}

bool ZRChar::isHalfPunct(int c) {
    return isOpenParenEtc(c) || isCloseParenEtc(c) || isZenkakuMidDotEtc(c);
}

}  // namespace ZroCommon
