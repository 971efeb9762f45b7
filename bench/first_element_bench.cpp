// The time to the root element of the largest document, input already open.

#include "bench/peers/Contenders.h"
#include "bench/support/Corpus.h"
#include "bench/support/Options.h"
#include "bench/support/Record.h"
#include "bench/support/Timing.h"

namespace ZroCommon::bench {
namespace {

void measure(const Options& options, const Corpus& corpus) {
    constexpr int kRoundsPerRound = 100;  // one round takes microseconds only
    const FirstInput input{corpus.bytes, corpus.file};
    std::vector<std::function<double()>> jobs;
    std::vector<std::string> names;
    for (const FirstContender& contender : allContenders().first) {
        if (options.wantsContender(contender.name)) {
            names.push_back(contender.name);
            jobs.emplace_back([contender, &input] {
                const std::function<void()> action = contender.prepare(input);
                return timed(wallNow, action);
            });
        }
    }
    const std::vector<Spread> times = interleave(jobs, options.rounds * kRoundsPerRound);
    for (std::size_t index = 0; index < jobs.size(); ++index) {
        Record("first", corpus.name, names[index])
            .set("bytes", corpus.size())
            .setSpread(times[index]);
    }
}

void run(const Options& options) {
    for (const char* name : {"fo-100k", "fo-100m"}) {  // the size shall not matter
        if (options.wantsCorpus(name) && hasCorpus(options, name)) {
            const Corpus corpus = loadCorpus(options, name);
            measure(options, corpus);
        }
    }
}

}  // namespace
}  // namespace ZroCommon::bench

int main(int argc, char** argv) {
    return ZroCommon::bench::runProgram(argc, argv, ZroCommon::bench::run);
}
