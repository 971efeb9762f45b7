#pragma once

#include <ostream>
#include <string>

namespace ZroCommon::testing {

/// Reads every document that the tables under `dataDir` list, compares counts and digests with
/// theirs, loads each in both modes, saves it and loads it again.
/// \param out  gets a table by folder and every document that does not load, with the reason
/// \return the number of faults: differences without a reason, and reasons that no longer hold
int surveyRealDocuments(const std::string& dataDir, std::ostream& out);

/// Reads every case of the W3C suite and compares accepted and refused with the suite's verdict.
/// \param out  gets the table by class and every difference with its reason
/// \return the number of faults
int surveyConformanceSuite(const std::string& dataDir, std::ostream& out);

}  // namespace ZroCommon::testing
