// What opening costs in memory, and what becomes of it where there is none.
#include <filesystem>
#include <iterator>
#include <memory>
#include <optional>
#include <sstream>

#include "tests/support/Deflate.h"
#include "tests/support/FakeWeb.h"
#include "tests/support/Memory.h"
#include "tests/support/Streams.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Test.h"
#include "tests/support/ZipBuilder.h"
#include "tests/uri/Fetching.h"

namespace ZroCommon::testing {
namespace {

std::ptrdiff_t openFiles() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

class FetchMemory : public ::testing::Test {
protected:
    FetchMemory() {
        const std::string inner = ZipBuilder().deflated("x", kContent).package();
        const std::string outer = ZipBuilder().stored("a", "1").deflated("q.zip", inner).package();
        m_package = m_folder.write("p.zip", outer);
        m_web.emplace(FakeWeb::Resources{{"my:p", outer}});
    }

    const std::string kContent = noise(3000);
    const TempFolder m_folder;
    UnicodeString m_package;
    std::optional<FakeWeb> m_web;
};

using Open = std::istream* (*)(const ZRUri& uri);

std::istream* openAsIs(const ZRUri& uri) {
    UnicodeString type;
    UnicodeString error;
    return uri.getStream(&type, &error);
}

std::istream* openPacked(const ZRUri& uri) {
    return uri.getGzipStream();
}

// One allocation after the other fails, for good or once: there is a whole stream or none at all.
TEST_F(FetchMemory, WithoutMemoryNothingIsOpenedAndNothingLost) {
    const UnicodeString packed = m_folder.write("g", deflated(kContent, kGzip));
    const Rows<UnicodeString, Open, long> rows = {
        {m_folder.write("f", kContent), openAsIs, 1},
        {packed, openPacked, 3},
        {u"jar:" + m_package + u"!/q.zip!/x", openAsIs, 8},
        {u"jar:my:p!/q.zip!/x", openAsIs, 8},
        {u"http://127.0.0.1:1/", openAsIs, 2},
    };
    for (const auto& [name, open, leastFailures] : rows) {
        const ZRUri resource = uri(name);
        const std::unique_ptr<std::istream> first(open(resource));
        const auto filesBefore = openFiles();
        long failures = 0;
        for (long step = 0; step < 200; ++step) {
            letNewsSucceed(step / 2, step % 2 == 0);
            std::istream* const opened = open(resource);
            letNewsSucceed(-1);
            const std::unique_ptr<std::istream> stream(opened);
            failures += stream == nullptr ? 1 : 0;
            EXPECT_TRUE(stream == nullptr || restOf(*stream) == kContent) << utf8(name) << step;
        }
        EXPECT_GE(failures, leastFailures) << utf8(name);
        EXPECT_TRUE(failures < 200 || first == nullptr) << utf8(name);
        EXPECT_EQ(openFiles(), filesBefore) << utf8(name);
    }
}

TEST_F(FetchMemory, QuestionsAndWritersDoWithoutMemoryToo) {
    const ZRUri packed = uri(m_folder.write("g", deflated(kContent, kGzip)));
    std::istringstream stream(deflated(kContent, kGzip));
    const UnicodeString target = m_folder.file("out");
    int failures = 0;
    for (long news = 0; news < 12; ++news) {
        letNewsSucceed(news);
        const bool isGzip = packed.isGzip();
        letNewsSucceed(news);
        ZRUri any;
        std::ostream* const written = any.createOStream(target);
        letNewsSucceed(news);
        std::istream* const unpacked = ZRUri::getGzipStream(stream);
        letNewsSucceed(-1);
        any.releaseOStream(written);
        failures += (isGzip ? 0 : 1) + (written ? 0 : 1) + (unpacked ? 0 : 1);
        EXPECT_TRUE(ZRUri::isGzip(stream) && stream.tellg() == std::streampos(2)) << news;
        const std::unique_ptr<std::istream> whole(unpacked);
        EXPECT_TRUE(news < 11 || (isGzip && written != nullptr && whole != nullptr));
    }
    EXPECT_GE(failures, 6);
}

std::size_t drained(std::istream& stream) {
    std::size_t size = 0;
    for (char piece[4096]; stream.read(piece, sizeof(piece)) || stream.gcount() != 0;) {
        size += static_cast<std::size_t>(stream.gcount());
    }
    return size;
}

// Bombs of 16 MiB, and a package of 40 bytes that claims 4 GiB.
TEST_F(FetchMemory, WhatClaimsOrBecomesMuchTakesLittle) {
    const std::string zeros(std::size_t{16} << 20U, '\0');
    const UnicodeString gzip = m_folder.write("z.gz", deflated(zeros, kGzip, 9));
    const UnicodeString path = m_folder.write(
        "z.zip",
        ZipBuilder().deflated("q.zip", ZipBuilder().stored("z", zeros).package(), 9).package());
    const UnicodeString liar = m_folder.write(
        "l.zip", ZipBuilder()
                     .add({.name = "big", .data = "1234567", .compressedSize = 0xFFFFFFFF})
                     .records());
    const Rows<UnicodeString, Open, std::size_t> rows = {
        {gzip, openPacked, zeros.size()},
        {u"jar:" + path + u"!/q.zip", openAsIs, zeros.size()},
        {u"jar:" + path + u"!/q.zip!/missing", openAsIs, 0},
        {u"jar:" + liar + u"!/big", openAsIs, 7},
    };
    for (const auto& [name, open, leastSize] : rows) {
        const PeakMemory memory;
        const std::unique_ptr<std::istream> stream(open(uri(name)));
        EXPECT_EQ(stream == nullptr, leastSize == 0) << utf8(name);
        EXPECT_GE(stream == nullptr ? 0 : drained(*stream), leastSize) << utf8(name);
        EXPECT_LT(memory.bytes(), 1U << 20U) << utf8(name);
    }
}

}  // namespace
}  // namespace ZroCommon::testing
