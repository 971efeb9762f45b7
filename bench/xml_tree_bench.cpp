// Tree: load, walk, free; and the heap that the loaded tree holds.

#include <map>
#include <utility>

#include "bench/peers/Contenders.h"
#include "bench/support/Corpus.h"
#include "bench/support/Fairness.h"
#include "bench/support/FreshProcess.h"
#include "bench/support/Memory.h"
#include "bench/support/Options.h"
#include "bench/support/Record.h"
#include "bench/support/Timing.h"

namespace ZroCommon::bench {
namespace {

std::vector<TreeContender> chosen(const Options& options) {
    std::vector<TreeContender> result;
    for (TreeContender& contender : allContenders().tree) {
        if (options.wantsContender(contender.name)) {
            result.push_back(std::move(contender));
        }
    }
    return result;
}

void ignore() {}

Tally buildAll(const TreeContender& contender, const Corpus& corpus) {
    Tally sum;
    for (const std::string_view document : corpus.documents) {
        sum += contender.run(document, ignore);
    }
    return sum;
}

/// Of one document, in bytes for each byte of it.
struct Heap {
    double live = 0;  ///< what the loaded tree holds
    double peak = 0;  ///< resident memory that loading and walking added at the most
};

Heap heapOf(const TreeContender& contender, const Corpus& corpus) {
    const std::string_view document = corpus.documents.front();
    contender.run("<warm/>", ignore);
    resetPeakResident();
    const double resident = peakResident();
    const double before = liveHeap();
    Heap heap;
    contender.run(document, [&] { heap.live = liveHeap() - before; });
    heap.live /= corpus.size();
    heap.peak = (peakResident() - resident) / corpus.size();
    return heap;
}

using Heaps = std::map<std::pair<std::string, std::string>, Heap>;  // by corpus and contender

bool suits(const TreeContender& contender, const Corpus& corpus) {
    return corpus.documents.front().size() <= contender.largest;
}

/// Measures in fresh processes: an allocator that keeps memory for the next tree would otherwise
/// hide what this one takes. Documents of 2 KB say nothing here.
Heaps measureHeaps(const Options& options, const std::vector<TreeContender>& contenders) {
    Heaps heaps;
    for (const std::string& name : corpusNames()) {
        if (name == "small" || !options.wantsCorpus(name) || !hasCorpus(options, name)) {
            continue;
        }
        for (const TreeContender& contender : contenders) {
            heaps[{name, contender.name}] = inFreshProcess<Heap>([&] {
                const Corpus corpus = loadCorpus(options, name);
                return suits(contender, corpus) ? heapOf(contender, corpus) : Heap{};
            });
        }
    }
    return heaps;
}

void measure(const Options& options, const Corpus& corpus, std::vector<TreeContender> contenders,
             const Heaps& heaps) {
    std::erase_if(contenders, [&](const auto& contender) { return !suits(contender, corpus); });
    Fairness fairness;
    std::vector<std::function<double()>> jobs;
    for (const TreeContender& contender : contenders) {
        fairness.check(contender.name, contender.form, buildAll(contender, corpus));
        jobs.emplace_back([&corpus, &contender] {
            return timed(cpuNow, [&] {
                keep(buildAll(contender, corpus).units);
                settleHeap();
            });
        });
    }
    const std::vector<Spread> times = interleave(jobs, corpus.rounds(options));
    for (std::size_t index = 0; index < jobs.size(); ++index) {
        Record record("tree", corpus.name, contenders[index].name);
        record.set("bytes", corpus.size()).setSpread(times[index]);
        const auto heap = heaps.find({corpus.name, contenders[index].name});
        if (heap != heaps.end()) {
            record.set("heap_per_byte", heap->second.live).set("peak_per_byte", heap->second.peak);
        }
    }
}

void run(const Options& options) {
    const std::vector<TreeContender> contenders = chosen(options);
    const Heaps heaps = measureHeaps(options, contenders);
    forEachCorpus(options,
                  [&](const Corpus& corpus) { measure(options, corpus, contenders, heaps); });
}

}  // namespace
}  // namespace ZroCommon::bench

int main(int argc, char** argv) {
    return ZroCommon::bench::runProgram(argc, argv, ZroCommon::bench::run);
}
