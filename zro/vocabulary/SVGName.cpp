#include "zro/vocabulary/SVGName.h"

#include <atomic>

#include "zro/values/ZRValue.h"
#include "zro/vocabulary/internal/PackedNames.h"

namespace ZroCommon {
namespace {

constexpr std::u16string_view kRows[] = {
    u"",
#define ZR_NAME(enumerator, text) text,
#include "zro/vocabulary/SVGNames.inc"
};
static_assert(std::size(kRows) == SVGN_LAST + 1U, "the names are numbered 1 to 134");

constexpr internal::PackedNames<kRows, 512> kNames;

constinit std::atomic<bool> s_forgotten{false};

SVGNameEnum find(const UnicodeString& text) {
    if (s_forgotten.load(std::memory_order_relaxed)) {
        return SVGN_EMPTY;
    }
    return static_cast<SVGNameEnum>(
        kNames.find({text.getBuffer(), static_cast<std::size_t>(text.length())}));
}

}  // namespace

SVGName::SVGName(ZRName name) : m_number(find(name.toString())) {}

SVGName::SVGName(const ZRValue& value) : m_number(find(value.getStringValue())) {}

ZRName SVGName::toZRName(SVGNameEnum number) {
    const std::u16string_view text = kNames.textOf(number);
    return {UnicodeString(false, text.data(), static_cast<int32_t>(text.size()))};
}

void SVGName::cleanup() {
    s_forgotten.store(true, std::memory_order_relaxed);
}

}  // namespace ZroCommon
