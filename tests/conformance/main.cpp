// Surveys real documents and the W3C suite, and holds docs/conformance.md to what was found:
// conformance DATA_DIR docs/conformance.md [--write]
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

#include "tests/conformance/MeasuredPage.h"
#include "tests/conformance/RealDocuments.h"
#include "tests/support/NoNetwork.h"
#include "tests/support/Skips.h"

namespace {

constexpr int kSkipped = 77;
}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: conformance DATA_DIR PAGE [--write]\n";
        return 2;
    }
    const std::string dataDir = argv[1];
    if (!std::ifstream(dataDir + "/xmlconf/tests.tsv")) {
        std::cout << ZroCommon::testing::noData(dataDir + "/xmlconf/tests.tsv") << '\n';
        return kSkipped;
    }
    ZroCommon::testing::denyNetwork();
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
    return ZroCommon::testing::comparePage(argv[2], measured.str(), write);
}
