#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <ostream>
#include <string_view>

#include "zro/foundation/Text.h"
#include "zro/foundation/internal/TextView.h"
#include "zro/platform/internal/CharEncoder.h"
#include "zro/xml/internal/PlainRun.h"

namespace ZroCommon::internal {

/// The bytes of a document on their way to a stream: escapes and encodes, and collects what one
/// operation writes in a block.
///
/// Nothing stays here between operations: each ends with `commit`, which hands the block over and
/// puts the stream into the failed state when its buffer did not take all.
class XmlOutput {
public:
    XmlOutput();

    /// Forgets what an operation that threw has left behind.
    void open(std::ostream& stream) {
        m_stream = &stream;
        m_used = 0;
        m_hasFailed = false;
    }
    /// \param isShiftJis  otherwise the encoding is UTF-8
    void setShiftJis(bool isShiftJis);

    void put(char byte) {
        if (m_used == kBlockSize) {
            drain();
        }
        m_block[m_used++] = byte;
    }

    /// A few ASCII characters, at most a block of them.
    void put(std::string_view text) {
        if (kBlockSize - m_used < text.size()) {
            drain();
        }
        std::memcpy(&m_block[m_used], text.data(), text.size());
        m_used += text.size();
    }

    /// A character that the encoding lacks becomes a numeric reference whatever the escape.
    void put(const UnicodeString& text, Escape escape) { put(viewOf(text), escape); }
    void put(std::u16string_view text, Escape escape) {
        switch (escape) {
        case Escape::None: return putEscaped<Escape::None>(text);
        case Escape::Text: return putEscaped<Escape::Text>(text);
        case Escape::Attribute: return putEscaped<Escape::Attribute>(text);
        }
    }

    void commit();

private:
    static constexpr std::size_t kBlockSize = 16384;
    static constexpr std::size_t kReserve = 16;  // room for the longest piece of one character

    template <Escape kEscape>
    void putEscaped(std::u16string_view text);
    void putAsciiEntity(char16_t unit);
    std::size_t putUtf8Run(std::u16string_view text);
    std::size_t putEncoded(std::u16string_view text);
    void putReference(char32_t character);
    void drain();

    std::ostream* m_stream = nullptr;
    bool m_hasFailed = false;  // in this operation
    bool m_isShiftJis = false;
    std::unique_ptr<CharEncoder> m_encoder;  // of Shift_JIS; made when first needed
    std::size_t m_used = 0;
    std::unique_ptr<char[]> m_block;
};

}  // namespace ZroCommon::internal
