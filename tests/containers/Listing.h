#pragma once

#include <sstream>
#include <string>

#include "tests/support/Streams.h"
#include "tests/support/Text.h"
#include "zro/containers/zip/ZRZipFile.h"

namespace ZroCommon::testing {

/// A package that lies in memory.
inline ZRZipFile opened(const std::string& bytes) {
    return {new std::istringstream(bytes), true};
}

/// The entries as "a=content b=content"; what is longer than 20 bytes as its size.
inline std::string listing(const ZRZipFile& package) {
    std::string all;
    for (unsigned i = 0; i < package.getFileEntryCount(); ++i) {
        ZRZipFileEntry& entry = *package.getFileEntry(i);
        const std::string data = restOf(*entry.getUncompressedStream(false));
        all += (i == 0 ? "" : " ") + utf8(entry.getFileName()) + "="
               + (data.size() > 20 ? std::to_string(data.size()) : data);
    }
    return all;
}

}  // namespace ZroCommon::testing
