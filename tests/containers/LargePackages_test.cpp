// Packages of very many entries.
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/Memory.h"
#include "tests/support/ZipBuilder.h"
#include "zro/containers/zip/ZRZipFile.h"

namespace ZroCommon::testing {
namespace {

// Headers of 30 bytes, one behind the other: the smallest that an entry can be. In anything but
// linear time this would not come to its end.
TEST(LargePackages, AMillionEntriesTakeLittleRoomAndTime) {
    constexpr unsigned kEntries = 1'000'000;
    const std::string header = ZipBuilder().stored("", "").records();
    ASSERT_EQ(header.size(), 30U);
    std::string headers;
    headers.reserve(kEntries * header.size());
    for (unsigned i = 0; i < kEntries; ++i) {
        headers += header;
    }
    std::istringstream stream(headers);
    const PeakMemory peak;
    const ZRZipFile package(&stream, false);
    EXPECT_EQ(package.getFileEntryCount(), kEntries);
    EXPECT_EQ(package.getFileEntry(u""), package.getFileEntry(0));
    EXPECT_EQ(package.getFileEntry(u"missing"), nullptr);
    EXPECT_LT(peak.bytes(), 200'000'000U);
}

}  // namespace
}  // namespace ZroCommon::testing
