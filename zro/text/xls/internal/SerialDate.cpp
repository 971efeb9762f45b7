#include "zro/text/xls/internal/SerialDate.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

namespace ZroCommon::internal {
namespace {

constexpr int kNever = std::numeric_limits<int>::max();

constexpr std::array<Era, 4> kEras = {{{u"明治", u"明", u'M', 1867, 4594, 3132},
                                       {u"大正", u"大", u'T', 1911, 9855, 8393},
                                       {u"昭和", u"昭", u'S', 1925, 32515, 31053},
                                       {u"平成", u"平", u'H', 1988, kNever, kNever}}};

int eraOf(int serial, bool isSystem1904) {
    int index = 0;
    while (serial > (isSystem1904 ? eraAt(index).last1904 : eraAt(index).last1900)) {
        ++index;
    }
    return index;
}

// The Gregorian date, by years that begin in March, so that a leap day is the last of its year.
// Days count from 1 March 1600, which begins a cycle of 400 years.
void setGregorianDate(SerialDate& date, int days) {
    const int cycle = days / 146097;
    const int dayOfCycle = days % 146097;
    const int yearOfCycle =
        (dayOfCycle - dayOfCycle / 1460 + dayOfCycle / 36524 - dayOfCycle / 146096) / 365;
    const int dayOfYear = dayOfCycle - (365 * yearOfCycle + yearOfCycle / 4 - yearOfCycle / 100);
    const int monthFromMarch = (5 * dayOfYear + 2) / 153;
    date.day = dayOfYear - (153 * monthFromMarch + 2) / 5 + 1;
    date.month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
    date.year = 1600 + 400 * cycle + yearOfCycle + (date.month <= 2 ? 1 : 0);
}

}  // namespace

const Era& eraAt(int index) {
    return kEras[static_cast<std::size_t>(index)];
}

std::optional<SerialDate> SerialDate::of(double serial, bool isSystem1904) {
    constexpr double kLast1900 = 2958465;  // 31 December 9999
    constexpr double kLast1904 = 2957003;
    const double whole = std::trunc(serial);
    if (!(serial >= 0) || whole > (isSystem1904 ? kLast1904 : kLast1900)) {
        return std::nullopt;
    }
    const auto number = static_cast<int>(whole);
    SerialDate date;
    date.era = eraOf(number, isSystem1904);
    date.weekday = (number + (isSystem1904 ? 5 : 6)) % 7;
    constexpr int kLeapDay1900 = 60;
    constexpr int kFirstOf1904 = 110973;  // days from 1 March 1600
    constexpr int kMarch1900 = 109572;
    if (isSystem1904) {
        setGregorianDate(date, kFirstOf1904 + number);
    } else if (number > kLeapDay1900) {
        setGregorianDate(date, kMarch1900 + number - kLeapDay1900 - 1);
    } else {
        // On purpose: 1900 has a 29 February, as its spreadsheets do, and begins with a day 0.
        date.year = 1900;
        date.month = number <= 31 ? 1 : 2;
        date.day = number <= 31 ? number : number - 31;
    }
    return date;
}

SerialTime::SerialTime(double serial, int decimals) {
    constexpr double kMaxDays = 1e13;
    static constexpr auto kScales = std::to_array({1, 10, 100, 1000});
    const int scale =
        decimals >= 0 && decimals <= 3 ? kScales[static_cast<std::size_t>(decimals)] : 1;
    double days = 0;
    const double fraction = std::modf(serial, &days);
    if (days <= kMaxDays) {
        m_days = static_cast<long long>(days);
    }
    m_seconds = static_cast<long>(std::floor(fraction * 86400 * scale + 0.5)) / scale;
    m_milliseconds = static_cast<long>(std::floor(fraction * 8.64e7 + 0.5)) % 1000;
}

}  // namespace ZroCommon::internal
