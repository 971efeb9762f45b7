#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>

#include "zro/foundation/Text.h"
#include "zro/xml/internal/ByteSource.h"
#include "zro/xml/internal/Encoding.h"

namespace ZroCommon::internal {

/// A stretch of characters to be read: from `start` on they were or can be read, `at` is the next.
struct Run {
    const char16_t* start = nullptr;
    const char16_t* at = nullptr;
    const char16_t* end = nullptr;
};

/// One input: the document or an external entity, its bytes, encoding and names, and a window of
/// decoded characters that moves over it.
class DecodedInput {
public:
    enum class Fill : std::uint8_t {
        Filled,
        Special,  ///< `takeSpecial` has the next character, one that no window holds
        End,
    };

    DecodedInput() = default;
    DecodedInput(const DecodedInput&) = delete;
    DecodedInput& operator=(const DecodedInput&) = delete;

    /// Reads from a stream of the caller's.
    void open(std::istream& stream);
    void open(std::unique_ptr<std::istream> stream);
    /// Lets go of the stream. Names and encoding stay.
    void close();
    /// The same, names and encoding included. The memory is kept for the next stream.
    void reset();
    /// Behind `reset`: gives the memory of a large stream back.
    void shrink();

    /// The stream as it was opened, null when there is none.
    std::istream* baseStream() const { return m_baseStream; }
    /// The stream that is read, which may be a transcoder over the base stream.
    std::istream* stream() const { return m_source.stream(); }
    bool isTranscoded() const { return m_transcoder != nullptr; }

    Encoding encoding;
    UnicodeString uri;
    UnicodeString baseUri;

    /// Whether bytes are left to decode. The window stays, so that its end can still be looked at.
    bool hasMore();
    /// Makes room for the next window and frees the old one; its last two units stay, in front.
    /// \param window  in: what was read; out: the new window, with nothing to read yet
    void makeWindow(Run& window);
    /// Decodes into the window that `makeWindow` made. When it throws, nothing is lost.
    /// \param tail    `Closed` or `Nested`, what comes behind the end of this input
    Fill refill(Run& window, InputTail tail);

    /// Takes the character that stopped the window: a single surrogate, FFFF, one above 10FFFF, or
    /// a CR that ends a nested input.
    char32_t takeSpecial();

    /// Takes the character behind a CR that the bytes did not hold; to be called behind `settle`.
    /// \param next  is U+FFFF when the CR takes it; see `isTakenByReturn`
    /// \return false at the end of a nested input, when the outer one has it
    bool takeBehindReturn(InputTail tail, char32_t& next);

    /// True when all bytes were decoded and the end was met.
    bool atEnd() const { return m_source.atEnd(); }

    /// Whether the unit in front of `window.at` was made from a CR alone, with which the character
    /// behind it was read.
    bool isBehindReturn(const Run& window) const;

    /// Drops the rest of the window, so that reading goes on with the bytes behind the unit at
    /// `window.at`, be it in another mode or by another hand.
    void settle(Run& window);

    /// The bytes from which the window was not yet decoded.
    ByteSource& bytes() { return m_source; }

    /// Puts a transcoder over the bytes that are left. \return false when there is none of that
    /// name; nothing has changed then.
    bool transcode(const UnicodeString& name);

    /// Bytes read so far.
    std::size_t total() const { return m_source.total(); }

private:
    std::size_t unitsRead(const Run& window) const {
        return static_cast<std::size_t>(window.at - m_units.get()) - m_history;
    }

    std::unique_ptr<std::istream> m_ownStream;
    std::istream* m_baseStream = nullptr;
    std::unique_ptr<std::istream> m_rest;  // what the transcoder reads from
    std::unique_ptr<std::istream> m_transcoder;
    ByteSource m_source;
    std::unique_ptr<char16_t[]> m_units;
    std::size_t m_capacity = 0;
    std::size_t m_history = 0;       // units of the window before
    std::size_t m_limit = 0;         // units of the next window; small at first
    std::size_t m_decodedBytes = 0;  // that the window was made from
};

}  // namespace ZroCommon::internal
