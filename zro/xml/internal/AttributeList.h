#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "zro/xml/internal/NameCache.h"
#include "zro/xml/internal/Reuse.h"
#include "zro/xml/internal/TextBuffer.h"

namespace ZroCommon::internal {

/// One attribute of the current start tag; `AttributeList::value` has its value.
struct Attribute {
    ZRNameEnum prefix;
    ZRNameEnum name;
    ZRNameEnum namespaceUri;
    std::uint32_t valueLength;
    const char16_t* inWindow;  ///< the value in the window it was read from, null when it is kept
    std::size_t keptAt;        ///< where the list keeps it otherwise
};

/// The attributes of one start tag. Values that lie whole in the window stay there, until the
/// window moves or goes: before that they have to be kept.
class AttributeList {
public:
    AttributeList() { m_attributes.reserve(kOrdinaryCount); }

    void clear() {
        m_attributes.clear();
        m_values.clear();
        m_firstInWindow = 0;
    }
    /// The same; gives the memory of a large tag back.
    void shrink() {
        clear();
        m_values.shrink();
        clearForReuse(m_attributes);
    }

    std::size_t size() const { return m_attributes.size(); }
    const Attribute& operator[](std::size_t index) const { return m_attributes[index]; }
    Attribute& operator[](std::size_t index) { return m_attributes[index]; }
    auto begin() const { return m_attributes.begin(); }
    auto end() const { return m_attributes.end(); }
    auto begin() { return m_attributes.begin(); }
    auto end() { return m_attributes.end(); }

    std::u16string_view value(const Attribute& attribute) const {
        const char16_t* const units =
            attribute.inWindow != nullptr ? attribute.inWindow : m_values.data() + attribute.keptAt;
        return {units, attribute.valueLength};
    }

    /// Adds an attribute whose value lies in the window.
    Attribute& addInWindow(QName name, std::u16string_view value) {
        return m_attributes.emplace_back(Attribute{name.prefix, name.local, ZRN_EMPTY,
                                                   static_cast<std::uint32_t>(value.size()),
                                                   value.data(), 0});
    }
    /// Adds an attribute whose value was appended to `keptValues` from `start` on.
    Attribute& addKept(QName name, std::size_t start) {
        const std::size_t length = m_values.size() - start;
        return m_attributes.emplace_back(Attribute{name.prefix, name.local, ZRN_EMPTY,
                                                   static_cast<std::uint32_t>(length), nullptr,
                                                   start});
    }
    TextBuffer& keptValues() { return m_values; }

    /// Copies what lies in the window.
    void keepValues() {
        for (; m_firstInWindow < m_attributes.size(); ++m_firstInWindow) {
            Attribute& attribute = m_attributes[m_firstInWindow];
            if (attribute.inWindow != nullptr) {
                attribute.keptAt = m_values.size();
                m_values.append(attribute.inWindow, attribute.valueLength);
                attribute.inWindow = nullptr;
            }
        }
    }

private:
    static constexpr std::size_t kOrdinaryCount = 16;

    std::vector<Attribute> m_attributes;
    TextBuffer m_values;
    std::size_t m_firstInWindow = 0;  // all before it are kept
};

}  // namespace ZroCommon::internal
