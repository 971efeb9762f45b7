#include "tests/support/Memory.h"

#include <algorithm>
#include <cstdlib>
#include <malloc.h>
#include <new>

#include <unicode/uclean.h>

namespace {

long s_allocations = 0;
long s_newsToSucceed = -1;
bool s_failsForGood = true;
std::size_t s_largestOfTexts = 0;
std::size_t s_held = 0;
std::size_t s_peak = 0;

void* allocate(std::size_t size) noexcept {
    ++s_allocations;
    if (s_newsToSucceed == 0) {
        s_newsToSucceed = s_failsForGood ? 0 : -1;
        return nullptr;
    }
    s_newsToSucceed -= s_newsToSucceed > 0 ? 1 : 0;
    void* const memory = std::malloc(size == 0 ? 1 : size);
    s_held += malloc_usable_size(memory);
    s_peak = std::max(s_peak, s_held);
    return memory;
}

void release(void* memory) noexcept {
    s_held -= malloc_usable_size(memory);
    std::free(memory);
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
    release(memory);
}
void operator delete[](void* memory) noexcept {
    release(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
    release(memory);
}
void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    release(memory);
}

namespace ZroCommon::testing {

long allocations() {
    return s_allocations;
}

void letNewsSucceed(long count, bool failsForGood) {
    s_newsToSucceed = count;
    s_failsForGood = failsForGood;
}

PeakMemory::PeakMemory() : m_before(s_held) {
    s_peak = s_held;
}

std::size_t PeakMemory::bytes() const {
    return s_peak - m_before;
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
