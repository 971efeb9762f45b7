#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "zro/foundation/Text.h"
#include "zro/text/xls/XlsFormat.h"

namespace ZroCommon::internal {

/// Columns that one UTF-16 unit takes: 1 for printable ASCII and half-width forms, 2 for all
/// others.
constexpr int columnsOf(char16_t unit) {
    const bool isNarrow = (unit >= 0x20 && unit <= 0x7E) || (unit >= 0xFF61 && unit <= 0xFF9F);
    return isNarrow ? 1 : 2;
}

/// The caller's test of a finished text's width; none without a callback.
struct WidthTest {
    XlsWidthTest callback = nullptr;
    ZRLength length;
    int a = 0;
    int b = 0;
    void* user = nullptr;

    bool finds(const UnicodeString& text) const {
        return callback != nullptr && callback(user, text, length, a, b);
    }
};

/// `width` characters "#": what stands in for a text that is too wide.
UnicodeString overflowText(int width);

/// The text of a cell while it is written: counts its columns, and remembers the character that
/// fills it up and the place where that goes.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): what is read was written
class CellText {
public:
    void append(char16_t unit) {
        if (m_size == m_units.size()) {
            flush();
        }
        m_units[m_size++] = unit;
        m_columns += columnsOf(unit);
    }
    void append(std::u16string_view text) {
        for (const char16_t unit : text) {
            append(unit);
        }
    }
    void append(std::string_view ascii) {
        for (const char unit : ascii) {
            append(static_cast<char16_t>(unit));
        }
    }
    /// `count` times the ASCII character.
    void append(int count, char16_t unit) {
        for (; count > 0; --count) {
            append(unit);
        }
    }

    int columns() const { return m_columns; }

    /// The fill goes here. Of several, the last counts.
    void fillHere(char16_t unit) {
        m_fill = unit;
        m_fillAt = m_flushed.length() + static_cast<int>(m_size);
        m_isFilled = true;
    }

    /// Hands the text out without its fill.
    void writeTo(UnicodeString& result);
    /// Widens a text handed out to the columns, character by character; so a fill of double width
    /// gets it too wide.
    void fillUp(UnicodeString& result, int width) const;

private:
    void flush();

    std::array<char16_t, 96> m_units;
    std::size_t m_size = 0;
    int m_columns = 0;
    int m_fillAt = 0;
    char16_t m_fill = 0;
    bool m_isFilled = false;
    UnicodeString m_flushed;  // what did not fit
};

}  // namespace ZroCommon::internal
