#include "bench/support/Jobs.h"

#include "bench/support/Record.h"
#include "bench/support/Timing.h"

namespace ZroCommon::bench {

void runJobs(const Options& options, std::string_view kind, std::vector<Job> jobs) {
    std::erase_if(jobs, [&](const Job& job) { return !options.wantsContender(job.contender); });
    std::vector<std::function<double()>> actions;
    actions.reserve(jobs.size());
    for (const Job& job : jobs) {
        actions.push_back(job.run);
    }
    const std::vector<Spread> times = interleave(actions, options.rounds);
    for (std::size_t index = 0; index < jobs.size(); ++index) {
        Record(kind, jobs[index].what, jobs[index].contender).setSpread(times[index]);
    }
}

}  // namespace ZroCommon::bench
