#include "zro/text/internal/DecimalLabel.h"

#include <algorithm>
#include <array>
#include <string>

namespace ZroCommon::internal {
namespace {

// The digit one of each decimal script: ASCII, Arabic-Indic, its eastern form, Devanagari, Bengali,
// Gurmukhi, Gujarati, Oriya, Telugu, Kannada, Malayalam, Thai, Lao, Tibetan, Myanmar, Khmer,
// Mongolian, full-width. On purpose: Tamil is not among them.
constexpr std::array<char16_t, 18> kOnes = {0x0031, 0x0661, 0x06F1, 0x0967, 0x09E7, 0x0A67,
                                            0x0AE7, 0x0B67, 0x0C67, 0x0CE7, 0x0D67, 0x0E51,
                                            0x0ED1, 0x0F21, 0x1041, 0x17E1, 0x1811, 0xFF11};

constexpr std::array<std::u16string_view, 2> kIdeographicDigits = {u"〇一二三四五六七八九",
                                                                   u"영일이삼사오육칠팔구"};

std::optional<DigitSet> digitsByTheirOne(char16_t one) {
    if (std::find(kOnes.begin(), kOnes.end(), one) != kOnes.end()) {
        return DigitSet(one);
    }
    for (const std::u16string_view row : kIdeographicDigits) {
        if (row[1] == one) {
            return DigitSet(row);
        }
    }
    return std::nullopt;
}

void append(UnicodeString& text, std::u16string_view units) {
    text.append(units.data(), static_cast<int32_t>(units.size()));
}

// Groups are counted from the end. On purpose: a sign counts as a character, so that -123 in
// groups of three is "-,123".
void appendGrouped(UnicodeString& text, std::u16string_view units, const Grouping& grouping) {
    const std::size_t size = grouping.size < 0 ? 0U - static_cast<unsigned>(grouping.size)
                                               : static_cast<unsigned>(grouping.size);
    if (size != 0 && !grouping.separator.isEmpty()) {
        while (units.size() > size) {
            const std::size_t surplus = units.size() % size;
            const std::size_t length = surplus == 0 ? size : surplus;
            append(text, units.substr(0, length));
            text.append(grouping.separator);
            units.remove_prefix(length);
        }
    }
    append(text, units);
}

}  // namespace

std::optional<DigitSet> DigitSet::of(std::u16string_view token) {
    if (token.empty()) {
        return std::nullopt;
    }
    const std::optional<DigitSet> digits = digitsByTheirOne(token.back());
    const bool isAsked = digits && (token.size() == 1 || token.front() == digits->digit(0));
    return isAsked ? digits : std::nullopt;
}

void appendDecimal(UnicodeString& text, int number, std::size_t minLength, DigitSet digits,
                   const Grouping& grouping) {
    constexpr std::size_t kMaxDigits = 10;
    std::array<char16_t, kMaxDigits> buffer{};
    auto* first = buffer.end();
    auto rest = number < 0 ? 0U - static_cast<unsigned>(number) : static_cast<unsigned>(number);
    do {
        *--first = digits.digit(rest % 10);
        rest /= 10;
    } while (rest != 0);
    const auto count = static_cast<std::size_t>(buffer.end() - first);
    const std::size_t signLength = number < 0 ? 1U : 0U;
    std::u16string units(std::max(minLength, count + signLength), digits.digit(0));
    std::copy(first, buffer.end(), units.end() - static_cast<std::ptrdiff_t>(count));
    if (number < 0) {
        units.front() = digits.minus();
    }
    appendGrouped(text, units, grouping);
}

}  // namespace ZroCommon::internal
