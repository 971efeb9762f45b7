// Pull parse: every name, namespace, attribute value and text taken, from a stream.

#include "bench/peers/Contenders.h"
#include "bench/support/Corpus.h"
#include "bench/support/Fairness.h"
#include "bench/support/Options.h"
#include "bench/support/Record.h"
#include "bench/support/Timing.h"

namespace ZroCommon::bench {
namespace {

Tally readAll(const PullContender& contender, const Corpus& corpus) {
    Tally sum;
    for (const std::string_view document : corpus.documents) {
        sum += contender.run(document);
    }
    return sum;
}

std::vector<PullContender> chosen(const Options& options) {
    std::vector<PullContender> result;
    for (PullContender& contender : allContenders().pull) {
        if (options.wantsContender(contender.name)) {
            result.push_back(std::move(contender));
        }
    }
    return result;
}

void measure(const Options& options, const Corpus& corpus,
             const std::vector<PullContender>& contenders) {
    Fairness fairness;
    std::vector<std::function<double()>> jobs;
    for (const PullContender& contender : contenders) {
        fairness.check(contender.name, contender.form, readAll(contender, corpus));
        jobs.emplace_back([&corpus, &contender] {
            return timed(cpuNow, [&] { keep(readAll(contender, corpus).units); });
        });
    }
    const std::vector<Spread> times = interleave(jobs, corpus.rounds(options));
    for (std::size_t index = 0; index < jobs.size(); ++index) {
        Record("pull", corpus.name, contenders[index].name)
            .set("bytes", corpus.size())
            .setSpread(times[index]);
    }
}

void run(const Options& options) {
    const std::vector<PullContender> contenders = chosen(options);
    forEachCorpus(options, [&](const Corpus& corpus) { measure(options, corpus, contenders); });
}

}  // namespace
}  // namespace ZroCommon::bench

int main(int argc, char** argv) {
    return ZroCommon::bench::runProgram(argc, argv, ZroCommon::bench::run);
}
