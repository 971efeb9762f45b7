#include "tests/support/Memory.h"

#include <cstdlib>
#include <new>

#include <unicode/uclean.h>

namespace {

long s_allocations = 0;
long s_newsToSucceed = -1;
bool s_failsForGood = true;
std::size_t s_largestOfTexts = 0;

void* allocate(std::size_t size) noexcept {
    ++s_allocations;
    if (s_newsToSucceed == 0) {
        s_newsToSucceed = s_failsForGood ? 0 : -1;
        return nullptr;
    }
    s_newsToSucceed -= s_newsToSucceed > 0 ? 1 : 0;
    return std::malloc(size == 0 ? 1 : size);
}

void* allocateOrThrow(std::size_t size) {
    void* const memory = allocate(size);
    return memory != nullptr ? memory : throw std::bad_alloc();
}

void* textMemory(const void* /*context*/, std::size_t size) {
    ++s_allocations;
    return size > s_largestOfTexts ? nullptr : std::malloc(size);
}
void* moreTextMemory(const void* /*context*/, void* memory, std::size_t size) {
    ++s_allocations;
    return std::realloc(memory, size);
}
void freeTextMemory(const void* /*context*/, void* memory) {
    std::free(memory);
}

}  // namespace

void* operator new(std::size_t size) {
    return allocateOrThrow(size);
}
void* operator new[](std::size_t size) {
    return allocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return allocate(size);
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

namespace ZroCommon::testing {

long allocations() {
    return s_allocations;
}

void letNewsSucceed(long count, bool failsForGood) {
    s_newsToSucceed = count;
    s_failsForGood = failsForGood;
}

void lendTextsMemory(std::size_t largest) {
    s_largestOfTexts = largest;
    UErrorCode status = U_ZERO_ERROR;
    u_setMemoryFunctions(nullptr, textMemory, moreTextMemory, freeTextMemory, &status);
    if (U_FAILURE(status)) {
        std::abort();
    }
}

}  // namespace ZroCommon::testing
