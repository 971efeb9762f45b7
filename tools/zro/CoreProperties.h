#pragma once

#include <string>

#include "zro/containers/zip/ZRZipFile.h"
#include "zro/foundation/Text.h"

namespace zro {

using ZroCommon::UnicodeString;

/// How a document introduces itself. What it does not state is empty.
struct Introduction {
    UnicodeString title;
    UnicodeString subject;
    UnicodeString author;
    UnicodeString keywords;
};

/// Reads the core properties of an OOXML package, and opens nothing outside of it.
/// \param damage  receives what is wrong with them, if something is
Introduction corePropertiesOf(const ZroCommon::ZRZipFile& package, std::string& damage);

}  // namespace zro
