#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/Bytes.h"

namespace ZroCommon::testing {

/// How an `OleBuilder` lays a file out.
struct OleLayout {
    unsigned blockShift = 9;
    unsigned miniShift = 6;
    bool bigEndian = false;
    std::uint32_t miniCutoff = 4096;
    bool backward = false;          ///< each block of a stream lies ahead of the one before it
    std::size_t fatBlocks = 1;      ///< at least
    bool wholeHeaderBlock = false;  ///< the header takes a block, whatever its size
};

/// A compound file in memory, to be damaged.
struct OleImage {
    OleLayout layout;
    std::string bytes;
    std::vector<std::size_t> fatBlocks;
    std::size_t directoryStart = 0;  // blocks, as the next three
    std::size_t miniFatStart = 0;
    std::size_t miniStreamStart = 0;
    std::size_t blocks = 0;

    std::size_t blockSize() const { return std::size_t{1} << layout.blockShift; }
    std::size_t offsetOf(std::size_t block) const {
        return (layout.wholeHeaderBlock ? blockSize() : 512) + block * blockSize();
    }

    template <class Number>
    OleImage& put(std::size_t at, Number value, std::size_t size = 4) {
        const auto number = static_cast<std::uint64_t>(value);
        return bytes.replace(at, size, numberBytes(number, size, layout.bigEndian)), *this;
    }
    /// What follows a block, -2 at the end of a chain.
    OleImage& fat(std::size_t block, std::int64_t next) {
        const std::size_t perBlock = blockSize() / 4;
        return put(offsetOf(fatBlocks[block / perBlock]) + block % perBlock * 4, next);
    }
    OleImage& miniFat(std::size_t block, std::int64_t next) {
        return put(offsetOf(miniFatStart) + block * 4, next);
    }
    /// A field of a directory entry in the first block of the directory.
    OleImage& entry(std::size_t index, std::size_t field, std::int64_t value,
                    std::size_t size = 4) {
        return put(offsetOf(directoryStart) + index * 128 + field, value, size);
    }
    OleImage& header(std::size_t at, std::int64_t value, std::size_t size = 4) {
        return put(at, value, size);
    }
};

/// Builds compound files. Entries get indexes in the order in which they are added, from 1 on;
/// those of one storage are a list of right siblings.
class OleBuilder {
public:
    static constexpr std::size_t kLeft = 68;
    static constexpr std::size_t kRight = 72;
    static constexpr std::size_t kChild = 76;
    static constexpr std::size_t kStart = 116;
    static constexpr std::size_t kSize = 120;

    explicit OleBuilder(const OleLayout& layout = {}) : m_layout(layout) {
        m_entries.push_back({u"Root Entry", 5, {}});
    }

    OleBuilder& stream(std::u16string_view name, const std::string& data, std::size_t parent = 0) {
        return add({std::u16string(name), 2, data}, parent);
    }
    OleBuilder& storage(std::u16string_view name, std::size_t parent = 0) {
        return add({std::u16string(name), 1, {}}, parent);
    }

    OleImage build() const {
        Work work;
        work.image.layout = m_layout;
        work.starts.assign(m_entries.size(), kEnd);
        std::string miniStream;
        for (std::size_t i = 1; i < m_entries.size(); ++i) {
            addStream(work, i, miniStream);
        }
        work.image.miniStreamStart = work.chains.size();
        work.starts[0] = miniStream.empty() ? kEnd : addChain(work, miniStream, false);
        work.image.miniFatStart = work.chains.size();
        const std::uint32_t miniFat = addChain(work, numbers(work.miniChains), false);
        work.image.directoryStart = work.chains.size();
        addChain(work, directory(work, miniStream.size()), false);
        addFat(work);
        addHeader(work.image, miniFat, work);
        return work.image;
    }

private:
    static constexpr std::uint32_t kEnd = 0xFFFFFFFE;
    static constexpr std::uint32_t kFree = 0xFFFFFFFF;
    static constexpr std::uint32_t kFatBlock = 0xFFFFFFFD;
    static constexpr std::size_t kInHeader = 109;

    struct Entry {
        std::u16string name;
        int type;
        std::string data;
        std::uint32_t firstChild = kFree;
        std::uint32_t lastChild = kFree;
        std::uint32_t next = kFree;
    };

    struct Work {
        OleImage image;
        std::vector<std::uint32_t> chains;
        std::vector<std::uint32_t> miniChains;
        std::vector<std::uint32_t> starts;
        std::string blocks;
        std::vector<std::uint32_t> indirect;
    };

    std::size_t blockSize() const { return std::size_t{1} << m_layout.blockShift; }
    std::size_t miniSize() const { return std::size_t{1} << m_layout.miniShift; }

    std::string number(std::uint64_t value, std::size_t size = 4) const {
        return numberBytes(value, size, m_layout.bigEndian);
    }

    std::string numbers(const std::vector<std::uint32_t>& values) const {
        std::string bytes;
        for (const std::uint32_t value : values) {
            bytes += number(value);
        }
        return bytes;
    }

    OleBuilder& add(const Entry& entry, std::size_t parent) {
        const auto index = static_cast<std::uint32_t>(m_entries.size());
        m_entries.push_back(entry);
        Entry& storage = m_entries[parent];
        (storage.lastChild == kFree ? storage.firstChild : m_entries[storage.lastChild].next) =
            index;
        storage.lastChild = index;
        return *this;
    }

    // Adds the numbers of a chain. Returns its first block.
    static std::uint32_t chain(std::vector<std::uint32_t>& table, std::size_t count,
                               bool backward) {
        const auto first = static_cast<std::uint32_t>(table.size());
        const auto last = static_cast<std::uint32_t>(first + count - 1);
        for (std::uint32_t i = first; i <= last && count > 0; ++i) {
            const std::uint32_t neighbour = backward ? i - 1 : i + 1;
            table.push_back(i == (backward ? first : last) ? kEnd : neighbour);
        }
        return count == 0 ? kEnd : backward ? last : first;
    }

    std::uint32_t addChain(Work& work, std::string data, bool backward) const {
        const std::size_t count = (data.size() + blockSize() - 1) / blockSize();
        data.resize(count * blockSize(), '\xFF');
        for (std::size_t i = 0; i < count; ++i) {
            work.blocks.append(data, (backward ? count - 1 - i : i) * blockSize(), blockSize());
        }
        return chain(work.chains, count, backward);
    }

    void addStream(Work& work, std::size_t index, std::string& miniStream) const {
        const std::string& data = m_entries[index].data;
        if (data.size() >= m_layout.miniCutoff) {
            work.starts[index] = addChain(work, data, m_layout.backward);
            return;
        }
        const std::size_t count = (data.size() + miniSize() - 1) / miniSize();
        work.starts[index] = chain(work.miniChains, count, false);
        miniStream += data + std::string(count * miniSize() - data.size(), '\0');
    }

    std::string directory(const Work& work, std::size_t miniStreamSize) const {
        std::string bytes;
        for (std::size_t i = 0; i < m_entries.size(); ++i) {
            const Entry& entry = m_entries[i];
            std::string name;
            for (const char16_t unit : entry.name) {
                name += number(unit, 2);
            }
            name.resize(64, '\0');
            const std::size_t size = i == 0 ? miniStreamSize : entry.data.size();
            bytes += name + number(2 * entry.name.size() + 2, 2) + static_cast<char>(entry.type)
                     + '\1' + number(kFree) + number(entry.next) + number(entry.firstChild)
                     + std::string(16, static_cast<char>('A' + i)) + number(i) + number(i, 8)
                     + number(i + 1, 8) + number(work.starts[i]) + number(size) + number(0);
        }
        bytes.resize((bytes.size() + blockSize() - 1) / blockSize() * blockSize(), '\0');
        return bytes;
    }

    void addFat(Work& work) const {
        const std::size_t perBlock = blockSize() / 4;
        std::size_t fat = m_layout.fatBlocks;
        const auto indirectBlocks = [perBlock](std::size_t count) {
            return count > kInHeader ? (count - kInHeader + perBlock - 2) / (perBlock - 1) : 0;
        };
        while (fat * perBlock < work.chains.size() + fat + indirectBlocks(fat)) {
            ++fat;
        }
        const std::size_t indirect = indirectBlocks(fat);
        for (std::size_t i = 0; i < fat; ++i) {
            work.image.fatBlocks.push_back(work.chains.size());
            work.chains.push_back(kFatBlock);
        }
        for (std::size_t i = 0; i < indirect; ++i) {
            work.indirect.push_back(static_cast<std::uint32_t>(work.chains.size()));
            work.chains.push_back(kFatBlock - 1);
        }
        work.image.blocks = work.chains.size();
        work.chains.resize(fat * perBlock, kFree);
        work.blocks += numbers(work.chains);
        for (std::size_t i = 0; i < indirect; ++i) {
            for (std::size_t j = 0; j + 1 < perBlock; ++j) {
                const std::size_t at = kInHeader + i * (perBlock - 1) + j;
                work.blocks += number(at < fat ? work.image.fatBlocks[at] : kFree);
            }
            work.blocks += number(i + 1 < indirect ? work.indirect[i + 1] : kEnd);
        }
    }

    void addHeader(OleImage& image, std::uint32_t miniFat, const Work& work) const {
        image.bytes.assign(image.offsetOf(0), '\0');
        image.bytes.replace(0, 8, "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");
        image.put(24, 0x3E, 2).put(26, 3, 2).put(28, 0xFFFE, 2);
        image.put(30, m_layout.blockShift, 2).put(32, m_layout.miniShift, 2);
        image.put(44, image.fatBlocks.size()).put(48, image.directoryStart);
        image.put(56, m_layout.miniCutoff).put(60, miniFat);
        image.put(64, image.directoryStart - image.miniFatStart);
        image.put(68, work.indirect.empty() ? kEnd : work.indirect[0]);
        image.put(72, work.indirect.size());
        for (std::size_t i = 0; i < kInHeader; ++i) {
            image.put(76 + 4 * i, i < image.fatBlocks.size() ? image.fatBlocks[i] : kFree);
        }
        image.bytes += work.blocks;
    }

    OleLayout m_layout;
    std::vector<Entry> m_entries;
};

}  // namespace ZroCommon::testing
