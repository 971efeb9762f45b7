#pragma once

#include <cstddef>

namespace ZroCommon::internal {

/// Empties a container that is kept for another use, and gives the memory of a large one back.
template <class Container>
void clearForReuse(Container& container) {
    constexpr std::size_t kOrdinarySize = 1024;
    if (container.capacity() > kOrdinarySize) {
        Container().swap(container);
    } else {
        container.clear();
    }
}

}  // namespace ZroCommon::internal
