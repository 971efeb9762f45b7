#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

struct UConverter;

namespace ZroCommon::internal {

/// Turns single characters into the bytes of an encoding, exactly or not at all: a character whose
/// bytes would be read as another one counts as not convertible.
///
/// For encodings without shift states. One thread at a time.
class CharEncoder {
public:
    /// \param encoding  a converter's name, such as "cp932"
    /// \return null when it is not known
    static std::unique_ptr<CharEncoder> open(const char* encoding);

    /// The bytes of a character, empty when it cannot be converted. They hold until the next call.
    std::string_view encode(char32_t character) {
        Entry& entry = m_cache[character % kCacheSize];
        if (entry.character != character) {
            fill(entry, character);
        }
        return {entry.bytes.data(), entry.length};
    }

private:
    static constexpr std::size_t kCacheSize = 4096;
    static constexpr char32_t kNoCharacter = 0xFFFFFFFF;

    // Asking the converter costs a hundred times as much as asking the cache.
    struct Entry {
        char32_t character = kNoCharacter;
        std::uint8_t length = 0;
        std::array<char, 7> bytes{};
    };

    struct Closer {
        void operator()(UConverter* converter) const;
    };
    using Converter = std::unique_ptr<UConverter, Closer>;

    explicit CharEncoder(Converter converter);
    void fill(Entry& entry, char32_t character);

    Converter m_converter;
    std::vector<Entry> m_cache;
};

}  // namespace ZroCommon::internal
