#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>

#include "zro/streams/ZRMemStream.h"
#include "zro/streams/transcoding/ZRTCVStream.h"

namespace zro {

/// Reads a document's characters the way the parser does: encoding by byte order mark, by the
/// pattern of the first bytes, then by the declaration.
class SourceDecoder {
public:
    explicit SourceDecoder(std::istream& input);

    /// The next character, U+FFFD for a broken one; nothing at the end.
    std::optional<char32_t> next();

    /// Whether the last character came of bytes that are malformed in UTF-8, though it may look
    /// like any other. In other encodings never.
    bool isBroken() const { return m_isBroken; }

    /// Reads on to the end. \return the number of such characters on the way
    std::uint64_t countBroken();

    /// Characters at the start that the parser looks at before it begins to count columns.
    int uncounted() const { return m_uncounted; }

    /// Some bytes from the start, to tell what kind of file this is.
    const std::string& firstBytes() const { return m_firstBytes; }

private:
    void sniff();
    void begin(const char* encoding, std::size_t markLength, int uncounted);
    bool refill();
    int nextByte();
    char32_t completeUtf8(unsigned first);
    std::optional<char32_t> nextUtf8();
    bool transcode(const std::string& encoding);
    std::optional<char32_t> nextTranscoded();
    std::optional<char16_t> nextUnit();

    std::istream& m_input;
    std::string m_bytes;
    std::size_t m_next = 0;
    std::string m_firstBytes;
    std::istringstream m_rest;  // of the bytes, for the transcoder
    ZroCommon::ZRMemStream m_all;
    std::unique_ptr<ZroCommon::ZRTCVStream> m_transcoder;  // null: UTF-8
    std::optional<char16_t> m_unit;                        // read behind the first half of a pair
    int m_uncounted = 0;
    bool m_isBroken = false;
};

}  // namespace zro
