#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "zro/containers/ole/OleStream.h"
#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// The numbers, bytes and texts of a property-set stream, read from where it stands.
///
/// A read that falls short fails and leaves the stream at the end of what there was. Lengths come
/// from the file, so memory is taken only for what has come. One thread at a time.
class PropertyReader {
public:
    explicit PropertyReader(std::unique_ptr<OleStream> stream) : m_stream(std::move(stream)) {}

    /// Reads a byte order mark; the numbers behind it are read in its order.
    bool readOrder();

    /// As far as there is something; the end for what lies behind it.
    bool seek(std::uint32_t position);
    std::uint32_t position() const;

    /// The end of the farthest successful read: how long the stream is at the least.
    std::uint32_t reach() const { return m_reach; }

    /// Says that so many bytes from here on will be asked for whatever they are, so that they can
    /// be fetched together. To fetch more would not do: bytes of a stream that has come to its end
    /// are the last ones it gives.
    void expect(std::uint64_t bytes) { m_expected = bytes; }

    /// \return bytes read
    std::size_t readBytes(void* to, std::size_t count);
    /// \return whole numbers read
    std::size_t readNumbers(std::span<std::uint32_t> numbers);
    bool readNumber(std::uint32_t& number) { return readNumbers({&number, 1}) == 1; }

    bool readString(std::uint32_t length, std::string& bytes);
    /// \param length  in UTF-16 units
    bool readUnits(std::uint64_t length, UnicodeString& units);
    bool skip(std::uint32_t length);

private:
    std::size_t fetch(void* to, std::size_t count);

    std::unique_ptr<OleStream> m_stream;
    std::vector<unsigned char> m_ahead;  // fetched and not asked for yet, from `m_aheadAt` on
    std::size_t m_aheadAt = 0;
    std::uint64_t m_expected = 0;
    bool m_isLittleEndian = true;
    std::uint32_t m_reach = 0;
};

}  // namespace ZroCommon::internal
