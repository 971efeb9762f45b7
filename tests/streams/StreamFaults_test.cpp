// Every stream class over sources and targets that do harm: single bytes, an end at byte k for each
// k, and buffers that throw there.
#include <functional>
#include <istream>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "tests/support/Deflate.h"
#include "tests/support/Rows.h"
#include "tests/support/Streams.h"
#include "tests/support/ZipBuilder.h"
#include "zro/containers/zip/ZRZipFile.h"
#include "zro/streams/ZRCustomStream.h"
#include "zro/streams/ZRMemStream.h"
#include "zro/streams/ZRStrStream.h"
#include "zro/streams/compression/ZRGzipStream.h"
#include "zro/streams/compression/ZRInflaterStream.h"
#include "zro/streams/transcoding/ZRTCVOStream.h"
#include "zro/streams/transcoding/ZRTCVStream.h"

namespace ZroCommon::testing {
namespace {

std::string contentOf(std::istream& stream) {
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

std::string blockOf(std::istream& source) {
    return contentOf(source);  // what these classes read lies in memory
}

// What each class makes of a source.

std::string throughMemory(std::istream& source) {
    ZRMemStream stream(&source, 64, false);
    return contentOf(stream);
}

std::string throughGzip(std::istream& source) {
    ZRGzipStream stream(source);
    return contentOf(stream);
}

std::string throughInflater(std::istream& source) {
    const std::string block = blockOf(source);
    ZRInflaterStream stream(block.data(), block.size(), false);
    return contentOf(stream);
}

std::string throughString(std::istream& source) {
    const std::string block = blockOf(source);
    ZRStrStream stream(block.data(), block.size());
    return contentOf(stream);
}

std::string throughTranscoder(std::istream& source) {
    ZRTCVStream stream(&source, "Shift_JIS");
    return contentOf(stream);
}

std::string throughController(std::istream& source) {
    StreamController controller(*source.rdbuf());
    ZRCustomStream stream(&controller);
    return contentOf(stream);
}

std::string throughPackage(std::istream& source) {
    ZRMemStream seekable(&source, 64, false);
    const ZRZipFile package(&seekable, false);
    ZRZipFileEntry* const entry = package.getFileEntry(u"b");
    return entry == nullptr ? "" : contentOf(*entry->getUncompressedStream(false));
}

const std::string kText = noise(300) + std::string(300, 'x');

using Through = std::string (*)(std::istream&);
const Rows<const char*, std::string, Through> kReaders = {
    {"ZRMemStream", kText, throughMemory},
    {"ZRGzipStream", deflated(kText, kGzip), throughGzip},
    {"ZRInflaterStream", deflated(kText), throughInflater},
    {"ZRStrStream", kText, throughString},
    {"ZRTCVStream", std::string("a\x82\xA0\x83\x41") + std::string(300, 'x'), throughTranscoder},
    {"ZRCustomStream", kText, throughController},
    {"ZRZipFile", ZipBuilder().stored("a", "a").deflated("b", kText).package(), throughPackage},
};

std::string readBy(Through through, std::streambuf& buffer) {
    std::istream source(&buffer);
    return through(source);
}

TEST(StreamFaults, SingleBytesReadAsAWhole) {
    for (const auto& [name, bytes, through] : kReaders) {
        std::stringbuf sound(bytes);
        const std::string whole = readBy(through, sound);
        EXPECT_GE(whole.size(), 300U) << name;
        Rewinding<ShortReadBuf> single(bytes);
        EXPECT_EQ(readBy(through, single), whole) << name;
    }
}

// Without what stands for a character that was cut.
std::string wholeCharacters(const std::string& part) {
    return part.ends_with("\xFD\xFF") ? part.substr(0, part.size() - 2) : part;
}

// What breaks off within its gzip header is handed on as it stands.
TEST(StreamFaults, WhatBreaksOffOrThrowsGivesWhatCameBefore) {
    for (const auto& [name, bytes, through] : kReaders) {
        std::stringbuf sound(bytes);
        const std::string whole = readBy(through, sound);
        for (std::size_t at = 0; at < bytes.size(); ++at) {
            Rewinding<FailAtBuf> ending(bytes, at);
            Rewinding<ThrowAtBuf> throwing(bytes, at);
            for (std::streambuf* buffer :
                 {static_cast<std::streambuf*>(&ending), static_cast<std::streambuf*>(&throwing)}) {
                const std::string part = readBy(through, *buffer);
                EXPECT_TRUE(whole.starts_with(wholeCharacters(part)) || bytes.starts_with(part))
                    << name << " at " << at << ", " << part.size();
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

void writeGzip(std::ostream& target) {
    ZRGzipOStream stream(target);
    stream << kText;
}

void writeTranscoded(std::ostream& target) {
    ZRTCVOStream stream(&target, "ISO-2022-JP", false, ZRTCVOStream::LF_CONVERT(0), false);
    stream.writeString(u"\u3042a\u3044" + UnicodeString(300, u'x', 300));
}

void writeCustom(std::ostream& target) {
    StreamController controller(*target.rdbuf());
    ZRCustomStream stream(&controller);
    stream << kText;
}

TEST(StreamFaults, TargetsThatRefuseOrThrowGetWhatFits) {
    const Rows<const char*, void (*)(std::ostream&)> writers = {{"ZRGzipOStream", writeGzip},
                                                                {"ZRTCVOStream", writeTranscoded},
                                                                {"ZRCustomStream", writeCustom}};
    for (const auto& [name, write] : writers) {
        std::ostringstream sound;
        write(sound);
        const std::string whole = sound.str();
        EXPECT_GE(whole.size(), 200U) << name;
        for (std::size_t room = 0; room <= whole.size(); ++room) {
            for (const bool throws : {false, true}) {
                FullBuf full(room, throws);
                std::ostream target(&full);
                EXPECT_NO_THROW(write(target)) << name << " at " << room;
                EXPECT_EQ(full.taken(), whole.substr(0, full.taken().size())) << name;
            }
        }
    }
}

}  // namespace
}  // namespace ZroCommon::testing
