#pragma once

#include <memory>
#include <string>

#include "zro/containers/ole/OleCompFile.h"
#include "zro/containers/ole/OleSummaryInformation.h"

#include "tools/zro/CommandLine.h"

namespace zro {

/// Opens the summary information of a compound file.
/// \param isThere  whether there is such a stream
/// \return false when there is none or it is damaged; what is ahead of the damage can be asked for
bool openSummary(ZroCommon::OleCompFile& file, ZroCommon::OleSummaryInformation& summary,
                 bool& isThere);

/// Whether the file has a stream of that name in its root.
bool hasStream(ZroCommon::OleCompFile& file, const char* name);

/// Adds `props` and `links` to the command on compound files.
void addOlePropertyOperations(const FileOperations& operations);

}  // namespace zro
