#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "tests/support/Deflate.h"

namespace ZroCommon::testing {

/// One entry of a package as a `ZipBuilder` writes it; what is not set follows from the data.
struct ZipMember {
    std::string name = {};
    std::string data = {};  ///< as it is stored
    unsigned method = 0;
    unsigned flags = 0;
    std::string extra = {};
    std::optional<std::uint32_t> compressedSize = {};
    std::optional<std::uint32_t> uncompressedSize = {};
    std::uint32_t crc = 0;
};

/// Builds ZIP packages record by record, sound ones and others.
class ZipBuilder {
public:
    ZipBuilder& stored(const std::string& name, const std::string& data) {
        return add({.name = name, .data = data, .crc = crcOf(data)});
    }

    ZipBuilder& deflated(const std::string& name, const std::string& data, int level = 6) {
        return add({.name = name,
                    .data = testing::deflated(data, kRaw, level),
                    .method = 8,
                    .uncompressedSize = static_cast<std::uint32_t>(data.size()),
                    .crc = crcOf(data)});
    }

    ZipBuilder& add(const ZipMember& member) {
        const std::size_t position = m_records.size();
        const std::string common = commonFields(member);
        m_records += "PK\3\4" + common + member.name + member.extra + member.data;
        m_directory += "PK\1\2" + number(20, 2) + common + std::string(10, '\0')
                       + number(position, 4) + member.name + member.extra;
        ++m_count;
        return *this;
    }

    /// A data descriptor with a signature.
    ZipBuilder& descriptor(std::uint32_t compressedSize, std::uint32_t uncompressedSize) {
        return raw("PK\7\10" + number(0, 4) + number(compressedSize, 4)
                   + number(uncompressedSize, 4));
    }

    ZipBuilder& raw(std::string_view bytes) {
        m_records += bytes;
        return *this;
    }

    /// The records without a directory.
    const std::string& records() const { return m_records; }

    /// The whole package.
    std::string package() const {
        return m_records + m_directory + "PK\5\6" + number(0, 4) + number(m_count, 2)
               + number(m_count, 2) + number(m_directory.size(), 4) + number(m_records.size(), 4)
               + number(0, 2);
    }

private:
    static std::string number(std::size_t value, std::size_t size) {
        return numberBytes(value, size);
    }

    // What local header and directory have in common.
    static std::string commonFields(const ZipMember& member) {
        const auto size = static_cast<std::uint32_t>(member.data.size());
        constexpr std::size_t kTime = 0x6020;  // 12:01
        constexpr std::size_t kDate = 0x5921;  // 1 September 2024
        return number(20, 2) + number(member.flags, 2) + number(member.method, 2) + number(kTime, 2)
               + number(kDate, 2) + number(member.crc, 4)
               + number(member.compressedSize.value_or(size), 4)
               + number(member.uncompressedSize.value_or(size), 4) + number(member.name.size(), 2)
               + number(member.extra.size(), 2);
    }

    std::string m_records;
    std::string m_directory;
    std::size_t m_count = 0;
};

}  // namespace ZroCommon::testing
