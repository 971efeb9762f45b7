// Streams over sources and targets that do harm: single bytes, an end at byte k for each k, and
// buffers that throw there, below streams that throw themselves.
#include "tests/support/Deflate.h"
#include "tests/support/Streams.h"
#include "tests/support/Test.h"
#include "zro/streams/ZRCustomStream.h"
#include "zro/streams/ZRMemStream.h"
#include "zro/streams/compression/ZRGzipStream.h"
#include "zro/streams/transcoding/ZRTCVOStream.h"

namespace ZroCommon::testing {
namespace {

std::string contentOf(std::istream&& stream) {
    std::string content;
    for (char byte = 0; stream.read(&byte, 1);) {
        content += byte;
    }
    return content;
}

/// Reads from the stream below by its buffer, and writes to it.
class StreamController : public ZRCustomStreamController {
public:
    explicit StreamController(std::streambuf& below) : m_below(below) {}
    void close() override {}
    int read(char* buffer, int size) override {
        const std::streamsize count = m_below.sgetn(buffer, size);
        return count == 0 ? -1 : static_cast<int>(count);
    }
    int write(const char* buffer, int size) override {
        return static_cast<int>(m_below.sputn(buffer, size));
    }

private:
    std::streambuf& m_below;
};

std::string throughController(std::istream& source) {
    StreamController controller(*source.rdbuf());
    return contentOf(ZRCustomStream(&controller));
}

const std::string kText = noise(300) + std::string(300, 'x');

using Through = std::string (*)(std::istream&);
const Rows<const char*, std::string, Through> kReaders = {
    {"ZRMemStream", kText,
     [](auto& source) {
         return contentOf(ZRMemStream(&source, 64, false));
     }},
    {"ZRGzipStream", deflated(kText, kGzip),
     [](auto& source) {
         return contentOf(ZRGzipStream(source));
     }},
    {"ZRCustomStream", kText, throughController},
};

template <class Buf, class... Arguments>
std::string readBy(Through through, std::ios::iostate thrown, Arguments... arguments) {
    StreamOver<Buf> source(arguments...);
    source.exceptions(thrown);
    return through(source);
}

// What breaks off within its gzip header is handed on as it stands.
TEST(StreamFaults, WhatBreaksOffOrThrowsGivesWhatCameBefore) {
    for (const auto& [name, bytes, through] : kReaders) {
        const std::string whole = readBy<std::stringbuf>(through, std::ios::goodbit, bytes);
        EXPECT_GE(whole.size(), 300U) << name;
        EXPECT_EQ(readBy<Rewinding<ShortReadBuf>>(through, std::ios::goodbit, bytes), whole)
            << name;
        for (std::size_t at = 0; at < bytes.size(); ++at) {
            for (const auto thrown : {std::ios::goodbit, std::ios::badbit | std::ios::failbit}) {
                for (const std::string& part :
                     {readBy<Rewinding<FailAtBuf>>(through, thrown, bytes, at),
                      readBy<Rewinding<ThrowAtBuf>>(through, thrown, bytes, at)}) {
                    EXPECT_TRUE(whole.starts_with(part) || bytes.starts_with(part))
                        << name << " at " << at << ", " << part.size();
                }
            }
        }
    }
}

/// Takes `room` bytes; then refuses or throws.
class FullBuf : public std::streambuf {
public:
    FullBuf(std::size_t room, bool throws) : m_room(room), m_throws(throws) {}
    const std::string& taken() const { return m_taken; }

protected:
    int_type overflow(int_type character) override {
        if (m_taken.size() == m_room) {
            return m_throws ? throw std::runtime_error("FullBuf") : traits_type::eof();
        }
        m_taken += traits_type::to_char_type(character);
        return character;
    }

private:
    std::size_t m_room;
    bool m_throws;
    std::string m_taken;
};

void writeTranscoded(std::ostream& target) {
    ZRTCVOStream stream(&target, "ISO-2022-JP", false, ZRTCVOStream::LF_CONVERT(0), false);
    stream.writeString(u"\u3042a\u3044" + UnicodeString(300, u'x', 300));
    stream.flush();
    stream.writeRawBuffer("raw", 3);
    std::istringstream source("raw");
    stream.writeRawStream(source);
}

void writeCustom(std::ostream& target) {
    StreamController controller(*target.rdbuf());
    ZRCustomStream(&controller) << kText;
}

TEST(StreamFaults, TargetsThatRefuseOrThrowGetWhatFits) {
    for (const auto& [name, write] :
         Rows<const char*, void (*)(std::ostream&)>{{"ZRGzipOStream",
                                                     [](std::ostream& target) {
                                                         ZRGzipOStream(target) << kText;
                                                     }},
                                                    {"ZRTCVOStream", writeTranscoded},
                                                    {"ZRCustomStream", writeCustom}}) {
        std::ostringstream sound;
        write(sound);
        const std::string whole = sound.str();
        EXPECT_GE(whole.size(), 200U) << name;
        for (std::size_t room = 0; room <= whole.size(); ++room) {
            for (const bool throws : {false, true}) {
                FullBuf full(room, throws);
                std::ostream target(&full);
                target.exceptions(room % 2 == 0 ? std::ios::badbit : std::ios::goodbit);
                EXPECT_NO_THROW(write(target)) << name << " at " << room;
                EXPECT_EQ(full.taken(), whole.substr(0, full.taken().size())) << name;
            }
        }
    }
}

}  // namespace
}  // namespace ZroCommon::testing
