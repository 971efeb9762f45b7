// Measures what a page of the documentation tells, and holds the page to it:
// conformance documents|number-formats|gallery PAGE DATA_DIR [--write]
#include <algorithm>
#include <array>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string>

#include "tests/conformance/Surveys.h"
#include "tests/support/NoNetwork.h"
#include "tests/support/Skips.h"

namespace ZroCommon::testing {
namespace {

constexpr int kSkipped = 77;

struct Survey {
    std::string_view name;
    std::string_view needs;  // a file below the data, if any
    int (*measure)(const Measuring&);
};

constexpr std::array kSurveys = {Survey{"documents", "/xmlconf/tests.tsv", surveyDocuments},
                                 Survey{"number-formats", "/numfmt/formats.tsv", surveyFormats},
                                 Survey{"gallery", "", remakeGallery}};

int run(const Survey& survey, const std::string& path, const std::string& dataDir, bool writes) {
    constexpr std::string_view kBegin = "<!-- measured: begin -->\n";
    constexpr std::string_view kEnd = "<!-- measured: end -->";
    if (!survey.needs.empty() && !std::ifstream(dataDir + std::string(survey.needs))) {
        std::cout << noData(dataDir + std::string(survey.needs)) << '\n';
        return kSkipped;
    }
    std::ifstream in(path);
    std::string page{std::istreambuf_iterator<char>(in), {}};
    const std::size_t begin = page.find(kBegin) + kBegin.size();
    const std::size_t end = page.find(kEnd);
    if (end == std::string::npos || end < begin) {
        std::cout << path << " has no place for the tables\n";
        return 1;
    }
    const std::string told = page.substr(begin, end - begin);
    std::ostringstream measured;
    const int faults = survey.measure({dataDir, told, measured});
    if (faults == 0 && measured.str() == told) {
        return 0;
    }
    if (faults == 0 && writes) {
        std::ofstream(path) << page.replace(begin, end - begin, measured.str());
        return 0;
    }
    std::cout << measured.str() << '\n' << faults << " faults; " << path << " differs: --write\n";
    return 1;
}

}  // namespace
}  // namespace ZroCommon::testing

int main(int count, char** arguments) {
    using namespace ZroCommon::testing;  // NOLINT(google-build-using-namespace)
    const std::string_view name = count > 3 ? arguments[1] : "";
    const auto* const survey =
        std::find_if(kSurveys.begin(), kSurveys.end(),
                     [name](const Survey& candidate) { return candidate.name == name; });
    if (survey == kSurveys.end()) {
        std::cerr
            << "usage: conformance documents|number-formats|gallery PAGE DATA_DIR [--write]\n";
        return 2;
    }
    denyNetwork();
    const bool writes = count > 4 && std::string_view(arguments[4]) == "--write";
    return run(*survey, arguments[2], arguments[3], writes);
}
