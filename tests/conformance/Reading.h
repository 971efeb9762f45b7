#pragma once

#include <ostream>
#include <string>

#include "zro/xml/ZRLimits.h"

namespace ZroCommon::testing {

/// What a pull parse of a document found, in the terms of the tables of expectations.
struct Facts {
    std::string error;  ///< "" or code and first line of the message
    unsigned code = 0;
    std::size_t elements = 0;
    std::size_t attributes = 0;
    std::size_t textCharacters = 0;
    std::size_t maxDepth = 0;
    std::string textSha256;
    std::string tagsSha256;
};

/// Reads a file with `next` to its end. \param limits  for documents without an end
Facts readFacts(const std::string& path, const ZRLimits& limits = {});

/// How a document fared as a tree.
struct TreeOutcome {
    std::string error;             ///< of loading
    bool pullModeIsEqual = false;  ///< node by node and at once give one tree
    bool savedIsEqual = false;     ///< what was saved loads as the same tree
};

TreeOutcome loadBothWays(const std::string& path);

// The two parts of `surveyDocuments`, each with its faults.
int surveyRealDocuments(const std::string& dataDir, std::ostream& out);
int surveyConformanceSuite(const std::string& dataDir, std::ostream& out);

}  // namespace ZroCommon::testing
