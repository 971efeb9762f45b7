// ZIP packages from a file: every entry listed by name and its data expanded. Small entries are
// the parts of office documents and books, large ones are pictures and sheets.

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <unistd.h>

#include "tests/support/ZipBuilder.h"
#include "zro/containers/zip/ZRZipFile.h"

#include "bench/support/Options.h"
#include "bench/support/Record.h"
#include "bench/support/Timing.h"

#ifdef ZRO_BENCH_LIBZIP
#include <zip.h>
#endif

namespace ZroCommon::bench {
namespace {

constexpr std::size_t kPiece = 65536;  // what each contender reads at once

struct Case {
    const char* name;
    int entries;
    std::size_t entrySize;
};

constexpr std::array kCases = {
    Case{"5000 small", 5000, 2000},
    Case{"40 large", 40, 2000000},
};

// Markup with some variety, which packs about five to one.
std::string markup(std::size_t size, unsigned seed) {
    constexpr std::array kWords = {"region", "block", "table", "inline", "margin", "colour",
                                   "page",   "width", "start", "before", "after",  "end"};
    std::string text;
    while (text.size() < size) {
        seed = seed * 1664525U + 1013904223U;
        const char* const word = kWords[(seed >> 20U) % kWords.size()];
        text += std::string("<w:") + word + " n=\"" + std::to_string(seed >> 22U) + "\">" + word
                + "</w:" + word + ">\n";
    }
    text.resize(size);
    return text;
}

/// A package in a file of its own.
class PackageFile {
public:
    explicit PackageFile(const Case& row) {
        testing::ZipBuilder builder;
        for (int i = 0; i < row.entries; ++i) {
            builder.deflated("content/part" + std::to_string(i) + ".xml",
                             markup(row.entrySize, static_cast<unsigned>(i)));
        }
        const int file = mkstemp(m_path.data());
        if (file < 0) {
            throw std::runtime_error("cannot make a file");
        }
        close(file);
        std::ofstream(m_path, std::ios::binary) << builder.package();
    }
    PackageFile(const PackageFile&) = delete;
    PackageFile& operator=(const PackageFile&) = delete;
    ~PackageFile() { std::remove(m_path.c_str()); }

    const char* path() const { return m_path.c_str(); }

private:
    std::string m_path = "/tmp/zro-bench-XXXXXX";
};

/// What a contender made of a package; all have to agree.
struct Found {
    std::size_t entries = 0;
    std::size_t nameLengths = 0;
    std::size_t bytes = 0;

    bool operator==(const Found&) const = default;
};

Found readWithZro(const char* path) {
    Found found;
    std::array<char, kPiece> piece;
    const ZRZipFile package(path);
    for (unsigned i = 0; i < package.getFileEntryCount(); ++i) {
        ZRZipFileEntry& entry = *package.getFileEntry(i);
        ++found.entries;
        found.nameLengths += static_cast<std::size_t>(entry.getFileName().length());
        const std::unique_ptr<std::istream> data(entry.getUncompressedStream(true));
        while (data->read(piece.data(), piece.size()) || data->gcount() > 0) {
            found.bytes += static_cast<std::size_t>(data->gcount());
        }
    }
    return found;
}

#ifdef ZRO_BENCH_LIBZIP
Found readWithLibzip(const char* path) {
    Found found;
    std::array<char, kPiece> piece;
    zip_t* const package = zip_open(path, ZIP_RDONLY, nullptr);
    const zip_int64_t count = zip_get_num_entries(package, 0);
    for (zip_int64_t i = 0; i < count; ++i) {
        const auto index = static_cast<zip_uint64_t>(i);
        ++found.entries;
        found.nameLengths += std::string_view(zip_get_name(package, index, 0)).size();
        zip_file_t* const data = zip_fopen_index(package, index, 0);
        for (zip_int64_t got = 1; got > 0;) {
            got = zip_fread(data, piece.data(), piece.size());
            found.bytes += static_cast<std::size_t>(got > 0 ? got : 0);
        }
        zip_fclose(data);
    }
    zip_close(package);
    return found;
}
#endif

void measure(const Options& options, const Case& row) {
    const PackageFile file(row);
    const Found expected = readWithZro(file.path());
    const auto job = [&](Found (*read)(const char*)) {
        return [&expected, &file, read] {
            Found found;
            const double time = timed(cpuNow, [&] { found = read(file.path()); });
            if (!(found == expected)) {
                throw std::runtime_error("the contenders disagree");
            }
            return time;
        };
    };
    std::vector<std::function<double()>> jobs = {job(readWithZro)};
    std::vector<const char*> names = {"zro"};
#ifdef ZRO_BENCH_LIBZIP
    jobs.emplace_back(job(readWithLibzip));
    names.push_back("libzip");
#endif
    const std::vector<Spread> times = interleave(jobs, options.rounds);
    for (std::size_t index = 0; index < names.size(); ++index) {
        Record("zip", row.name, names[index])
            .set("bytes", static_cast<double>(expected.bytes))
            .setSpread(times[index]);
    }
}

void run(const Options& options) {
    for (const Case& row : kCases) {
        measure(options, row);
    }
}

}  // namespace
}  // namespace ZroCommon::bench

int main(int argc, char** argv) {
    return ZroCommon::bench::runProgram(argc, argv, ZroCommon::bench::run);
}
