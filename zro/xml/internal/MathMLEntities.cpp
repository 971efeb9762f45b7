#include "zro/xml/internal/MathMLEntities.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "zro/foundation/ZREmptyString.h"
#include "zro/foundation/ZRLock.h"
#include "zro/vocabulary/ZRNameTable.h"
#include "zro/vocabulary/internal/SharedNames.h"
#include "zro/xml/internal/NameHashMap.h"

namespace ZroCommon::internal {
namespace {

// Name, NUL, value, NUL, and so on: one literal needs no pointers, hence no work at load.
#define ZR_ENTITY(name, value) name u"\0" value u"\0"
constexpr char16_t kPackedRows[] =
#include "zro/xml/internal/MathMLEntities.inc"
    ;

constexpr std::size_t kRowCount = 2086;

constexpr std::size_t countRows(std::u16string_view packed) {
    std::size_t ends = 0;
    for (const char16_t unit : packed) {
        ends += unit == u'\0' ? 1U : 0U;
    }
    return ends / 2;
}

constexpr std::u16string_view kPacked(kPackedRows, std::size(kPackedRows) - 1);
static_assert(countRows(kPacked) == kRowCount);

std::u16string_view takeText(std::u16string_view& packed) {
    const std::u16string_view text = packed.substr(0, packed.find(u'\0'));
    packed.remove_prefix(text.size() + 1);
    return text;
}

struct Table {
    Table();

    std::vector<MathMLEntity> entities;
    NameHashMap<std::uint16_t> indexOfName;
};

Table::Table() {
    entities.reserve(kRowCount);
    for (std::u16string_view rest = kPacked; !rest.empty();) {
        const ZRNameEnum name = internSharedName(takeText(rest));
        const std::u16string_view value = takeText(rest);
        indexOfName.at(name) = static_cast<std::uint16_t>(entities.size());
        entities.push_back({name, {value.data(), static_cast<int32_t>(value.size())}});
    }
}

constinit std::atomic<const Table*> s_table{nullptr};

// Never destroyed: callers hold references to its texts for as long as the process lives.
const Table& table() {
    if (const Table* made = s_table.load(std::memory_order_acquire)) {
        return *made;
    }
    const ZRMutex guard;
    if (s_table.load(std::memory_order_relaxed) == nullptr) {
        ZRNameTable::addRefSharedNameTable();  // before the numbers are drawn, for good
        s_table.store(std::make_unique<const Table>().release(), std::memory_order_release);
    }
    return *s_table.load(std::memory_order_relaxed);
}

}  // namespace

std::span<const MathMLEntity> mathMLEntities() {
    return table().entities;
}

const UnicodeString& mathMLEntity(ZRName name) {
    const Table& known = table();
    const std::uint16_t* index = known.indexOfName.find(name);
    return index == nullptr ? ZREmptyString::EMPTY_VALUE : known.entities[*index].value;
}

}  // namespace ZroCommon::internal
