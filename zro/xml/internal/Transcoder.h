#pragma once

#include <array>
#include <istream>
#include <memory>

#include "zro/foundation/StreamBuffer.h"
#include "zro/foundation/Text.h"
#include "zro/xml/internal/ByteSource.h"

namespace ZroCommon::internal {

/// Opens a stream of UTF-16LE over bytes in the named encoding.
/// \param bytes  may be null, when a name is tried out with no input; outlives the result
/// \return null when there is no conversion of that name; then no byte was read
using TranscoderFactory = std::unique_ptr<std::istream> (*)(std::istream* bytes,
                                                            const UnicodeString& name);

/// Where the parser gets its transcoders from: `ZRTCVStream`, unless another factory is set. Set
/// before threads start; null knows no encoding.
/// \return the previous one
TranscoderFactory setTranscoderFactory(TranscoderFactory factory);

std::unique_ptr<std::istream> openTranscoder(std::istream* bytes, const UnicodeString& name);

/// Serves a byte source from where it stands: first what was read ahead, then its stream.
class RestStream final : public std::istream {
public:
    explicit RestStream(ByteSource source);

    /// The source back again, as long as nothing was read.
    ByteSource release() { return std::move(m_buffer.source); }

private:
    class Buffer final : public StreamBuffer {
    public:
        explicit Buffer(ByteSource bytes) : source(std::move(bytes)) {}
        ByteSource source;

    private:
        int_type underflow() override;

        std::array<char, 4096> m_block{};  // as much as a transcoder reads at a time
    };

    Buffer m_buffer;
};

}  // namespace ZroCommon::internal
