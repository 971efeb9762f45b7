#pragma once

#include <optional>
#include <string_view>

#include "zro/text/xls/XlsFormat.h"
#include "zro/text/xls/internal/CellPlace.h"
#include "zro/text/xls/internal/CellText.h"
#include "zro/text/xls/internal/SerialDate.h"

namespace ZroCommon::internal {

/// Writes a serial date through the compiled text of a section.
class DateWalker {
public:
    enum class Outcome { Written, TooWide, NoSuchDate };

    DateWalker(const FMT& section, const CellPlace& place, CellText& text)
        : m_section(section), m_place(place), m_text(text) {}

    Outcome walk(double serial);

private:
    bool step();
    void copyQuoted();
    void writeFill();
    bool writeToken(char16_t letter);
    bool writeDay(int form);
    void writeWeekday(int form);
    bool writeMonth(int form);
    bool writeYear(int form);
    bool writeEra(int form);
    bool writeHours(int form);
    bool writeMinutes(int form);
    bool writeSeconds(int form);
    void writeDayHalf();
    void writeFraction();
    bool writeElapsed(long long count, int minDigits);
    void writeNumber(long long number, int minDigits);
    bool findDate();

    const FMT& m_section;
    const CellPlace& m_place;
    CellText& m_text;
    std::u16string_view m_format;  // what is still to be walked
    double m_serial = 0;
    std::optional<SerialDate> m_date;  // once it is asked for
    SerialTime m_time{0, 0};
};

}  // namespace ZroCommon::internal
