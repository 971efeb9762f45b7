#pragma once

#include <optional>

#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// A Japanese era.
struct Era {
    const char16_t* name;
    const char16_t* shortName;
    char16_t letter;
    int yearBefore;  ///< the calendar year ahead of its first
    int last1900;    ///< its last serial date in the system of 1900
    int last1904;    ///< the same in the system of 1904
};

/// The eras in order; the last has no end here.
const Era& eraAt(int index);

/// A day in the calendar of spreadsheets, in which 1900 is a leap year.
struct SerialDate {
    int year = 0;
    int month = 0;    ///< 1 to 12
    int day = 0;      ///< 0 for the serial date 0 of 1900
    int weekday = 0;  ///< 0 is Sunday, by the serial number alone
    int era = 0;      ///< index for `eraAt`

    /// None for a negative serial date and beyond 9999. The fraction of a day is dropped.
    static std::optional<SerialDate> of(double serial, bool isSystem1904);
};

/// The time of day of a serial date, rounded at the last place that is shown.
class SerialTime {
public:
    /// `serial` is not negative. \param decimals  places behind the seconds; more than 3 are none
    SerialTime(double serial, int decimals);

    long hours() const { return m_seconds / 3600; }  ///< 0 to 24: the last second may round up
    long minutes() const { return m_seconds / 60 % 60; }
    long seconds() const { return m_seconds % 60; }
    long secondsOfDay() const { return m_seconds; }
    long milliseconds() const { return m_milliseconds; }

    /// Whether the days are few enough to be counted in hours, minutes and seconds.
    bool isCountable() const { return m_days >= 0; }
    long long elapsedHours() const { return m_days * 24 + hours(); }
    long long elapsedMinutes() const { return m_days * 1440 + m_seconds / 60; }
    long long elapsedSeconds() const { return m_days * 86400 + m_seconds; }

private:
    long long m_days = -1;
    long m_seconds = 0;
    long m_milliseconds = 0;
};

}  // namespace ZroCommon::internal
