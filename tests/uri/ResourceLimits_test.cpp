// What opt-in limits refuse of packages and packed data, and what they let pass.
#include "tests/support/TempFolder.h"
#include "tests/support/Test.h"
#include "tests/support/ZipBuilder.h"
#include "tests/uri/Fetching.h"
#include "zro/containers/zip/ZRZipFile.h"
#include "zro/foundation/ZRResourceLimits.h"
#include "zro/streams/compression/ZRGzipStream.h"
#include "zro/streams/compression/ZRInflaterStream.h"

namespace ZroCommon::testing {
namespace {

class ResourceLimits : public ::testing::Test {
protected:
    ~ResourceLimits() override { ZRResourceLimits::setCurrent({}); }
};

std::size_t expanded(const std::string& block) {
    ZRInflaterStream stream(block.data(), block.size(), false);
    return restOf(stream).size();
}

TEST_F(ResourceLimits, BombsEndWhereTheyExceedThem) {
    const std::string zeros(std::size_t{8} << 20U, '\0');
    const std::string bomb = deflated(zeros);
    EXPECT_EQ(expanded(bomb), zeros.size()) << "there are none at first";
    for (const auto& [bytes, factor, grace, most] :
         Rows<std::uint64_t, std::uint32_t, std::uint64_t, std::size_t>{
             {1000, 0, 0, 1000},
             {0, 100, 1U << 20U, (1U << 20U) + 65536},
             {0, 100, 0, 200000},
             {0, 2000, 0, zeros.size()},
             {zeros.size(), 0, 0, zeros.size()}}) {
        ZRResourceLimits limits;
        limits.expandedBytes = bytes;
        limits.expansionFactor = factor;
        limits.expansionGrace = grace;
        ZRResourceLimits::setCurrent(limits);
        const std::size_t size = expanded(bomb);
        EXPECT_LE(size, most) << bytes << " " << factor;
        EXPECT_EQ(size == zeros.size(), most == zeros.size()) << bytes << " " << factor;
        std::istringstream source(deflated(zeros, kGzip));
        ZRGzipStream gzip(source);
        const std::string rest = restOf(gzip);
        EXPECT_LE(rest.size(), most) << bytes << " " << factor;
        source.clear();
        ZRGzipStream inOnePiece(source);
        std::string piece(zeros.size(), ' ');
        inOnePiece.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        EXPECT_EQ(inOnePiece.gcount(), std::ssize(rest)) << bytes << " " << factor;
    }
}

TEST_F(ResourceLimits, StrictOnesLetOrdinaryDataPass) {
    ZRResourceLimits::setCurrent(ZRResourceLimits::strict());
    EXPECT_EQ(expanded(deflated(noise(3000000))), 3000000U);
    EXPECT_EQ(expanded(deflated(std::string(1000000, 'x'))), 1000000U) << "within the grace";
    EXPECT_LT(expanded(deflated(std::string(4000000, 'x'))), 4000000U);
}

TEST_F(ResourceLimits, EntriesBeyondThemAreNotThere) {
    const TempFolder folder;
    const UnicodeString path = folder.write(
        "p.zip", ZipBuilder().stored("a", "1").stored("b", "2").stored("c", "3").package());
    const ZRUri second = uri(u"jar:file://" + path + u"!/b");
    const ZRUri third = uri(u"jar:file://" + path + u"!/c");
    ZRResourceLimits limits;
    limits.packageEntries = 2;
    ZRResourceLimits::setCurrent(limits);
    EXPECT_EQ(ZRZipFile(path).getFileEntryCount(), 2U);
    EXPECT_EQ(contentOf(second), "2");
    EXPECT_EQ(contentOf(third), "nothing");
    ZRResourceLimits::setCurrent({});
    EXPECT_EQ(ZRZipFile(path).getFileEntryCount(), 3U);
    EXPECT_EQ(contentOf(third), "3");
}

}  // namespace
}  // namespace ZroCommon::testing
