// Gzip data that comes from a stream.
#include <array>
#include <new>

#include "zro/streams/compression/internal/GzipHeader.h"
#include "zro/streams/compression/internal/GzipReader.h"
#include "zro/streams/compression/internal/InflateState.h"
#include "zro/streams/internal/ReadSource.h"

namespace ZroCommon::internal {
namespace {

// As much at a time as callers may find their stream moved on.
constexpr std::size_t kInputSize = 4096;

class StreamBytes {
public:
    explicit StreamBytes(std::istream& stream) : m_stream(stream) {}

    int next() {
        char byte = 0;
        return readSource(m_stream, &byte, 1) == 0 ? -1 : static_cast<unsigned char>(byte);
    }

private:
    std::istream& m_stream;
};

// Failures are left in the state of the stream, which may be told to throw them at its owner.
void seekStart(std::istream& stream) {
    try {
        stream.seekg(0);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (...) {
        return;
    }
}

// To the start again, also from the end of a stream that is shorter than a header.
void goBack(std::istream& stream) {
    if (stream.eof()) {
        stream.clear();
    }
    seekStart(stream);
}

class GzipSource final : public GzipReader {
public:
    explicit GzipSource(std::istream& stream) : m_stream(stream) {}

    std::size_t read(std::span<char> room) override {
        std::size_t made = 0;
        while (made < room.size()) {
            made += m_state.expand(room.subspan(made));
            if (!m_state.needsInput() || !fill()) {
                break;
            }
        }
        return made;
    }

private:
    bool fill() {
        const std::size_t got = readSource(m_stream, m_memory.data(), m_memory.size());
        m_state.setInput({m_memory.data(), got}, false);
        return got > 0;
    }

    std::istream& m_stream;
    std::array<char, kInputSize> m_memory{};
    InflateState m_state;
};

class PlainSource final : public GzipReader {
public:
    explicit PlainSource(std::istream& stream) : m_stream(stream) {}

    std::size_t read(std::span<char> room) override {
        return readSource(m_stream, room.data(), std::min(room.size(), kInputSize));
    }

private:
    std::istream& m_stream;
};

}  // namespace

std::unique_ptr<GzipReader> readGzipStream(std::istream& stream) {
    seekStart(stream);
    StreamBytes bytes(stream);
    GzipHeader<StreamBytes> header(bytes);
    if (header.readStart()) {
        // On purpose: a wrong check value changes nothing, as little as that behind the data does.
        header.skipRest();
        return std::make_unique<GzipSource>(stream);
    }
    goBack(stream);
    return std::make_unique<PlainSource>(stream);
}

}  // namespace ZroCommon::internal
