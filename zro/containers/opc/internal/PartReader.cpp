#include "zro/containers/opc/internal/PartReader.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <istream>
#include <limits>
#include <new>
#include <streambuf>

#include "zro/xml/ZRXmlUtil.h"

namespace ZroCommon::internal {
namespace {

// As much as entities may bring in: 100 times the bytes, 8 Mi in any case.
constexpr ZRLimits guards() {
    ZRLimits limits = ZRLimits::strict();
    limits.skipExternal = true;
    limits.elementDepth = 0;  // the parser takes any depth, and what stands deep is passed over
    return limits;
}

std::uint64_t enoughOf(ZRZipFileEntry& part) {
    if (part.getCompressionMethod() != CMETHOD_DEFLATE) {
        return std::numeric_limits<std::uint64_t>::max();  // nothing expands
    }
    const std::streamsize stored = part.getCompressedStream(false)->rdbuf()->in_avail();
    const auto size = static_cast<std::uint64_t>(std::max<std::streamsize>(stored, 0));
    return std::max(guards().entityExpansionThreshold, size * guards().entityExpansionFactor);
}

// Ends a stream after so many bytes.
class BoundedBuf final : public std::streambuf {
public:
    BoundedBuf(std::streambuf& source, std::uint64_t bytes) : m_source(source), m_left(bytes) {}

protected:
    int_type underflow() override {
        const auto wanted = static_cast<std::streamsize>(std::min<std::uint64_t>(m_left, kBlock));
        const std::streamsize count = m_source.sgetn(m_block.data(), wanted);
        if (count <= 0) {
            return traits_type::eof();
        }
        m_left -= static_cast<std::uint64_t>(count);
        setg(m_block.data(), m_block.data(), m_block.data() + count);
        return traits_type::to_int_type(m_block[0]);
    }

private:
    static constexpr std::size_t kBlock = 4096;

    std::streambuf& m_source;
    std::uint64_t m_left;
    std::array<char, kBlock> m_block{};
};

bool readAll(ZRXmlParser& parser, const StartTagReader& read) {
    for (;;) {
        switch (parser.next()) {
        case ZRXmlParser::START_TAG:
            if (!read(parser)) {
                return false;
            }
            break;
        case ZRXmlParser::END_DOCUMENT: return true;
        default: break;
        }
    }
}

}  // namespace

bool readStartTags(ZRZipFileEntry& part, const StartTagReader& read) {
    try {
        const std::uint64_t enough = enoughOf(part);
        BoundedBuf buffer(*part.getUncompressedStream(false)->rdbuf(), enough);
        std::istream stream(&buffer);
        const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
        parser->setLimits(guards());
        parser->setInput(stream, {}, {});
        return readAll(*parser, read);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (...) {
        return false;
    }
}

}  // namespace ZroCommon::internal
