#pragma once

#include <istream>
#include <memory>

#include "zro/uri/ZRUri.h"

namespace ZroCommon::internal {

/// `ZRUri::getStream` for those who must tell a resource that cannot be had from a lack of memory.
/// Null for everything else that goes wrong, in the application's resolver too.
/// \throws std::bad_alloc
std::unique_ptr<std::istream> openResource(const ZRUri& uri, UnicodeString* contentType = nullptr,
                                           UnicodeString* errorMessage = nullptr);

}  // namespace ZroCommon::internal
