#include "zro/Library.h"

#include <cstdlib>
#include <memory>

#include <gtest/gtest.h>
#include <unicode/locid.h>

#include "tests/support/TempFolder.h"
#include "zro/text/ZRUtil.h"
#include "zro/values/ZRValue.h"
#include "zro/vocabulary/MathMLName.h"
#include "zro/vocabulary/SVGName.h"
#include "zro/vocabulary/ZRNameTable.h"
#include "zro/xml/ZRLimits.h"
#include "zro/xml/internal/EntityTable.h"
#include "zro/xml/internal/ExternalSubsetCache.h"

namespace ZroCommon::testing {
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
    const ZRValue shared(UnicodeString(u"image"));  // a name of both vocabularies
    const bool wasNormal = icu::Locale("de-AT").getLanguage() != nullptr
                           && MathMLName(shared) == MathMLN_image && SVGName(shared) == SVGN_image;
    cleanup();
    cleanup();
    const bool isForgotten = ZRNameTable::getBuiltinNameEnum(u"auto") == ZRN_EMPTY
                             && MathMLName(shared).isEmpty() && SVGName(shared).isEmpty();
    std::exit(wasNormal && isForgotten ? 0 : 1);
}

TEST(LibraryDeathTest, CleanupEndsNamesAndMayComeTwice) {
    EXPECT_EXIT(useAndCleanUp(), ::testing::ExitedWithCode(0), "");
}

[[noreturn]] void readASubsetAndCleanUp(const UnicodeString& uri) {
    ZRNameTable::addRefSharedNameTable();
    const std::weak_ptr table = internal::externalSubset(uri, UnicodeString(), ZRLimits());
    const bool wasKept = !table.expired();
    cleanup();
    std::exit(wasKept && table.expired() ? 0 : 1);
}

TEST(LibraryDeathTest, CleanupForgetsExternalSubsets) {
    const TempFolder folder;
    const UnicodeString uri = folder.write("s.dtd", "<!ENTITY e 'x'>");
    EXPECT_EXIT(readASubsetAndCleanUp(uri), ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace ZroCommon::testing
