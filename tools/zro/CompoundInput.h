#pragma once

#include <istream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "zro/containers/ole/OleCompFile.h"

#include "tools/zro/Session.h"

namespace zro {

/// A compound file named on the command line.
struct CompoundInput {
    std::unique_ptr<std::istream> stream;  ///< can seek
    std::unique_ptr<ZroCommon::JZStreamIOobj> bytes;
    std::unique_ptr<ZroCommon::OleCompFile> file;
};

/// Opens a compound file. None, and an error that names the check that refused it, when it cannot
/// be opened.
std::optional<CompoundInput> openCompound(Session& session, const std::string& name);

/// What a check found, as in "the FAT names block 7, which is not wholly in the file".
std::string reasonOf(const ZroCommon::OleRefusal& refusal);

/// An entry below the root, and how to reach it.
struct CompoundEntry {
    long index;  ///< in the directory
    std::vector<UnicodeString> path;

    const UnicodeString& name() const { return path.back(); }
};

/// All entries that the root leads to, each storage before what is in it, siblings in their order.
/// An entry that is reached twice counts once.
std::vector<CompoundEntry> entriesOf(const ZroCommon::OleCompFile& file);

/// The names with "/" between them, as `namesIn` takes them apart again.
std::string shownPath(const std::vector<UnicodeString>& path);

/// The names in a text such as "ObjectPool/\u{1}CompObj".
std::vector<UnicodeString> namesIn(const std::string& path);

}  // namespace zro
