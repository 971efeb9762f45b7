#include "zro/vocabulary/internal/NameHash.h"

#include <bit>
#include <span>

#include "zro/platform/internal/RandomBytes.h"

namespace ZroCommon::internal {
namespace {

struct SipKey {
    std::uint64_t first;
    std::uint64_t second;
};

SipKey drawKey() {
    SipKey key{};
    fillWithRandomBytes(std::as_writable_bytes(std::span(&key, 1)));
    return key;
}

struct SipState {
    std::uint64_t v0;
    std::uint64_t v1;
    std::uint64_t v2;
    std::uint64_t v3;

    void round() {
        v0 += v1;
        v1 = std::rotl(v1, 13) ^ v0;
        v0 = std::rotl(v0, 32);
        v2 += v3;
        v3 = std::rotl(v3, 16) ^ v2;
        v0 += v3;
        v3 = std::rotl(v3, 21) ^ v0;
        v2 += v1;
        v1 = std::rotl(v1, 17) ^ v2;
        v2 = std::rotl(v2, 32);
    }

    void absorb(std::uint64_t word) {
        v3 ^= word;
        round();
        v0 ^= word;
    }
};

}  // namespace

std::uint64_t keyedNameHash(std::u16string_view name) {
    static const SipKey s_key = drawKey();
    SipState state{s_key.first ^ 0x736F6D6570736575U, s_key.second ^ 0x646F72616E646F6DU,
                   s_key.first ^ 0x6C7967656E657261U, s_key.second ^ 0x7465646279746573U};
    const char16_t* text = name.data();
    std::size_t left = name.size();
    for (; left >= 4; left -= 4, text += 4) {
        state.absorb(loadFourUnits(text));
    }
    std::uint64_t tail = static_cast<std::uint64_t>(name.size() * 2) << 56U;
    for (std::size_t i = 0; i < left; ++i) {
        tail |= static_cast<std::uint64_t>(text[i]) << (16U * i);
    }
    state.absorb(tail);
    state.v2 ^= 0xFFU;
    state.round();
    state.round();
    state.round();
    return state.v0 ^ state.v1 ^ state.v2 ^ state.v3;
}

}  // namespace ZroCommon::internal
