#pragma once

#include <string>
#include <vector>

#include "zro/foundation/ZRError.h"

#include "tools/zro/SourceText.h"

namespace zro {

/// An element whose end tag has not been seen.
struct OpenElement {
    std::string name;
    int line = 0;
};

/// The place in the source that an error is about: the token that its message names when that can
/// be found, else the last character read.
Excerpt placeOf(const ZroCommon::ZRError& error, const SourceText& source);

/// Advice on an error in a document, or nothing.
/// \param open    elements open at the time, outermost first
/// \param source  at the error; null when it cannot be read again
std::string adviceOn(const ZroCommon::ZRError& error, const std::vector<OpenElement>& open,
                     const SourceText* source);

/// The code without its severity.
int plainCode(const ZroCommon::ZRError& error);

}  // namespace zro
