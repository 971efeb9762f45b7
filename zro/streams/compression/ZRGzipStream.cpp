#include "zro/streams/compression/ZRGzipStream.h"

#include <algorithm>
#include <utility>

#include "zro/platform/internal/NativeFile.h"
#include "zro/streams/compression/internal/GzipReader.h"
#include "zro/streams/compression/internal/GzipWriter.h"

namespace ZroCommon {
namespace {

constexpr std::streamsize kBlockSize = internal::ExpandedBlock::kSize;

}  // namespace

ZRGzipStreamBuf::ZRGzipStreamBuf(const UnicodeString& path)
    : m_reader(internal::readGzipFile(internal::openInputFile(path))) {}

ZRGzipStreamBuf::ZRGzipStreamBuf(const char* path) {
    if (path != nullptr) {
        m_reader = internal::readGzipFile(internal::openInputFile(UnicodeString::fromUTF8(path)));
    }
}

ZRGzipStreamBuf::ZRGzipStreamBuf(const char16_t* path) {
    if (path != nullptr) {
        m_reader = internal::readGzipFile(internal::openInputFile(UnicodeString(path)));
    }
}

ZRGzipStreamBuf::ZRGzipStreamBuf(std::istream& stream)
    : m_reader(internal::readGzipStream(stream)) {}

ZRGzipStreamBuf::~ZRGzipStreamBuf() = default;

ZRGzipStreamBuf::int_type ZRGzipStreamBuf::underflow() {
    if (gptr() < egptr()) {
        return traits_type::to_int_type(*gptr());
    }
    if (!is_open()) {
        return traits_type::eof();
    }
    internal::ExpandedBlock& block = m_reader->block();
    const std::size_t made = m_reader->read(block.next(eback(), gptr()));
    if (made == 0) {
        return traits_type::eof();
    }
    setg(block.begin(), block.bytes(), block.bytes() + made);
    return traits_type::to_int_type(*gptr());
}

// Whole blocks go where they are wanted, at the same places in the data as if they came by the
// area.
std::streamsize ZRGzipStreamBuf::xsgetn(char* bytes, std::streamsize count) {
    std::streamsize done = 0;
    while (done < count) {
        const std::streamsize piece = std::min<std::streamsize>(egptr() - gptr(), count - done);
        if (piece > 0) {
            std::copy_n(gptr(), piece, bytes + done);
            setg(eback(), gptr() + piece, egptr());
            done += piece;
        } else if (is_open() && count - done >= kBlockSize) {
            const std::streamsize made =
                readBlocks(bytes + done, count - done - (count - done) % kBlockSize);
            if (made == 0) {
                break;
            }
            done += made;
        } else if (traits_type::eq_int_type(underflow(), traits_type::eof())) {
            break;
        }
    }
    return done;
}

// Reads past the area, which keeps the end to be put back. \return the count, 0 at the end
std::streamsize ZRGzipStreamBuf::readBlocks(char* bytes, std::streamsize size) {
    internal::ExpandedBlock& block = m_reader->block();
    block.next(eback(), gptr());
    const std::size_t made = m_reader->read({bytes, static_cast<std::size_t>(size)});
    if (made > 0) {
        block.keepEndOf({bytes, made});
        setg(block.begin(), block.bytes(), block.bytes());
    }
    return static_cast<std::streamsize>(made);
}

ZRGzipStream::ZRGzipStream(const UnicodeString& path)
    : std::basic_istream<char>(nullptr), m_buffer(path) {
    init(&m_buffer);
}

ZRGzipStream::ZRGzipStream(const char* path) : std::basic_istream<char>(nullptr), m_buffer(path) {
    init(&m_buffer);
}

ZRGzipStream::ZRGzipStream(std::istream& stream)
    : std::basic_istream<char>(nullptr), m_buffer(stream) {
    init(&m_buffer);
}

ZRGzipStream::~ZRGzipStream() = default;

ZRGzipOStreamBuf::ZRGzipOStreamBuf(const UnicodeString& path) {
    auto file = internal::openOutputFile(path);
    std::ostream* const target = file.get();
    m_writer = std::make_unique<internal::GzipWriter>(target, std::move(file));
    resetPut();
}

ZRGzipOStreamBuf::ZRGzipOStreamBuf(std::ostream& stream)
    : m_writer(std::make_unique<internal::GzipWriter>(&stream)) {
    resetPut();
}

ZRGzipOStreamBuf::~ZRGzipOStreamBuf() {
    try {
        m_writer->finish({pbase(), pptr()});
    } catch (...) {  // NOLINT(bugprone-empty-catch): nobody is left who could be told
    }
}

void ZRGzipOStreamBuf::resetPut() {
    auto& room = m_writer->room();
    setp(room.data(), room.data() + room.size());
}

ZRGzipOStreamBuf::int_type ZRGzipOStreamBuf::overflow(int_type character) {
    m_writer->write({pbase(), pptr()});
    resetPut();
    if (traits_type::eq_int_type(character, traits_type::eof())) {
        return traits_type::not_eof(character);
    }
    return sputc(traits_type::to_char_type(character));
}

// On purpose: a flush ends the data, and what is written behind it is lost.
int ZRGzipOStreamBuf::sync() {
    m_writer->finish({pbase(), pptr()});
    resetPut();
    return 0;
}

ZRGzipOStream::ZRGzipOStream(const UnicodeString& path)
    : std::basic_ostream<char>(nullptr), m_buffer(path) {
    init(&m_buffer);
}

ZRGzipOStream::ZRGzipOStream(std::ostream& stream)
    : std::basic_ostream<char>(nullptr), m_buffer(stream) {
    init(&m_buffer);
}

ZRGzipOStream::~ZRGzipOStream() = default;

}  // namespace ZroCommon
