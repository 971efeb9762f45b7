#include "zro/vocabulary/internal/NameHash.h"

#include <bit>
#include <span>

#include "zro/platform/internal/RandomBytes.h"

namespace ZroCommon::internal {
namespace {

HashKey drawKey() {
    HashKey key{};
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

// Not the key of texts, which a product might give away.
HashKey numberKey() {
    static const HashKey s_key = drawKey();
    return s_key;
}

}  // namespace

std::uint64_t sipHash(std::u16string_view text, HashKey key) {
    SipState state{key.first ^ 0x736F6D6570736575U, key.second ^ 0x646F72616E646F6DU,
                   key.first ^ 0x6C7967656E657261U, key.second ^ 0x7465646279746573U};
    const char16_t* units = text.data();
    std::size_t left = text.size();
    for (; left >= 4; left -= 4, units += 4) {
        state.absorb(loadFourUnits(units));
    }
    std::uint64_t tail = static_cast<std::uint64_t>(text.size() * 2) << 56U;
    for (std::size_t i = 0; i < left; ++i) {
        tail |= static_cast<std::uint64_t>(units[i]) << (16U * i);
    }
    state.absorb(tail);
    state.v2 ^= 0xFFU;
    state.round();
    state.round();
    state.round();
    return state.v0 ^ state.v1 ^ state.v2 ^ state.v3;
}

std::uint64_t keyedNameHash(std::u16string_view name) {
    static const HashKey s_key = drawKey();
    return sipHash(name, s_key);
}

NameNumberHash::NameNumberHash() : m_key(numberKey()) {}

}  // namespace ZroCommon::internal
