#include "zro/dom/ZRTreeCheck.h"

#include <atomic>
#include <cstddef>

#include "zro/dom/ZRNode.h"

namespace ZroCommon {
namespace {

constinit std::atomic<bool> s_asserts{false};

const ZRNode* parentOf(const ZRNode* node) {
    return node->getParentNodeFast();
}

// Some node of the ring that the way up from `node` ends in (Brent), or null.
const ZRNode* findRing(const ZRNode* node) {
    const ZRNode* mark = nullptr;
    for (std::size_t limit = 1, steps = 0; node != nullptr; node = parentOf(node)) {
        if (node == mark) {
            return node;
        }
        if (++steps == limit) {
            mark = node;
            limit *= 2;
            steps = 0;
        }
    }
    return nullptr;
}

std::size_t lengthOf(const ZRNode* ring) {
    std::size_t length = 1;
    for (const ZRNode* node = parentOf(ring); node != ring; node = parentOf(node)) {
        ++length;
    }
    return length;
}

}  // namespace

const ZRNode* ZRTreeCheck::findCycle(const ZRNode* node) {
    const ZRNode* ring = node != nullptr ? findRing(node) : nullptr;
    if (ring == nullptr) {
        return nullptr;
    }
    // Two walkers that are one round apart meet where the ring begins.
    const ZRNode* ahead = node;
    for (std::size_t length = lengthOf(ring); length != 0; --length) {
        ahead = parentOf(ahead);
    }
    for (; node != ahead; node = parentOf(node)) {
        ahead = parentOf(ahead);
    }
    return node;
}

void ZRTreeCheck::setAssertions(bool on) {
    s_asserts.store(on, std::memory_order_relaxed);
}

bool ZRTreeCheck::areAssertionsOn() {
    return s_asserts.load(std::memory_order_relaxed);
}

}  // namespace ZroCommon
