#pragma once

#include <functional>
#include <string>
#include <vector>

#include "zro/containers/zip/ZRZipFile.h"
#include "zro/xml/ZRXmlParser.h"

#include "tools/zro/Session.h"

namespace zro {

using ZroCommon::UnicodeString;

/// A relationship as its part has it and the library resolves it.
struct Relationship {
    UnicodeString id;
    UnicodeString type;
    UnicodeString target;
    UnicodeString mode;
    ZroCommon::ZRZipFileEntry* part = nullptr;  ///< what an internal one leads to
    bool isMissing = false;                     ///< inside the package, and no entry
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

/// The part that a target leads to, or null: the entry of that very name, as the library takes it,
/// or else the one that the target names as a reference from the root of the package.
ZroCommon::ZRZipFileEntry* partOf(const ZroCommon::ZRZipFile& package, const UnicodeString& target);

/// Reads a part without opening anything outside of it.
/// \param look  is shown every event; returns what is wrong with it, or empty
/// \return the first fault, with its line; empty without one
std::string readPart(ZroCommon::ZRZipFileEntry& part,
                     const std::function<std::string(const ZroCommon::ZRXmlParser&)>& look);

/// An error when there is a fault: "a.xml cannot be read: line 1: ...".
void complainAboutPart(Session& session, const std::string& file, const UnicodeString& part,
                       const std::string& fault);

/// An error when the library does not read "[Content_Types].xml" to its end.
void complainAboutContentTypes(Session& session, const std::string& file,
                               const ZroCommon::ZRZipFile& package);

/// The last segment, which says to people what a type is: "officeDocument".
UnicodeString shortType(const UnicodeString& type);

/// Whether the entry only describes others: "[Content_Types].xml", and relationships.
bool isDescription(const UnicodeString& name);

}  // namespace zro
