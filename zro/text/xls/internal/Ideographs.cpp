#include "zro/text/xls/internal/Ideographs.h"

#include <array>
#include <cmath>
#include <cstddef>

#include "zro/text/xls/internal/GeneralNumber.h"

namespace ZroCommon::internal {
namespace {

constexpr std::array<std::u16string_view, 4> kDigits = {
    u"0123456789", u"〇一二三四五六七八九", u"〇壱弐参四伍六七八九", u"０１２３４５６７８９"};
// Ten, hundred, thousand; then 10^4, 10^8, 10^12.
constexpr std::array<std::u16string_view, 4> kUnits = {u"", u"十百千万億兆", u"拾百阡萬億兆",
                                                       u"十百千万億兆"};

struct Scale {
    double size;
    int unit;  // -1 none
};
constexpr std::array<Scale, 4> kScales = {{{1e12, 5}, {1e8, 4}, {1e4, 3}, {1, -1}}};

struct Step {
    int size;
    std::size_t unit;
};
constexpr std::array<Step, 3> kSteps = {{{1000, 2}, {100, 1}, {10, 0}}};

}  // namespace

char16_t Ideographs::ideograph(char c) const {
    const bool isDigit = c >= '0' && c <= '9';
    return isDigit ? kDigits[m_system][static_cast<std::size_t>(c - '0')]
                   : static_cast<char16_t>(c);
}

void Ideographs::appendDigits(CellText& text, std::string_view number) const {
    for (const char c : number) {
        text.append(digit(c));
    }
}

// Below ten thousand, and not 0.
void Ideographs::appendMyriad(CellText& text, int number) const {
    constexpr int kFormal = 2;
    for (const auto& [size, unit] : kSteps) {
        const int count = number / size;
        if (count == 0) {
            continue;
        }
        if (count != 1 || m_system == kFormal) {  // the formal digits name each one
            text.append(digit(static_cast<char>('0' + count)));
        }
        text.append(kUnits[m_system][unit]);
        number %= size;
    }
    if (number > 0) {
        text.append(digit(static_cast<char>('0' + number)));
    }
}

void Ideographs::appendGeneral(CellText& text, double number, int width) const {
    constexpr double kBeyondUnits = 1e16;
    DecimalString plain;
    if (number < 1) {
        text.append(digit('0'));
    }
    if (number >= kBeyondUnits) {
        const double trillions = std::trunc(number / kScales[0].size);
        if (writeGeneral(trillions, width, plain)) {
            appendDigits(text, plain.text());
        } else {
            text.append(width, u'#');
        }
        text.append(kUnits[m_system][5]);
        const double rest = number - trillions * kScales[0].size;
        number = rest < kScales[0].size ? rest : 0;  // beyond a double's digits it is anything
    }
    for (const auto& [size, unit] : kScales) {
        if (number >= size) {
            const double count = std::trunc(number / size);
            appendMyriad(text, static_cast<int>(count));
            if (unit >= 0) {
                text.append(kUnits[m_system][static_cast<std::size_t>(unit)]);
            }
            number -= count * size;
        }
    }
    if (number > 0 && writeGeneral(number, width, plain) && !plain.text().empty()) {
        appendDigits(text, plain.text().substr(1));
    }
}

}  // namespace ZroCommon::internal
