#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>

#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// A copy of a text with U+0000 behind it, on the stack when it is short. A bogus text is empty.
class TerminatedText {
public:
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): to clear it costs more than to read
    explicit TerminatedText(const UnicodeString& text) : m_data(m_short) {
        const auto length = static_cast<std::size_t>(text.length());
        if (length >= std::size(m_short)) {
            m_long = std::make_unique<char16_t[]>(length + 1);
            m_data = m_long.get();
        }
        *std::copy_n(text.getBuffer(), length, m_data) = 0;
    }
    TerminatedText(const TerminatedText&) = delete;
    TerminatedText& operator=(const TerminatedText&) = delete;

    const char16_t* data() const { return m_data; }

private:
    char16_t m_short[128];
    std::unique_ptr<char16_t[]> m_long;
    char16_t* m_data;
};

}  // namespace ZroCommon::internal
