// Writing: the events of a document, in the strings of each writer, into memory.

#include "bench/peers/Contenders.h"
#include "bench/support/Corpus.h"
#include "bench/support/Options.h"
#include "bench/support/Record.h"
#include "bench/support/Recording.h"
#include "bench/support/Timing.h"

namespace ZroCommon::bench {
namespace {

using Events = std::vector<WriteEvent>;
using Action = std::function<std::size_t()>;

std::vector<Events> recordAll(const Corpus& corpus) {
    std::vector<Events> all;
    all.reserve(corpus.documents.size());
    for (const std::string_view document : corpus.documents) {
        all.push_back(recordEvents(document));
    }
    return all;
}

std::size_t writeAll(const std::vector<Action>& actions) {
    std::size_t sum = 0;
    for (const Action& action : actions) {
        sum += action();
    }
    return sum;
}

struct Job {
    std::string contender;
    std::vector<Action> actions;  // one a document
    std::size_t written = 0;
};

Job prepare(const WriteContender& contender, const std::vector<Events>& all) {
    Job job;
    job.contender = contender.name;
    job.actions.reserve(all.size());
    for (const Events& events : all) {
        job.actions.push_back(contender.prepare(events));
    }
    job.written = writeAll(job.actions);
    return job;
}

void measure(const Options& options, const Corpus& corpus) {
    const std::vector<Events> all = recordAll(corpus);
    std::vector<Job> jobs;
    std::vector<std::function<double()>> timers;
    for (const WriteContender& contender : allContenders().write) {
        if (options.wantsContender(contender.name)) {
            jobs.push_back(prepare(contender, all));
            timers.emplace_back([actions = jobs.back().actions] {
                return timed(cpuNow, [&] { keep(writeAll(actions)); });
            });
        }
    }
    const std::vector<Spread> times = interleave(timers, corpus.rounds(options));
    for (std::size_t index = 0; index < jobs.size(); ++index) {
        Record("write", corpus.name, jobs[index].contender)
            .set("bytes", corpus.size())
            .set("written", static_cast<double>(jobs[index].written))
            .setSpread(times[index]);
    }
}

void run(const Options& options) {
    forEachCorpus(options, [&](const Corpus& corpus) { measure(options, corpus); });
}

}  // namespace
}  // namespace ZroCommon::bench

int main(int argc, char** argv) {
    return ZroCommon::bench::runProgram(argc, argv, ZroCommon::bench::run);
}
