#include "zro/text/xls/internal/DateWalker.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>

namespace ZroCommon::internal {
namespace {

constexpr std::array<std::string_view, 7> kWeekdays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                       "Thursday", "Friday", "Saturday"};
constexpr std::u16string_view kJapaneseWeekdays = u"日月火水木金土";
constexpr std::array<std::string_view, 12> kMonths = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};

bool isFormDigit(char16_t c) {
    return c >= u'1' && c <= u'7';
}

}  // namespace

DateWalker::Outcome DateWalker::walk(double serial) {
    const UnicodeString& compiled = m_section.compiled;
    m_format = {compiled.getBuffer(), static_cast<std::size_t>(compiled.length())};
    m_serial = std::fabs(serial);
    m_time = SerialTime(m_serial, m_section.fracPlaces);
    if (serial < 0) {
        m_text.append(u'-');
    }
    while (!m_format.empty()) {
        if (!step()) {
            return Outcome::NoSuchDate;
        }
        if (m_text.columns() > m_place.limit) {
            return Outcome::TooWide;
        }
    }
    return Outcome::Written;
}

bool DateWalker::step() {
    const char16_t c = m_format.front();
    m_format.remove_prefix(1);
    switch (c) {
    case u'"': copyQuoted(); return true;
    case u'%':
    case u'.':
    case u'/': m_text.append(c); return true;
    case u'*': writeFill(); return true;
    case u'0': writeFraction(); return true;
    case u'A':
    case u'a':
        m_format = {m_format.data() - 1, m_format.size() + 1};
        writeDayHalf();
        return true;
    default: return writeToken(c);
    }
}

// Up to the closing quote. One that is missing, its opening one lost behind a fraction of seconds,
// lets the string run to the end.
void DateWalker::copyQuoted() {
    const std::size_t end = std::min(m_format.find(u'"'), m_format.size());
    m_text.append(m_format.substr(0, end));
    m_format.remove_prefix(std::min(end + 1, m_format.size()));
}

void DateWalker::writeFill() {
    if (m_format.empty()) {
        return;
    }
    if (m_place.isFilled) {
        m_text.fillHere(m_format.front());
    } else {
        m_text.append(m_format.front());
    }
    m_format.remove_prefix(1);
}

// A letter and the digit of its form; other characters are passed over.
bool DateWalker::writeToken(char16_t letter) {
    if (m_format.empty() || !isFormDigit(m_format.front())) {
        return true;
    }
    const int form = m_format.front() - u'0';
    using Writer = bool (DateWalker::*)(int);
    const auto write = [&](Writer writer) {
        m_format.remove_prefix(1);
        return (this->*writer)(form);
    };
    switch (letter) {
    case u'D': return write(&DateWalker::writeDay);
    case u'M': return write(&DateWalker::writeMonth);
    case u'Y': return write(&DateWalker::writeYear);
    case u'R': return write(&DateWalker::writeEra);
    case u'h': return write(&DateWalker::writeHours);
    case u'm': return write(&DateWalker::writeMinutes);
    case u's': return write(&DateWalker::writeSeconds);
    default: return true;
    }
}

bool DateWalker::findDate() {
    if (!m_date) {
        m_date = SerialDate::of(m_serial, m_place.isSystem1904);
    }
    return m_date.has_value();
}

void DateWalker::writeNumber(long long number, int minDigits) {
    std::array<char, 24> digits{};
    const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    const std::string_view text(digits.data(), static_cast<std::size_t>(end - digits.data()));
    m_text.append(minDigits - static_cast<int>(text.size()), u'0');
    m_text.append(text);
}

// Dates.

bool DateWalker::writeDay(int form) {
    if (!findDate()) {
        return false;
    }
    if (form <= 2) {
        writeNumber(m_date->day, form);
    } else {
        writeWeekday(form);
    }
    return true;
}

void DateWalker::writeWeekday(int form) {
    const auto day = static_cast<std::size_t>(m_date->weekday);
    switch (form) {
    case 3: m_text.append(kWeekdays[day].substr(0, 3)); break;
    case 4:
        if (m_place.isCurrentVersion) {
            m_text.append(kWeekdays[day]);
        } else {
            m_text.append(kJapaneseWeekdays[day]);
        }
        break;
    case 5: m_text.append(kJapaneseWeekdays[day]); break;
    case 6:
        m_text.append(kJapaneseWeekdays[day]);
        m_text.append(u"曜日");
        break;
    default: break;
    }
}

bool DateWalker::writeMonth(int form) {
    if (!findDate()) {
        return false;
    }
    const std::string_view name = kMonths[static_cast<std::size_t>(m_date->month - 1)];
    switch (form) {
    case 1:
    case 2: writeNumber(m_date->month, form); break;
    case 3: m_text.append(name.substr(0, 3)); break;
    case 4: m_text.append(name); break;
    case 5: m_text.append(name.substr(0, 1)); break;
    default: break;
    }
    return true;
}

bool DateWalker::writeYear(int form) {
    if (!findDate()) {
        return false;
    }
    if (form == 2) {
        writeNumber(m_date->year % 100, 2);
    } else if (form == 4) {
        writeNumber(m_date->year, 4);
    }
    return true;
}

bool DateWalker::writeEra(int form) {
    if (!findDate()) {
        return false;
    }
    const Era& era = eraAt(m_date->era);
    const int year = m_date->year - era.yearBefore;
    constexpr int kCurrentEra = 3;
    switch (form) {
    case 1:
        if (m_date->era < kCurrentEra) {  // On purpose: the last era goes without its name.
            m_text.append(std::u16string_view(era.name));
        }
        writeNumber(year, 2);
        break;
    case 2:
        m_text.append(std::u16string_view(era.name));
        writeNumber(year, 2);
        break;
    case 3: m_text.append(era.letter); break;
    case 4: m_text.append(std::u16string_view(era.shortName)); break;
    case 5: m_text.append(std::u16string_view(era.name)); break;
    case 6:
    case 7: writeNumber(year, form - 5); break;
    default: break;
    }
    return true;
}

// Times.

bool DateWalker::writeHours(int form) {
    if (form > 2) {
        return form > 4 || writeElapsed(m_time.elapsedHours(), form - 2);
    }
    const long hours = m_time.hours();
    const long onClock = hours % 12 == 0 ? 12 : hours % 12;
    writeNumber(m_section.hasAmPm != 0 ? onClock : hours % 24, form);
    return true;
}

bool DateWalker::writeMinutes(int form) {
    if (form > 2) {
        return form > 4 || writeElapsed(m_time.elapsedMinutes(), form - 2);
    }
    writeNumber(m_time.minutes(), form);
    return true;
}

bool DateWalker::writeSeconds(int form) {
    switch (form) {
    case 1:
    case 2: writeNumber(m_time.seconds(), form); return true;
    // On purpose: "[s]" counts the seconds of the day alone, "[ss]" those of all days.
    case 3: writeNumber(m_time.secondsOfDay(), 1); return true;
    case 4: return writeElapsed(m_time.elapsedSeconds(), 2);
    default: return true;
    }
}

bool DateWalker::writeElapsed(long long count, int minDigits) {
    if (!m_time.isCountable()) {
        return false;
    }
    writeNumber(count, minDigits);
    return true;
}

// "AM/PM", "a/p": what stands behind the slash from noon on, as much as stands ahead of it.
void DateWalker::writeDayHalf() {
    constexpr long kNoon = 12;
    const std::size_t slash = m_format.find(u'/');
    if (slash == std::u16string_view::npos) {
        m_format.remove_prefix(1);
        return;
    }
    const std::size_t end = std::min(2 * slash + 1, m_format.size());
    m_text.append(m_time.hours() >= kNoon ? m_format.substr(slash + 1, end - slash - 1)
                                          : m_format.substr(0, slash));
    m_format.remove_prefix(end);
}

// Up to three zeros, one of which has been taken: tenths, hundredths or milliseconds.
void DateWalker::writeFraction() {
    constexpr std::size_t kMaxZeros = 3;
    std::size_t zeros = 1;
    while (zeros < kMaxZeros && zeros - 1 < m_format.size() && m_format[zeros - 1] == u'0') {
        ++zeros;
    }
    const auto milliseconds = static_cast<double>(m_time.milliseconds());
    constexpr std::array<double, 4> kUnits = {1000, 100, 10, 1};
    constexpr std::array<long long, 4> kCounts = {1, 10, 100, 1000};
    const auto fraction = static_cast<long long>(std::floor(milliseconds / kUnits[zeros] + 0.5));
    writeNumber(fraction % kCounts[zeros], 1);  // On purpose: without its leading zeros.
    // On purpose: a character behind the zeros is lost, the quote of a literal too.
    m_format.remove_prefix(std::min(zeros, m_format.size()));
}

}  // namespace ZroCommon::internal
