#include "zro/text/internal/Numerals.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace ZroCommon::internal {
namespace {

constexpr std::size_t kDigits = 9;  // that have a letter
constexpr int kThousand = 1000;

int powerOfTen(std::size_t exponent) {
    int power = 1;
    for (; exponent > 0; --exponent) {
        power *= 10;
    }
    return power;
}

char16_t letterAt(std::u16string_view letters, std::size_t index) {
    return index < letters.size() ? letters[index] : u'\0';
}

// A Roman numeral while it is written: three characters of the highest decade and four of each of
// the others at most.
class RomanUnits {
public:
    // One digit, by the letters for one, five and ten of its decade; U+0000 for one that there is
    // none of.
    void write(int digit, char16_t one, char16_t five, char16_t ten) {
        if (digit == 4 && five != 0) {
            push(one);
            push(five);
            return;
        }
        if (digit == 9 && ten != 0) {
            push(one);
            push(ten);
            return;
        }
        if (digit >= 5 && five != 0) {
            push(five);
            digit -= 5;
        }
        for (; digit > 0; --digit) {
            push(one);
        }
    }
    void push(char16_t unit) { m_units[m_size++] = unit; }

    std::u16string_view text() const { return {m_units.data(), m_size}; }

private:
    std::array<char16_t, 32> m_units{};
    std::size_t m_size = 0;
};

// Below a thousand.
void appendHebrewGroup(UnicodeString& text, int number) {
    // On purpose: 500 to 900 are final forms, one letter each, not sums.
    constexpr std::u16string_view kLetters = u"אבגדהוזחטיכלמנסעפצקרשתךםןףץ";
    const int tail = number % 100;
    if (tail != 15 && tail != 16) {
        appendAdditive(text, number, kLetters);
        return;
    }
    // Nine and six, nine and seven: with a ten they would spell a name that is not written.
    appendAdditive(text, number - tail, kLetters);
    appendAdditive(text, 9, kLetters);
    appendAdditive(text, tail - 9, kLetters);
}

}  // namespace

void appendBijective(UnicodeString& text, int number, std::u16string_view letters) {
    std::array<char16_t, 32> units{};  // as many as two letters need
    auto* first = units.end();
    const auto count = static_cast<unsigned>(letters.size());
    for (auto rest = static_cast<unsigned>(number); rest > 0; rest = (rest - 1) / count) {
        *--first = letters[(rest - 1) % count];
    }
    text.append(first, static_cast<int32_t>(units.end() - first));
}

int largestRoman(std::u16string_view letters) {
    return 4 * powerOfTen(letters.size() / 2) - 1;
}

void appendRoman(UnicodeString& text, int number, std::u16string_view letters, bool hasSmall) {
    constexpr int kLastSmall = 12;
    RomanUnits units;
    std::size_t decade = letters.size() / 2;
    for (int power = powerOfTen(decade); number > 0; power /= 10, --decade) {
        if (hasSmall && number <= kLastSmall) {
            units.push(static_cast<char16_t>(letters.front() + number - 1));
            break;
        }
        units.write(number / power, letters[2 * decade], letterAt(letters, 2 * decade + 1),
                    letterAt(letters, 2 * decade + 2));
        number %= power;
    }
    const std::u16string_view numeral = units.text();
    text.append(numeral.data(), static_cast<int32_t>(numeral.size()));
}

void appendAdditive(UnicodeString& text, int number, std::u16string_view letters) {
    const std::size_t decades = (letters.size() + kDigits - 1) / kDigits;
    for (std::size_t decade = decades; decade-- > 0;) {
        const int digit = number / powerOfTen(decade) % 10;
        const std::size_t index = decade * kDigits + static_cast<std::size_t>(digit) - 1;
        if (digit > 0 && index < letters.size()) {
            text.append(letters[index]);
        }
    }
}

void appendHebrew(UnicodeString& text, int number, const UnicodeString& thousands) {
    for (int power = kThousand * kThousand * kThousand; power > 1; power /= kThousand) {
        if (number >= power) {
            appendHebrewGroup(text, number / power % kThousand);
            text.append(thousands);
        }
    }
    appendHebrewGroup(text, number % kThousand);
}

void appendSexagenary(UnicodeString& text, int number) {
    const auto index = static_cast<std::size_t>(number - 1);
    text.append(kHeavenlyStems[index % kHeavenlyStems.size()]);
    text.append(kEarthlyBranches[index % kEarthlyBranches.size()]);
}

}  // namespace ZroCommon::internal
