// Values that are numbers, names or plain colours take no memory of their own, from the text to
// the text.

#include <cstdlib>
#include <new>

#include <gtest/gtest.h>
#include <unicode/uclean.h>

#include "tests/support/Text.h"
#include "zro/values/ZRValue.h"

namespace {

long s_allocations = 0;

void* countedNew(std::size_t size) {
    ++s_allocations;
    void* const memory = std::malloc(size == 0 ? 1 : size);
    return memory != nullptr ? memory : throw std::bad_alloc();
}

void* countedMalloc(const void* /*context*/, std::size_t size) {
    ++s_allocations;
    return std::malloc(size);
}
void* countedRealloc(const void* /*context*/, void* memory, std::size_t size) {
    ++s_allocations;
    return std::realloc(memory, size);
}
void uncountedFree(const void* /*context*/, void* memory) {
    std::free(memory);
}

}  // namespace

void* operator new(std::size_t size) {
    return countedNew(size);
}
void* operator new[](std::size_t size) {
    return countedNew(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

namespace ZroCommon {
namespace {

using testing::text;

// What a text costs as a value, in copies, comparisons and as a text again.
long allocationsOf(const UnicodeString& source, ZRValue (*read)(const UnicodeString&)) {
    const long before = s_allocations;
    const ZRValue value = read(source);
    ZRValue copy(value);
    ZRValue other(1);
    other = copy;
    copy.normalizeUnit();
    const bool isItself = value == other && !(other < value);
    const bool hasText = !copy.toString().isEmpty();
    const long allocations = s_allocations - before;
    EXPECT_TRUE(isItself && hasText) << testing::utf8(source);
    return allocations;
}

ZRValue readColor(const UnicodeString& source) {
    return ZRValue::parseColor(source, true);
}

TEST(ValueMemory, NumbersNamesAndPlainColorsTakeNone) {
    // The memory of texts is taken by functions of their own.
    UErrorCode status = U_ZERO_ERROR;
    u_setMemoryFunctions(nullptr, countedMalloc, countedRealloc, uncountedFree, &status);
    ASSERT_TRUE(U_SUCCESS(status));
    ZRName(UnicodeString(u"no-builtin-name"));  // takes its place in the table of names
    for (const char* source : {"0", "-12", "12.375pt", "3000000000", "50%", "-.5em", "auto",
                               "no-builtin-name", "#F00", "#FF0000"}) {
        EXPECT_EQ(allocationsOf(text(source), ZRValue::parse), 0) << source;
    }
    for (const char* source : {"red", "#F00", "rgb(1,2,3)", "rgb( 50% 0 , 7.5 )"}) {
        EXPECT_EQ(allocationsOf(text(source), readColor), 0) << source;
    }
    EXPECT_GE(allocationsOf(u"'a string and the memory for its units'", ZRValue::parse), 2)
        << "what takes memory is counted";
}

}  // namespace
}  // namespace ZroCommon
