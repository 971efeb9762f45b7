// Surveys real documents and the W3C suite, and holds docs/conformance.md to what was found:
// conformance DATA_DIR docs/conformance.md [--write]
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

#include "tests/conformance/RealDocuments.h"

namespace {

constexpr int kSkipped = 77;
constexpr std::string_view kBegin = "<!-- measured: begin -->\n";
constexpr std::string_view kEnd = "<!-- measured: end -->";

std::string contentOf(const std::string& path) {
    std::ifstream in(path);
    return {std::istreambuf_iterator<char>(in), {}};
}

int compareWithPage(const std::string& path, const std::string& measured, bool write) {
    std::string page = contentOf(path);
    const std::size_t begin = page.find(kBegin);
    const std::size_t end = page.find(kEnd);
    if (begin == std::string::npos || end == std::string::npos) {
        std::cerr << path << " has no place for the tables\n";
        return 1;
    }
    const std::size_t from = begin + kBegin.size();
    if (page.substr(from, end - from) == measured) {
        return 0;
    }
    if (write) {
        std::ofstream(path) << page.replace(from, end - from, measured);
        return 0;
    }
    std::cout << measured << '\n' << path << " says something else; see --write\n";
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: conformance DATA_DIR PAGE [--write]\n";
        return 2;
    }
    const std::string dataDir = argv[1];
    if (!std::ifstream(dataDir + "/xmlconf/tests.tsv")) {
        std::cout << "skipped: there are no documents in " << dataDir << '\n';
        return kSkipped;
    }
    std::ostringstream measured;
    measured << "## Real documents\n\n";
    int faults = ZroCommon::testing::surveyRealDocuments(dataDir, measured);
    measured << "\n## The W3C suite\n\n";
    faults += ZroCommon::testing::surveyConformanceSuite(dataDir, measured);
    measured << '\n';
    if (faults != 0) {
        std::cout << measured.str() << faults << " faults\n";
        return 1;
    }
    const bool write = argc > 3 && std::string_view(argv[3]) == "--write";
    return compareWithPage(argv[2], measured.str(), write);
}
