#include "zro/containers/ole/internal/PropertySections.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace ZroCommon::internal {
namespace {

// Sections, tables and dictionaries may overlap. What takes less than this many records is read as
// it stands; of more, each has to have eight bytes of its own.
constexpr std::uint32_t kFreeRecords = 4096;
constexpr std::uint32_t kRecordSize = 8;

class Parser {
public:
    Parser(PropertyReader& reader, std::vector<PropertySection>& sections)
        : m_reader(reader), m_sections(sections), m_base(reader.position()) {}

    bool parse();

private:
    bool skipClassId();
    bool parseSection(std::uint32_t offset);
    bool readTable(std::uint32_t count, std::vector<PropertyRecord>& records);
    bool readProperty(PropertySection& section, PropertyRecord& record, std::uint32_t bound);
    bool readDictionary(PropertySection& section, const PropertyRecord& record,
                        std::uint32_t bound);
    bool hasRoomFor(std::size_t records);

    PropertyReader& m_reader;
    std::vector<PropertySection>& m_sections;
    std::uint32_t m_base;
    std::uint32_t m_sectionPosition = 0;
    std::size_t m_records = 0;
};

bool Parser::skipClassId() {
    std::array<unsigned char, 16> bytes{};
    return m_reader.readBytes(bytes.data(), bytes.size()) == bytes.size();
}

bool Parser::parse() {
    std::array<char, 2> format{};
    std::uint32_t system = 0;
    std::uint32_t count = 0;
    if (!m_reader.readOrder() || m_reader.readBytes(format.data(), format.size()) < format.size()
        || !m_reader.readNumber(system) || !skipClassId() || !m_reader.readNumber(count)) {
        return false;
    }
    for (std::uint32_t i = 0; i < count; ++i) {
        std::uint32_t offset = 0;
        if (!skipClassId() || !m_reader.readNumber(offset)) {
            return false;
        }
        const std::uint32_t tablePosition = m_reader.position();
        if (!parseSection(offset) || !m_reader.seek(tablePosition)) {
            return false;
        }
    }
    return true;
}

bool Parser::parseSection(std::uint32_t offset) {
    PropertySection& section = m_sections.emplace_back();
    std::array<std::uint32_t, 2> sizeAndCount{};
    if (!m_reader.seek(m_base + offset)) {
        return false;
    }
    m_sectionPosition = m_reader.position();
    if (m_reader.readNumbers(sizeAndCount) < sizeAndCount.size()) {
        return false;
    }
    auto& records = section.properties;
    std::uint32_t numberBehind = 0;
    const bool isWhole = readTable(sizeAndCount[1], records)
                         && (records.empty() || m_reader.readNumber(numberBehind));
    // Each but the last is bounded by the next one's offset. A cut table loses the bound of the
    // last that is left, and with it that property.
    const std::size_t known = isWhole || records.empty() ? records.size() : records.size() - 1;
    for (std::size_t i = 0; i < known; ++i) {
        // On purpose: the last one is bounded by the number behind the table, which is a type.
        const std::uint32_t bound = i + 1 < records.size() ? records[i + 1].offset : numberBehind;
        if (!readProperty(section, records[i], bound)) {
            return false;
        }
    }
    return isWhole;
}

bool Parser::readTable(std::uint32_t count, std::vector<PropertyRecord>& records) {
    std::array<std::uint32_t, 128> numbers{};
    std::size_t left = std::size_t{count} * 2;
    while (left > 0) {
        const std::size_t wanted = std::min(numbers.size(), left);
        const std::size_t got = m_reader.readNumbers(std::span(numbers).first(wanted));
        if (!hasRoomFor(got / 2)) {
            return false;
        }
        for (std::size_t i = 0; i + 1 < got; i += 2) {
            records.push_back({.id = numbers[i], .offset = numbers[i + 1]});
        }
        if (got < wanted) {
            return false;
        }
        left -= wanted;
    }
    return true;
}

bool Parser::readProperty(PropertySection& section, PropertyRecord& record, std::uint32_t bound) {
    const bool isDictionary = record.id == 0;
    section.hasDictionary = section.hasDictionary || isDictionary;
    // On purpose: the section's position counts from the stream's start, so `m_base` is in it
    // twice.
    if (!m_reader.seek(record.offset + m_base + m_sectionPosition)
        || !m_reader.readNumber(record.type)) {
        return false;
    }
    record.dataPosition = m_reader.position();
    return !isDictionary || readDictionary(section, record, bound);
}

// Of the names only one is ever asked for.
bool Parser::readDictionary(PropertySection& section, const PropertyRecord& record,
                            std::uint32_t bound) {
    constexpr std::string_view kHyperlinks("_PID_HLINKS\0", 12);
    std::array<char, kHyperlinks.size()> start{};
    for (std::uint32_t i = 0; i < record.type; ++i) {
        std::array<std::uint32_t, 2> idAndLength{};
        if (m_reader.readNumbers(idAndLength) < idAndLength.size() || !hasRoomFor(1)) {
            return false;
        }
        const auto [id, length] = idAndLength;
        // On purpose: one name at a time is measured against the room of all.
        if (std::uint64_t{record.offset} + length > bound) {
            return true;
        }
        const std::size_t wanted = std::min<std::size_t>(length, start.size());
        if (m_reader.readBytes(start.data(), wanted) < wanted
            || !m_reader.skip(length - static_cast<std::uint32_t>(wanted))) {
            return false;
        }
        if (std::string_view(start.data(), wanted) == kHyperlinks) {
            section.hyperlinkIds.insert(id);
        }
    }
    return true;
}

bool Parser::hasRoomFor(std::size_t records) {
    m_records += records;
    return m_records <= std::max(kFreeRecords, m_reader.reach() / kRecordSize);
}

}  // namespace

bool parsePropertySet(PropertyReader& reader, std::vector<PropertySection>& sections) {
    return Parser(reader, sections).parse();
}

}  // namespace ZroCommon::internal
