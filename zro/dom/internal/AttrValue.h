#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "zro/foundation/internal/TextView.h"
#include "zro/values/ZRValue.h"

namespace ZroCommon::internal {

/// The value of an attribute, in half the room of a cache line.
///
/// Nearly all values are short texts, which a `ZRValue` would keep in an object of its own on the
/// heap. Here texts lie inside or in a block of their length, and the `ZRValue` is made when asked
/// for. Values of all other kinds are kept as they are.
class AttrValue {
public:
    AttrValue() = default;
    explicit AttrValue(std::u16string_view text) : m_kind(Kind::InlineText) { set(text); }
    AttrValue(const AttrValue&) = delete;
    AttrValue& operator=(const AttrValue&) = delete;
    ~AttrValue() { clear(); }

    void set(const ZRValue& value);
    void set(const UnicodeString& text, ZRValueUnitType unit);
    void set(std::u16string_view text, ZRValueUnitType unit = ZRValueUnitNone) {
        if (text.size() > kInlineUnits) {
            setBlock(text);
        } else {
            clear();
            copyUnits(text, m_storage.units.data());
            m_inlineLength = static_cast<std::uint8_t>(text.size());
        }
        m_unit = static_cast<std::uint8_t>(unit);
    }

    ZRValue get() const;
    /// The value's string form.
    UnicodeString text() const;
    /// Whether it is a string value.
    bool isText() const { return m_kind != Kind::Value; }

private:
    enum class Kind : std::uint8_t { Value, InlineText, BlockText };

    static constexpr std::size_t kInlineUnits = 8;

    struct BlockText {
        char16_t* units;
        std::size_t length;
    };
    union Storage {
        Storage() : value() {}
        ~Storage() {}  // NOLINT(modernize-use-equals-default): that would be deleted

        ZRValue value;
        std::array<char16_t, kInlineUnits> units;
        BlockText block;
    };

    void clear() noexcept {
        if (m_kind != Kind::InlineText) {
            clearStorage();
        }
    }
    void clearStorage() noexcept;
    void setBlock(std::u16string_view text);

    Storage m_storage;
    Kind m_kind = Kind::Value;
    std::uint8_t m_unit = ZRValueUnitNone;  // of a text
    std::uint8_t m_inlineLength = 0;
};

}  // namespace ZroCommon::internal
