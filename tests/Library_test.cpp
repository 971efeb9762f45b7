#include "zro/Library.h"

#include <cstdlib>

#include <gtest/gtest.h>
#include <unicode/locid.h>

#include "zro/text/ZRUtil.h"
#include "zro/vocabulary/ZRNameTable.h"

namespace ZroCommon {
namespace {

TEST(Library, TellsItsVersion) {
    EXPECT_EQ(getLibVersion(), 403);
}

TEST(Library, CanBeReferencedByALinker) {
    ZRUtil::checkLink();
}

// In a process of its own. A crash is what would go wrong.
[[noreturn]] void useAndCleanUp() {
    ZRNameTable::addRefSharedNameTable();
    ZRNameTable::getSharedNameEnum(u"a name");
    const bool wasNormal = icu::Locale("de-AT").getLanguage() != nullptr;
    cleanup();
    cleanup();
    std::exit(wasNormal && ZRNameTable::getBuiltinNameEnum(u"auto") == ZRN_EMPTY ? 0 : 1);
}

TEST(LibraryDeathTest, CleanupEndsNamesAndMayComeTwice) {
    EXPECT_EXIT(useAndCleanUp(), ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace ZroCommon
