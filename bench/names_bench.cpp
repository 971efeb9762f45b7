// Look-up of builtin names by their UTF-16 text: as a document brings them, all of them in random
// order, and texts that are none; the library's table against the standard containers.

#include <algorithm>
#include <cstring>
#include <map>
#include <random>
#include <string>
#include <unordered_map>

#include "zro/vocabulary/ZRNameTable.h"

#include "bench/support/Corpus.h"
#include "bench/support/Options.h"
#include "bench/support/Record.h"
#include "bench/support/Recording.h"
#include "bench/support/Timing.h"

#ifdef ZRO_BENCH_GPERF
#include <PerfectHash.inc>  // generated
#endif

namespace ZroCommon::bench {
namespace {

using Keys = std::vector<UnicodeString>;

constexpr int kPasses = 200;                 // over all keys, for one sample
constexpr std::size_t kDocumentKeys = 2000;  // more would measure the memory that holds the keys

Keys builtinTexts() {
    Keys keys;
    for (int number = 1; number <= ZRN_LAST_BUILTIN; ++number) {
        keys.push_back(ZRNameTable::getBuiltinNameString(static_cast<ZRNameEnum>(number)));
    }
    std::shuffle(keys.begin(), keys.end(), std::mt19937(7));  // NOLINT(cert-msc51-cpp)
    return keys;
}

// The local names of elements and attributes in the order of a document.
Keys documentTexts(std::string_view document) {
    Keys keys;
    for (const WriteEvent& event : recordEvents(document)) {
        const bool isName =
            event.kind == WriteEvent::Kind::Start || event.kind == WriteEvent::Kind::Attribute;
        const UnicodeString key = UnicodeString::fromUTF8(event.name);
        if (isName && ZRNameTable::getBuiltinNameEnum(key) != ZRN_EMPTY) {
            keys.push_back(key);
        }
        if (keys.size() == kDocumentKeys) {
            break;
        }
    }
    return keys;
}

// As long as the builtin ones and alike but for one letter in the middle.
Keys foreignTexts() {
    Keys keys = builtinTexts();
    for (UnicodeString& key : keys) {
        key.insert(key.length() / 2, u'q');
    }
    keys.erase(std::remove_if(keys.begin(), keys.end(),
                              [](const UnicodeString& key) {
                                  return ZRNameTable::getBuiltinNameEnum(key) != ZRN_EMPTY;
                              }),
               keys.end());
    return keys;
}

std::u16string plain(const UnicodeString& text) {
    return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

struct TextHash {
    std::size_t operator()(const UnicodeString& text) const {
        return static_cast<std::size_t>(text.hashCode());
    }
};

/// Nanoseconds a look-up, over keys of any string type.
template <class Texts, class Find>
double timeLookups(const Texts& keys, const Find& find) {
    const double all = timed(cpuNow, [&] {
        for (int pass = 0; pass < kPasses; ++pass) {
            for (const auto& key : keys) {
                keep(find(key));
            }
        }
    });
    return all / (kPasses * static_cast<double>(keys.size()));
}

template <class Table>
auto in(const Table& table) {
    return [&table](const auto& key) {
        return table.find(key) != table.end();
    };
}

class Tables {
public:
    Tables() {
        for (const UnicodeString& text : builtinTexts()) {
            const int number = ZRNameTable::getBuiltinNameEnum(text);
            m_hashed.emplace(plain(text), number);
            m_hashedTexts.emplace(text, number);
            m_ordered.emplace(text, number);
        }
    }

    void measure(const Options& options, const std::string& what, const Keys& keys) const {
        std::vector<std::u16string> plainKeys;
        std::vector<std::string> byteKeys;
        for (const UnicodeString& key : keys) {
            plainKeys.push_back(plain(key));
            key.toUTF8String(byteKeys.emplace_back());
        }
        std::vector<std::string> names = {"zro", "unordered_map", "unordered_map-text", "map-text"};
        std::vector<std::function<double()>> jobs = {
            [&] { return timeLookups(keys, ZRNameTable::getBuiltinNameEnum); },
            [&] { return timeLookups(plainKeys, in(m_hashed)); },
            [&] { return timeLookups(keys, in(m_hashedTexts)); },
            [&] {
                return timeLookups(keys, in(m_ordered));
            }};
#ifdef ZRO_BENCH_GPERF
        names.emplace_back("gperf-bytes");
        jobs.emplace_back([&] {
            return timeLookups(byteKeys, [](const std::string& key) {
                return PerfectHash::contains(key.data(), key.size());
            });
        });
#endif
        const std::vector<Spread> times = interleave(jobs, options.rounds);
        for (std::size_t index = 0; index < names.size(); ++index) {
            Record("names", what, names[index]).setSpread(times[index]);
        }
    }

private:
    std::unordered_map<std::u16string, int> m_hashed;
    std::unordered_map<UnicodeString, int, TextHash> m_hashedTexts;
    std::map<UnicodeString, int> m_ordered;
};

void run(const Options& options) {
    const Tables tables;
    if (hasCorpus(options, "fo-100k")) {
        const Corpus corpus = loadCorpus(options, "fo-100k");
        tables.measure(options, "document order", documentTexts(corpus.bytes));
    }
    tables.measure(options, "random order", builtinTexts());
    tables.measure(options, "no builtin name", foreignTexts());
}

}  // namespace
}  // namespace ZroCommon::bench

int main(int argc, char** argv) {
    return ZroCommon::bench::runProgram(argc, argv, ZroCommon::bench::run);
}
