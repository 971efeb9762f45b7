#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "bench/support/Options.h"

namespace ZroCommon::bench {

/// The documents of one measurement, in memory: mostly one, or ten thousand small ones.
struct Corpus {
    std::string name;
    std::string file;
    std::string bytes;
    std::vector<std::string_view> documents;  // into bytes

    /// Bytes of all documents.
    double size() const;
    /// Fewer rounds for what takes seconds each time, more for the rest.
    int rounds(const Options& options) const;
};

/// Names in the order of the report.
const std::vector<std::string>& corpusNames();

/// Loads one by name.
/// \throws std::runtime_error  when the file is not in `options.data`
Corpus loadCorpus(const Options& options, const std::string& name);

/// Calls `measure(const Corpus&)` for each document set that was asked for and is there, one in
/// memory at a time; says on standard error what is missing.
template <class Measure>
void forEachCorpus(const Options& options, Measure&& measure);

/// Whether the set's file is there; a line on standard error when not.
bool hasCorpus(const Options& options, const std::string& name);

template <class Measure>
void forEachCorpus(const Options& options, Measure&& measure) {
    for (const std::string& name : corpusNames()) {
        if (options.wantsCorpus(name) && hasCorpus(options, name)) {
            const Corpus corpus = loadCorpus(options, name);
            measure(corpus);
        }
    }
}

}  // namespace ZroCommon::bench
