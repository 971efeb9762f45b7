#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <map>
#include <tuple>
#include <utility>

#include "zro/vocabulary/ZRName.h"

namespace ZroCommon {
class ZRAttr;
}

namespace ZroCommon::internal {

/// Finds attributes by name in a large map. Several may bear one name; the first in the order of
/// the map is the answer, as a walk would give it. Trees, not hashes: documents choose the names.
class AttrIndex {
public:
    AttrIndex() = default;
    AttrIndex(const AttrIndex&) = delete;
    AttrIndex& operator=(const AttrIndex&) = delete;
    ~AttrIndex() { forgetOrder(); }

    /// Notes an attribute that stands behind all others.
    void append(ZRAttr& attr);
    /// Notes an attribute that took another's place.
    void replace(const ZRAttr& old, ZRAttr& attr);
    void remove(const ZRAttr& attr);

    ZRAttr* find(ZRName localName) const;
    ZRAttr* find(ZRName namespaceUri, ZRName localName) const;

    /// The attributes of the map one by one, for a look by number; null when there is no memory.
    /// Made when it is first asked for since a change, be it by several readers at a time.
    ZRAttr* const* order(ZRAttr& first, std::size_t count) const;

private:
    void forgetOrder();

    using Position = std::uint64_t;  // ascending in the order of the map, with gaps
    using Name = std::tuple<ZRNameEnum, ZRNameEnum, Position>;

    void insert(ZRAttr& attr, Position position);
    Position take(const ZRAttr& attr);

    std::map<Name, ZRAttr*> m_byName;  // by local name and namespace
    std::map<std::pair<ZRNameEnum, Position>, ZRAttr*> m_byLocalName;
    Position m_end = 0;
    mutable std::atomic<ZRAttr**> m_order{nullptr};  // an array of its own
};

}  // namespace ZroCommon::internal
