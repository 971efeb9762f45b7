#include "zro/text/xls/internal/CellText.h"

#include <algorithm>

namespace ZroCommon::internal {
namespace {

// No cell is wider; a width comes from a file, and what it claims is not worth gigabytes.
constexpr int kMaxColumns = 32767;

UnicodeString repeated(char16_t unit, int count) {
    const int length = std::clamp(count, 0, kMaxColumns);
    return {length, static_cast<UChar32>(unit), length};
}

}  // namespace

UnicodeString overflowText(int width) {
    return repeated(u'#', width);
}

void CellText::flush() {
    m_flushed.append(m_units.data(), static_cast<int>(m_size));
    m_size = 0;
}

void CellText::writeTo(UnicodeString& result) {
    if (m_flushed.isEmpty()) {
        result.setTo(m_units.data(), static_cast<int>(m_size));
        return;
    }
    flush();
    result = m_flushed;
}

void CellText::fillUp(UnicodeString& result, int width) const {
    if (m_isFilled) {
        result.insert(m_fillAt, repeated(m_fill, std::min(width, kMaxColumns) - m_columns));
    }
}

}  // namespace ZroCommon::internal
