#include "zro/streams/transcoding/ZRTCVStream.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>

#include "zro/platform/internal/EncodingDetector.h"
#include "zro/streams/internal/ReadSource.h"
#include "zro/streams/transcoding/internal/OpenConversion.h"
#include "zro/uri/internal/OpenResource.h"

namespace ZroCommon {
namespace {

constexpr std::size_t kPutback = 16;
constexpr std::size_t kBlock = 4096;
constexpr std::size_t kDetectionBytes = 2048;
constexpr std::size_t kStartBytes = 128;  // in which a detection must hold, too

// A stream that cannot seek is left failed.
void rewind(std::istream& source) {
    try {
        if (source.fail()) {
            source.clear();
        }
        source.seekg(0);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (...) {
        return;  // as its mask asks for
    }
}

UnicodeString detectedName(std::istream* source) {
    UnicodeString name;
    bool flag = true;
    return ZRTCVStream::detectEncoding(source, name, flag) ? name : UnicodeString();
}

std::unique_ptr<internal::CodeConverter> openConversion(std::istream* source,
                                                        const char* encoding) {
    if (encoding != nullptr) {
        return internal::openReadingConversion(encoding);
    }
    std::string name;
    detectedName(source).toUTF8String(name);
    return internal::openReadingConversion(name.c_str());
}

}  // namespace

ZRTCVStreamBuf::ZRTCVStreamBuf(std::istream* source, const char* encoding)
    : m_source(source), m_converter(openConversion(source, encoding)) {
    if (m_converter == nullptr) {
        return;
    }
    m_input.reset(new char[kBlock]);
    m_output.reset(new char[kPutback + kBlock]);
    const std::size_t end = convertMore(0);
    if (m_converter == nullptr) {
        m_output.reset();
        return;
    }
    setg(m_output.get(), m_output.get(), m_output.get() + end);
}

ZRTCVStreamBuf::~ZRTCVStreamBuf() = default;

void ZRTCVStreamBuf::close() {
    m_converter.reset();
    m_input.reset();
}

void ZRTCVStreamBuf::topUpInput() {
    if (m_source != nullptr && m_source->good() && m_inputLength < kBlock) {
        m_inputLength +=
            internal::readReady(*m_source, m_input.get() + m_inputLength, kBlock - m_inputLength);
    }
}

// Converts until something has come behind what was kept; an escape sequence alone gives nothing.
// Closes when the conversion fails. \return the end of the output
std::size_t ZRTCVStreamBuf::convertMore(std::size_t kept) {
    internal::ConversionBlock block{
        .in = m_input.get(), .out = m_output.get(), .outLength = kept, .outCapacity = kBlock};
    for (bool goesOn = true; goesOn && block.outLength == kept;) {
        const std::size_t held = m_inputLength;
        topUpInput();
        const bool atEnd = m_source == nullptr || !m_source->good();
        block.inPos = 0;
        block.inLength = m_inputLength;
        if (!m_converter->convert(block, atEnd)) {
            close();
            break;
        }
        goesOn = block.inPos != 0 || (m_inputLength != held && !atEnd);
        m_inputLength -= block.inPos;
        std::memmove(m_input.get(), m_input.get() + block.inPos, m_inputLength);
    }
    return block.outLength;
}

ZRTCVStreamBuf::int_type ZRTCVStreamBuf::underflow() {
    if (gptr() < egptr()) {
        return traits_type::to_int_type(*gptr());
    }
    if (m_converter == nullptr) {
        return traits_type::eof();
    }
    const std::size_t kept = std::min(kPutback, static_cast<std::size_t>(gptr() - eback()));
    std::memmove(m_output.get(), gptr() - kept, kept);
    const std::size_t end = convertMore(kept);
    setg(m_output.get(), m_output.get() + kept, m_output.get() + end);
    if (m_converter == nullptr || end == kept) {
        close();
        return traits_type::eof();
    }
    return traits_type::to_int_type(*gptr());
}

ZRTCVStream::ZRTCVStream(std::istream* source, const char* encoding)
    : std::basic_istream<char>(nullptr), m_buffer(source, encoding) {
    init(&m_buffer);
}

ZRTCVStream::~ZRTCVStream() = default;

bool ZRTCVStream::detectEncoding(std::istream* source, UnicodeString& encoding, bool& flag) {
    if (source == nullptr) {
        return false;
    }
    std::array<char, kDetectionBytes> bytes{};
    const std::size_t count = internal::readSource(*source, bytes.data(), bytes.size());
    rewind(*source);
    const std::string_view start(bytes.data(), count);
    const std::optional<std::string> name = internal::detectEncoding(start);
    if (!name) {
        return false;
    }
    encoding = UnicodeString::fromUTF8(*name);
    flag = true;
    return count <= kStartBytes || internal::detectEncoding(start.substr(0, kStartBytes));
}

bool ZRTCVStream::detectEncoding(const char* path, UnicodeString& encoding, bool& flag) {
    if (path == nullptr) {
        return false;
    }
    const ZRUri uri(UnicodeString::fromUTF8(path), URISTR_PATH_OR_URI_CSS);
    const std::unique_ptr<std::istream> source(uri.getStream(nullptr));
    return detectEncoding(source.get(), encoding, flag);
}

void ZRTCVStream::setTCVTablePath(const UnicodeString& path) {
    internal::setConversionTables(path);
}

}  // namespace ZroCommon
