#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/Bytes.h"

namespace ZroCommon::testing {

/// Builds property-set streams, sound ones and others, in either byte order.
///
/// A set is a list of sections, each a list of properties: identifiers, and what the value
/// functions give for them.
class PropertySetBuilder {
public:
    using Section = std::vector<std::pair<std::uint32_t, std::string>>;

    explicit PropertySetBuilder(bool bigEndian = false) : m_bigEndian(bigEndian) {}

    std::string number(std::uint64_t value, std::size_t size = 4) const {
        return numberBytes(value, size, m_bigEndian);
    }
    std::string numbers(const std::vector<std::uint64_t>& values) const {
        std::string bytes;
        for (const std::uint64_t value : values) {
            bytes += number(value);
        }
        return bytes;
    }
    std::string withLength(const std::string& bytes) const { return number(bytes.size()) + bytes; }

    std::string integer(std::uint64_t value, std::uint64_t type = 3) const {
        return numbers({type, value});
    }
    std::string text(const std::string& bytes) const {
        return number(30) + withLength(bytes + '\0');
    }
    /// Property 0, as all names are stored: with a NUL behind them, if they are sound.
    std::string dictionary(const Section& names) const {
        std::string bytes = number(names.size());
        for (const auto& [id, name] : names) {
            bytes += number(id) + withLength(name);
        }
        return bytes;
    }
    /// A variant within a blob of hyperlinks.
    std::string wide(std::u16string units) const {
        std::string bytes = integer(units.size(), 31);
        units.resize((units.size() + 1) / 2 * 2);
        for (const char16_t unit : units) {
            bytes += number(unit, 2);
        }
        return bytes;
    }
    std::string blob(std::uint64_t variants, const std::string& bytes) const {
        return numbers({65, bytes.size() + 4, variants}) + bytes;
    }

    /// What stands ahead of the table of sections, and an entry of it.
    std::string head(std::uint64_t sections) const {
        return number(0xFFFE, 2) + number(0, 6) + std::string(16, 'C') + number(sections);
    }
    std::string entry(std::uint64_t offset) const { return std::string(16, 'F') + number(offset); }

    std::string section(const Section& properties) const {
        std::string table;
        std::string data;
        for (const auto& [id, value] : properties) {
            table += numbers({id, 8 + 8 * properties.size() + data.size()});
            data += value + std::string((4 - value.size() % 4) % 4, '\0');
        }
        return numbers({8 + table.size() + data.size(), properties.size()}) + table + data;
    }
    std::string stream(const std::vector<Section>& sections) const {
        std::string table = head(sections.size());
        std::string data;
        for (const Section& properties : sections) {
            table += entry(28 + 20 * sections.size() + data.size());
            data += section(properties);
        }
        return table + data;
    }

private:
    bool m_bigEndian;
};

}  // namespace ZroCommon::testing
