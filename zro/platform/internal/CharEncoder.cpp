#include "zro/platform/internal/CharEncoder.h"

#include <utility>

#include <unicode/ucnv.h>
#include <unicode/utf16.h>

namespace ZroCommon::internal {

void CharEncoder::Closer::operator()(UConverter* converter) const {
    ucnv_close(converter);
}

CharEncoder::CharEncoder(Converter converter)
    : m_converter(std::move(converter)), m_cache(kCacheSize) {}

std::unique_ptr<CharEncoder> CharEncoder::open(const char* encoding) {
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_open(encoding, &status));
    ucnv_setFromUCallBack(converter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                          &status);
    if (U_FAILURE(status) != 0) {
        return nullptr;
    }
    return std::unique_ptr<CharEncoder>(new CharEncoder(std::move(converter)));
}

void CharEncoder::fill(Entry& entry, char32_t character) {
    std::array<UChar, 2> units{};
    int32_t unitCount = 0;
    U16_APPEND_UNSAFE(units.data(), unitCount, static_cast<UChar32>(character));
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length =
        ucnv_fromUChars(m_converter.get(), entry.bytes.data(),
                        static_cast<int32_t>(entry.bytes.size()), units.data(), unitCount, &status);
    std::array<UChar, 4> back{};
    const int32_t backCount =
        ucnv_toUChars(m_converter.get(), back.data(), static_cast<int32_t>(back.size()),
                      entry.bytes.data(), U_SUCCESS(status) != 0 ? length : 0, &status);
    const bool isSame = backCount == unitCount && back[0] == units[0] && back[1] == units[1];
    entry.length = U_SUCCESS(status) != 0 && isSame ? static_cast<std::uint8_t>(length) : 0;
    entry.character = character;
}

}  // namespace ZroCommon::internal
