// Compound files from memory: opened with every entry listed by name and size, and every stream
// read in pieces of 4 KB. A file of a gigabyte is made while it is read: its blocks lie backward,
// so that no two can be read at once, and no chain of them may cost more than its length.

#include <algorithm>
#include <array>
#include <cstring>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

#include "tests/support/OleBuilder.h"
#include "zro/containers/ole/OleCompFile.h"

#include "bench/support/MemoryBuffers.h"
#include "bench/support/Options.h"
#include "bench/support/Record.h"
#include "bench/support/Timing.h"

#ifdef ZRO_BENCH_GSF
#include <gsf/gsf-infile-msole.h>
#include <gsf/gsf-infile.h>
#include <gsf/gsf-input-memory.h>
#include <gsf/gsf-utils.h>
#endif

namespace ZroCommon::bench {
namespace {

constexpr int kPiece = 4096;

/// What a contender made of a file; all have to agree.
struct Found {
    std::size_t entries = 0;
    std::size_t nameLengths = 0;
    std::size_t sizes = 0;
    std::size_t bytes = 0;

    bool operator==(const Found&) const = default;
};

// --- Ours

class ZroReader {
public:
    explicit ZroReader(const std::string& bytes)
        : m_stream(bytes), m_io(&m_stream), m_isOpen(m_file.OLEopen(&m_io)) {}

    Found list() {
        visitStorage(0, [](long) {});
        return std::exchange(m_found, {});
    }

    Found readAll() {
        visitStorage(0, [this](long index) { read(index); });
        return std::exchange(m_found, {});
    }

private:
    template <class Visit>
    void visitStorage(long index, Visit visit) {
        const OleDirInfo* const storage = m_file.getDirInfo(index);
        if (m_isOpen && storage != nullptr) {
            visitSiblings(storage->getChildID(), visit);
        }
    }

    template <class Visit>
    void visitSiblings(long index, Visit visit) {
        const OleDirInfo* const entry = m_file.getDirInfo(index);
        if (entry == nullptr) {
            return;
        }
        ++m_found.entries;
        m_found.nameLengths += static_cast<std::size_t>(entry->getName().length());
        if (entry->isStream()) {
            m_found.sizes += static_cast<std::size_t>(entry->getStreamSize());
            visit(index);
        }
        visitSiblings(entry->getChildID(), visit);
        visitSiblings(entry->getLeftSiblingID(), visit);
        visitSiblings(entry->getRightSiblingID(), visit);
    }

    void read(long index) {
        OleStream stream(&m_file);
        std::array<char, kPiece>
            piece;  // NOLINT(cppcoreguidelines-pro-type-member-init): read into
        if (!stream.GetStreamChain(index)) {
            return;
        }
        for (int got = kPiece; got == kPiece;) {
            got = stream.OLEread(piece.data(), kPiece);
            m_found.bytes += static_cast<std::size_t>(got);
        }
    }

    ViewStream m_stream;
    JZStreamIOobj m_io;
    OleCompFile m_file;
    bool m_isOpen;
    Found m_found;
};

// --- libgsf

#ifdef ZRO_BENCH_GSF
class GsfReader {
public:
    explicit GsfReader(const std::string& bytes) {
        GsfInput* const input = gsf_input_memory_new(reinterpret_cast<const guint8*>(bytes.data()),
                                                     static_cast<gsf_off_t>(bytes.size()), FALSE);
        m_file = gsf_infile_msole_new(input, nullptr);
        g_object_unref(input);
    }
    GsfReader(const GsfReader&) = delete;
    GsfReader& operator=(const GsfReader&) = delete;
    ~GsfReader() { g_object_unref(m_file); }

    Found list() {
        visit(m_file, false);
        return std::exchange(m_found, {});
    }
    Found readAll() {
        visit(m_file, true);
        return std::exchange(m_found, {});
    }

private:
    void visit(GsfInfile* storage, bool reads) {
        for (int i = 0; i < gsf_infile_num_children(storage); ++i) {
            GsfInput* const child = gsf_infile_child_by_index(storage, i);
            ++m_found.entries;
            m_found.nameLengths +=
                static_cast<std::size_t>(g_utf8_strlen(gsf_input_name(child), -1));
            const bool isStorage =
                GSF_IS_INFILE(child) && gsf_infile_num_children(GSF_INFILE(child)) >= 0;
            if (isStorage) {
                visit(GSF_INFILE(child), reads);
            } else {
                m_found.sizes += static_cast<std::size_t>(gsf_input_size(child));
                read(child, reads);
            }
            g_object_unref(child);
        }
    }

    void read(GsfInput* stream, bool reads) {
        std::array<guint8, kPiece>
            piece;  // NOLINT(cppcoreguidelines-pro-type-member-init): read into
        while (reads && gsf_input_remaining(stream) > 0) {
            const auto count =
                static_cast<std::size_t>(std::min<gsf_off_t>(kPiece, gsf_input_remaining(stream)));
            if (gsf_input_read(stream, count, piece.data()) == nullptr) {
                break;
            }
            m_found.bytes += count;
        }
    }

    GsfInfile* m_file;
    Found m_found;
};
#endif

// --- Files

struct File {
    const char* name;
    const char* document;  // of the test data, where they are
    std::size_t mainSize;  // of the stream that the generated one holds instead
};

constexpr std::array kFiles = {
    File{".doc", "libreoffice/pg-window.doc", 80000},
    File{".xls", "libreoffice/features-en.xls", 30000},
};

std::string generated(std::size_t mainSize) {
    testing::OleBuilder builder;
    builder.stream(u"Main", std::string(mainSize, 'm')).stream(u"1Table", std::string(9000, 't'));
    builder.stream(u"\5SummaryInformation", std::string(300, 's'));
    builder.stream(u"\5DocumentSummaryInformation", std::string(200, 's'));
    builder.storage(u"ObjectPool").stream(u"\1CompObj", std::string(100, 'c'));
    return builder.build().bytes;
}

std::string bytesOf(const File& file) {
    std::ifstream stream(std::string(ZRO_TEST_DATA_DIR "/office/") + file.document,
                         std::ios::binary);
    std::ostringstream bytes;
    return stream && bytes << stream.rdbuf() ? bytes.str() : generated(file.mainSize);
}

constexpr int kTimes = 50;  // a job repeats its work until it is long enough to be measured

void check(const Found& found, const Found& expected) {
    if (!(found == expected)) {
        throw std::runtime_error("the contenders disagree");
    }
}

template <class Reader>
std::function<double()> openJob(const std::string& bytes, const Found& expected) {
    return [&] {
        return timed(cpuNow,
                     [&] {
                         for (int i = 0; i < kTimes; ++i) {
                             check(Reader(bytes).list(), expected);
                         }
                     })
               / kTimes;
    };
}

// Of a file that is open: each stream is looked up, read and closed.
template <class Reader>
std::function<double()> readJob(const std::string& bytes, const Found& expected) {
    return [&] {
        Reader reader(bytes);
        return timed(cpuNow,
                     [&] {
                         for (int i = 0; i < kTimes; ++i) {
                             check(reader.readAll(), expected);
                         }
                     })
               / kTimes;
    };
}

void measure(const Options& options, const char* what, const File& file, bool reads) {
    const std::string bytes = bytesOf(file);
    const Found expected = reads ? ZroReader(bytes).readAll() : ZroReader(bytes).list();
    std::vector<std::function<double()>> jobs = {reads ? readJob<ZroReader>(bytes, expected)
                                                       : openJob<ZroReader>(bytes, expected)};
    std::vector<const char*> names = {"zro"};
#ifdef ZRO_BENCH_GSF
    jobs.push_back(reads ? readJob<GsfReader>(bytes, expected)
                         : openJob<GsfReader>(bytes, expected));
    names.push_back("libgsf");
#endif
    const std::vector<Spread> times = interleave(jobs, options.rounds);
    for (std::size_t i = 0; i < names.size(); ++i) {
        Record(what, file.name, names[i])
            .set("bytes", static_cast<double>(reads ? expected.bytes : bytes.size()))
            .setSpread(times[i]);
    }
}

// --- A file that is made while it is read

/// A compound file with one stream of many blocks, each of which lies ahead of the one before.
class EndlessFile : public std::streambuf {
public:
    explicit EndlessFile(std::int64_t dataBlocks)
        : m_dataBlocks(dataBlocks),
          m_fatBlocks(dataBlocks / 125 + 2),
          m_indirect(m_fatBlocks / 127 + 1) {
        const testing::OleImage image =
            testing::OleBuilder().stream(u"s", std::string(4096, ' ')).build();
        m_header = image;
        m_header.header(44, m_fatBlocks).header(48, directory()).header(68, directory() + 1);
        for (std::int64_t i = 0; i < 109; ++i) {
            m_header.header(76 + 4 * static_cast<std::size_t>(i),
                            i < m_fatBlocks ? fatBlock(i) : -1);
        }
        m_header.header(60, -2).header(64, 0);
        m_header.entry(1, testing::OleBuilder::kStart, dataBlocks - 1);
        m_header.entry(1, testing::OleBuilder::kSize,
                       std::min<std::int64_t>(dataBlocks * kBlock, 0x7FFFFFFF));
        m_directoryBytes = m_header.bytes.substr(image.offsetOf(image.directoryStart), kBlock);
    }

protected:
    std::streamsize xsgetn(char* bytes, std::streamsize count) override {
        for (std::streamsize done = 0; done < count;) {
            const std::int64_t inside = m_position % kBlock;
            const auto piece = std::min<std::streamsize>(count - done, kBlock - inside);
            makeBlock(m_position / kBlock - 1);
            std::memcpy(bytes + done, m_block.data() + inside, static_cast<std::size_t>(piece));
            done += piece;
            m_position += piece;
        }
        return count;
    }
    pos_type seekoff(off_type offset, std::ios_base::seekdir from,
                     std::ios_base::openmode which) override {
        const off_type end = (directory() + 2 + m_indirect) * kBlock;
        return seekpos((from == std::ios_base::beg   ? 0
                        : from == std::ios_base::cur ? m_position
                                                     : end)
                           + offset,
                       which);
    }
    pos_type seekpos(pos_type position, std::ios_base::openmode /*which*/) override {
        m_position = position;
        return position;
    }

private:
    static constexpr std::int64_t kBlock = 512;

    // Data, then the FAT, the directory, the list of the FAT.
    std::int64_t fatBlock(std::int64_t index) const {
        return index < m_fatBlocks ? m_dataBlocks + index : -1;
    }
    std::int64_t directory() const { return m_dataBlocks + m_fatBlocks; }

    void putNumber(std::int64_t index, std::int64_t value) {
        const auto number = static_cast<std::int32_t>(value);
        std::memcpy(m_block.data() + 4 * index, &number, sizeof(number));
    }

    void makeBlock(std::int64_t block) {
        if (block < 0) {
            std::copy_n(m_header.bytes.data(), kBlock, m_block.data());
        } else if (block == directory()) {
            std::copy_n(m_directoryBytes.data(), kBlock, m_block.data());
        } else if (block > directory()) {
            const std::int64_t first = 109 + (block - directory() - 1) * 127;
            for (std::int64_t i = 0; i < 127; ++i) {
                putNumber(i, fatBlock(first + i));
            }
            putNumber(127, block + 1);
        } else if (block >= m_dataBlocks) {
            const std::int64_t first = (block - m_dataBlocks) * 128;
            for (std::int64_t i = 0; i < 128; ++i) {
                const std::int64_t here = first + i;
                putNumber(i, here > 0 && here < m_dataBlocks ? here - 1 : -2);
            }
        } else {
            putNumber(0, block);
        }
    }

    std::int64_t m_dataBlocks;
    std::int64_t m_fatBlocks;
    std::int64_t m_indirect;
    testing::OleImage m_header;
    std::string m_directoryBytes;
    std::array<char, kBlock> m_block{};
    std::int64_t m_position = 0;
};

void readLongStream(double megabytes) {
    EndlessFile bytes(static_cast<std::int64_t>(megabytes * 2048));
    std::istream stream(&bytes);
    JZStreamIOobj io(&stream);
    OleCompFile file;
    OleDirPath path{1, {"s"}};
    if (!file.OLEopen(&io)) {
        throw std::runtime_error("the made file cannot be opened");
    }
    const std::unique_ptr<OleStream> data(file.OLEopenStream(&path));
    std::array<char, kPiece> piece;  // NOLINT(cppcoreguidelines-pro-type-member-init): read into
    std::int64_t count = 0;
    for (int got = kPiece; got == kPiece; count += got) {
        got = data->OLEread(piece.data(), kPiece);
    }
    if (count != data->GetStreamSize()) {
        throw std::runtime_error("the long stream came up short");
    }
}

void run(const Options& options) {
    for (const File& file : kFiles) {
        measure(options, "ole open", file, false);
        measure(options, "ole read", file, true);
    }
    for (const double part : {0.1, 1.0}) {
        const double megabytes = options.megabytes * part;
        const Spread time = spreadOf({timed(cpuNow, [&] { readLongStream(megabytes); })});
        Record("ole long", part < 1 ? "a tenth" : "whole", "zro")
            .set("bytes", megabytes * 1048576)
            .setSpread(time);
    }
}

}  // namespace
}  // namespace ZroCommon::bench

int main(int argc, char** argv) {
    return ZroCommon::bench::runProgram(argc, argv, ZroCommon::bench::run);
}
