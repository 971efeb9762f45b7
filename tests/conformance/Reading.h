#pragma once

#include <string>

#include "zro/dom/ZRDocument.h"
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

/// "0x180E Unexpected text at top level of the document: U+0078 (x)"; the message's first line.
std::string describe(const class ZroCommon::ZRError& error);

enum class TreeDump : unsigned char {
    Exact,
    AsSaved,  ///< without what saving does not keep
};

/// Every node of a tree with its names, attributes and text, one a line.
std::string dumpTree(ZRDocument& document, TreeDump kind);

/// How a document fared as a tree.
struct TreeOutcome {
    std::string error;             ///< of loading
    bool pullModeIsEqual = false;  ///< node by node and at once give one tree
    bool savedIsEqual =
        false;  ///< what was saved loads as the same tree, what saving does not keep aside
};

TreeOutcome loadBothWays(const std::string& path);

}  // namespace ZroCommon::testing
