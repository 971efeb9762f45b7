#include "zro/text/internal/Kansuji.h"

#include <algorithm>
#include <string>
#include <utility>

#include "zro/text/ZRChar.h"

namespace ZroCommon::internal {
namespace {

constexpr std::size_t kGroup = 4;  // digits

bool isDigit(char16_t unit) {
    return ZRChar::isAsciiDigit(unit);
}

// How far digits reach, and commas among them.
std::size_t runLength(std::u16string_view text) {
    return std::min(text.find_first_not_of(u"0123456789,"), text.size());
}

std::u16string withoutCommas(std::u16string_view run) {
    std::u16string digits(run);
    std::erase(digits, u',');
    return digits;
}

void replace(char16_t* first, std::size_t count, std::u16string_view units) {
    std::copy_n(units.begin(), std::min(count, units.size()), first);
}

}  // namespace

KansujiTable::KansujiTable(std::u16string_view digits, std::u16string_view units)
    : m_units{u'〇', u'一', u'二', u'三', u'四', u'五', u'六', u'七', u'八',
              u'九', u'十', u'百', u'千', u'万', u'億', u'兆', u'京', u'垓',
              u'秭', u'穣', u'溝', u'澗', u'正', u'載', u'極'} {
    constexpr std::size_t kDigits = 10;
    replace(m_units.data(), kDigits, digits);
    replace(m_units.data() + kDigits, m_units.size() - kDigits, units);
}

UnicodeString Kansuji::convert(std::u16string_view text) {
    while (!text.empty()) {
        if (!isDigit(text.front())) {
            writeWide(text.front());
            text.remove_prefix(1);
            continue;
        }
        const std::size_t length = runLength(text);
        writeRun(text.substr(0, length), length == text.size());
        text.remove_prefix(length);
        text.remove_prefix(writeFraction(text));
    }
    return std::move(m_text);
}

void Kansuji::writeWide(char16_t unit) {
    m_text.append(ZRChar::toZenkaku(unit));
}

void Kansuji::writeRun(std::u16string_view run, bool endsText) {
    if (m_method == Method::Plain) {
        writePlain(run);
        return;
    }
    std::u16string digits = withoutCommas(run);
    if (m_method == Method::Grouping) {
        writeGrouping(digits);
        return;
    }
    digits.erase(0, digits.find_first_not_of(u'0'));
    if (!digits.empty()) {
        writeReadable(digits);
    } else if (endsText) {
        m_text.append(m_table.digit(u'0'));  // On purpose: with text behind it, a zero is lost.
    }
}

void Kansuji::writePlain(std::u16string_view run) {
    for (const char16_t unit : run) {
        m_text.append(isDigit(unit) ? m_table.digit(unit) : KansujiTable::comma());
    }
}

// Groups of zeros at the end go, with their units; of all other groups each digit stands.
void Kansuji::writeGrouping(std::u16string_view digits) {
    const std::size_t lastNonZero = digits.find_last_not_of(u'0');
    for (std::size_t index = 0; index < digits.size(); ++index) {
        m_text.append(m_table.digit(digits[index]));
        const std::size_t left = digits.size() - 1 - index;
        const std::size_t groups = left / kGroup;
        if (left % kGroup != 0 || groups == 0 || groups > KansujiTable::kGroups) {
            continue;
        }
        m_text.append(m_table.group(groups));
        if (lastNonZero != digits.npos && lastNonZero <= index) {
            return;
        }
    }
}

// Digits without zeros ahead. What lies above the largest unit is written digit by digit.
void Kansuji::writeReadable(std::u16string_view digits) {
    const bool isBeyond = (digits.size() - 1) / kGroup > KansujiTable::kGroups;
    for (std::size_t index = 0; index < digits.size(); ++index) {
        const std::size_t left = digits.size() - 1 - index;
        const std::size_t groups = left / kGroup;
        if (isBeyond && groups >= KansujiTable::kGroups) {
            m_text.append(m_table.digit(digits[index]));
        } else {
            writePlace(digits[index], left % kGroup);
        }
        if (left % kGroup == 0 && groups > 0 && groups <= KansujiTable::kGroups) {
            m_text.append(m_table.group(groups));  // On purpose: behind four zeros too.
        }
    }
}

void Kansuji::writePlace(char16_t digit, std::size_t place) {
    if (digit == u'0') {
        return;
    }
    if (digit != u'1' || place == 0) {
        m_text.append(m_table.digit(digit));
    }
    if (place > 0) {
        m_text.append(m_table.power(place));
    }
}

// What follows a number: its decimals and the character behind them, or one character.
// \return how many characters those are
std::size_t Kansuji::writeFraction(std::u16string_view text) {
    if (text.empty()) {
        return 0;
    }
    if (text.front() != u'.') {
        writeWide(text.front());
        return 1;
    }
    m_text.append(KansujiTable::point());
    std::size_t length = 1;
    for (; length < text.size() && isDigit(text[length]); ++length) {
        m_text.append(m_table.digit(text[length]));
    }
    if (length < text.size()) {
        writeWide(text[length++]);
    }
    return length;
}

}  // namespace ZroCommon::internal
