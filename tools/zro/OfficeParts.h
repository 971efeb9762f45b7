#pragma once

#include <string>
#include <vector>

#include "zro/containers/zip/ZRZipFile.h"

namespace zro {

using ZroCommon::UnicodeString;

/// A relationship as its part has it and the library resolves it.
struct Relationship {
    UnicodeString id;
    UnicodeString type;
    UnicodeString target;
    UnicodeString mode;
    bool isMissing = false;  ///< inside the package, and no entry
};

struct Relationships {
    std::vector<Relationship> all;
    UnicodeString part;  ///< where they stand
    bool isThere = false;
    std::string fault;  ///< why the library reads no farther; empty when it reads to the end
};

/// The relationships of a part, or with null those of the package.
Relationships relationshipsOf(const ZroCommon::ZRZipFile& package,
                              ZroCommon::ZRZipFileEntry* entry);

/// Why the library does not read "[Content_Types].xml" to its end. Empty when it does.
std::string faultOfContentTypes(const ZroCommon::ZRZipFile& package);

/// The last segment, which says to people what a type is: "officeDocument".
UnicodeString shortType(const UnicodeString& type);

/// Whether the entry only describes others: "[Content_Types].xml", and relationships.
bool isDescription(const UnicodeString& name);

}  // namespace zro
