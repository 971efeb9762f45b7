#pragma once

#include <string>

#include "zro/containers/zip/ZRZipFile.h"
#include "zro/foundation/Text.h"

#include "tools/zro/Session.h"

namespace zro {

using ZroCommon::UnicodeString;

/// How a document introduces itself. What it does not state is empty.
struct Introduction {
    UnicodeString title;
    UnicodeString subject;
    UnicodeString author;
    UnicodeString keywords;
};

/// Reads the core properties of an OOXML package, and opens nothing outside of it. What is wrong
/// with them is an error.
Introduction corePropertiesOf(Session& session, const std::string& file,
                              const ZroCommon::ZRZipFile& package);

}  // namespace zro
