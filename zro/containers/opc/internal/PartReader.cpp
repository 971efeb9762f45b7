#include "zro/containers/opc/internal/PartReader.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <istream>
#include <new>

#include "zro/foundation/StreamBuffer.h"
#include "zro/foundation/ZRError.h"
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

// Whether there is so much of a part that it may expand beyond what is always allowed.
bool needsBound(const ZRZipFileEntry& part) {
    constexpr std::uint64_t kMostOfDeflate = 1032;  // bytes from one: a block of noughts
    return part.getCompressionMethod() == CMETHOD_DEFLATE
           && part.getCompressedSize() > guards().entityExpansionThreshold / kMostOfDeflate;
}

std::uint64_t enoughOf(ZRZipFileEntry& part) {
    const std::streamsize stored = part.getCompressedStream(false)->rdbuf()->in_avail();
    return static_cast<std::uint64_t>(std::max<std::streamsize>(stored, 0))
           * guards().entityExpansionFactor;
}

// The data of a part, to where it makes too much of its bytes. How many those are is asked only
// behind what is always allowed.
class BoundedBuf final : public StreamBuffer {
public:
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): what is read was written
    explicit BoundedBuf(ZRZipFileEntry& part)
        : m_part(part), m_source(*part.getUncompressedStream(false)->rdbuf()) {}

protected:
    int_type underflow() override {
        const std::streamsize count = isTooMuch() ? 0 : m_source.sgetn(m_block.data(), kBlock);
        if (count <= 0) {
            return traits_type::eof();
        }
        m_given += static_cast<std::uint64_t>(count);
        setg(m_block.data(), m_block.data(), m_block.data() + count);
        return traits_type::to_int_type(m_block[0]);
    }

private:
    static constexpr std::streamsize kBlock = 4096;

    bool isTooMuch() const {
        return m_given >= guards().entityExpansionThreshold && m_given >= enoughOf(m_part);
    }

    ZRZipFileEntry& m_part;
    std::streambuf& m_source;
    std::uint64_t m_given = 0;
    std::array<char, kBlock> m_block;
};

bool readAll(std::istream& stream, const StartTagReader& read) {
    const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    parser->setLimits(guards());
    parser->setInput(stream, {}, {});
    for (;;) {
        switch (parser->next()) {
        case ZRXmlParser::START_TAG:
            if (!read(*parser)) {
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
        if (!needsBound(part)) {
            return readAll(*part.getUncompressedStream(false), read);
        }
        BoundedBuf buffer(part);
        std::istream stream(&buffer);
        return readAll(stream, read);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const ZRError& error) {
        constexpr unsigned short kOutOfMemory = 0x0801;  // no fault of the part's
        if (error.getErrorCode() == kOutOfMemory) {
            throw std::bad_alloc();
        }
        return false;
    } catch (...) {
        return false;
    }
}

}  // namespace ZroCommon::internal
