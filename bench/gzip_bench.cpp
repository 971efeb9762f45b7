// Gzip files read to their end in large pieces, beside zlib's own loop with buffers of several
// sizes: who wants speed takes the best of those.

#include <cstdlib>
#include <fstream>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <zlib.h>
#include <zro/streams/compression/ZRGzipStream.h>

#include "bench/support/Corpus.h"
#include "bench/support/Options.h"
#include "bench/support/Record.h"
#include "bench/support/Timing.h"

namespace ZroCommon::bench {
namespace {

// What a program that wants all of a file reads at a time.
constexpr std::size_t kPiece = std::size_t{1} << 20U;

struct Contender {
    std::string name;
    std::function<std::size_t(const std::string& file)> read;  // answers with the size
};

std::size_t drain(ZRGzipStream& stream) {
    static std::vector<char> s_piece(kPiece);
    std::size_t size = 0;
    do {
        stream.read(s_piece.data(), static_cast<std::streamsize>(s_piece.size()));
        size += static_cast<std::size_t>(stream.gcount());
        keep(s_piece.data());
    } while (stream);
    return size;
}

std::size_t drainFile(const std::string& file) {
    ZRGzipStream stream(file.c_str());
    return drain(stream);
}

std::size_t drainStream(const std::string& file) {
    std::ifstream source(file, std::ios::binary);
    ZRGzipStream stream(source);
    return drain(stream);
}

std::size_t drainByZlib(const std::string& file, unsigned buffer) {
    static std::vector<char> s_piece;
    s_piece.resize(std::size_t{buffer} * 2);
    gzFile source = gzopen(file.c_str(), "rb");
    gzbuffer(source, buffer);
    std::size_t size = 0;
    int got = 0;
    while ((got = gzread(source, s_piece.data(), static_cast<unsigned>(s_piece.size()))) > 0) {
        size += static_cast<std::size_t>(got);
        keep(s_piece.data());
    }
    gzclose(source);
    return size;
}

std::vector<Contender> contenders() {
    std::vector<Contender> all{{"zro file", drainFile}, {"zro stream", drainStream}};
    for (const unsigned buffer : {8192U, 32768U, 131072U, 524288U}) {
        all.push_back(
            {"gzread " + std::to_string(buffer / 1024) + "K", [buffer](const std::string& file) {
                 return drainByZlib(file, buffer);
             }});
    }
    return all;
}

double readingTime(const Contender& contender, const std::string& file, std::size_t size) {
    return timed(cpuNow, [&] {
        if (contender.read(file) != size) {
            throw std::runtime_error(contender.name + ": not the whole document");
        }
    });
}

void measure(const Options& options, const Corpus& corpus) {
    const std::string file = options.data + "/" + corpus.name + ".gz";
    { ZRGzipOStream(UnicodeString::fromUTF8(file)) << corpus.bytes; }
    std::vector<std::function<double()>> jobs;
    std::vector<std::string> names;
    for (const Contender& contender : contenders()) {
        if (!options.wantsContender(contender.name)) {
            continue;
        }
        names.push_back(contender.name);
        jobs.emplace_back([&corpus, contender, &file] {
            return readingTime(contender, file, corpus.bytes.size());
        });
    }
    constexpr int kRoundsPerRound = 3;
    const std::vector<Spread> times = interleave(jobs, options.rounds * kRoundsPerRound);
    for (std::size_t index = 0; index < jobs.size(); ++index) {
        Record("gzip", corpus.name, names[index])
            .set("bytes", static_cast<double>(corpus.bytes.size()))
            .setSpread(times[index]);
    }
}

void run(const Options& options) {
    for (const char* name : {"fo-10m", "docbook", "japanese"}) {
        if (options.wantsCorpus(name) && hasCorpus(options, name)) {
            measure(options, loadCorpus(options, name));
        }
    }
}

}  // namespace
}  // namespace ZroCommon::bench

int main(int argc, char** argv) {
    return ZroCommon::bench::runProgram(argc, argv, ZroCommon::bench::run);
}
