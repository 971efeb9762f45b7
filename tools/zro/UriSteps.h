#pragma once

#include <string>
#include <vector>

#include "zro/uri/ZRUri.h"

namespace zro {

/// One thing that is done on the way to the bytes of a resource.
struct OpeningStep {
    const char*
        means;  ///< "resolver", "file", "jar" or "http" of the library, "zro" of the program
    std::string what;
};

/// What opening takes, in order, were each step to succeed. Nothing is opened.
std::vector<OpeningStep> openingSteps(const ZroCommon::ZRUri& uri);

}  // namespace zro
