#include "zro/vocabulary/MathMLName.h"

#include <atomic>

#include "zro/values/ZRValue.h"
#include "zro/vocabulary/internal/PackedNames.h"

namespace ZroCommon {
namespace {

constexpr std::u16string_view kRows[] = {
    u"",
#define ZR_NAME(enumerator, text) text,
#include "zro/vocabulary/MathMLNames.inc"
};
static_assert(std::size(kRows) == MathMLN_LAST + 1U, "the names are numbered 1 to 434");

constexpr internal::PackedNames<kRows, 1024> kNames;

constinit std::atomic<bool> s_forgotten{false};

MathMLNameEnum find(const UnicodeString& text) {
    if (s_forgotten.load(std::memory_order_relaxed)) {
        return MathMLN_EMPTY;
    }
    return static_cast<MathMLNameEnum>(
        kNames.find({text.getBuffer(), static_cast<std::size_t>(text.length())}));
}

}  // namespace

MathMLName::MathMLName(ZRName name) : m_number(find(name.toString())) {}

MathMLName::MathMLName(const ZRValue& value) : m_number(find(value.getStringValue())) {}

ZRName MathMLName::toZRName(MathMLNameEnum number) {
    const std::u16string_view text = kNames.textOf(number);
    return {UnicodeString(false, text.data(), static_cast<int32_t>(text.size()))};
}

void MathMLName::cleanup() {
    s_forgotten.store(true, std::memory_order_relaxed);
}

}  // namespace ZroCommon
