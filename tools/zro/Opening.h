#pragma once

#include <istream>
#include <memory>
#include <string>

#include "tools/zro/Session.h"

namespace zro {

/// The bytes of an input as they come: of a file, an entry of packages, a `data:` URI, an address
/// or standard input. Null, and an error that names the reason, when it cannot be opened.
std::unique_ptr<std::istream> openInput(Session& session, const Input& input);

/// The same by a stream that can seek. What cannot by itself is held in memory as far as it is
/// read.
std::unique_ptr<std::istream> openSeekableInput(Session& session, const Input& input);

/// Why the library opens nothing at a URI: "no such file", "HTTP status is 404", for a package how
/// far its names lead. Looks again where the library says nothing; what the network answered is to
/// be handed over.
std::string reasonNotOpened(Session& session, const UnicodeString& uri,
                            const UnicodeString& fromLibrary);

/// Whether the library opens URIs of this scheme: `file:`, `http:`, `https:`, and `jar:` with one
/// of these in it.
bool isSchemeOpened(const UnicodeString& uri);

/// A stream as it is, or one that holds what it reads when it cannot seek.
/// \param most  bytes that it holds before it ends; 0 for any number
std::unique_ptr<std::istream> seekable(std::unique_ptr<std::istream> stream, std::size_t most);

/// Why a file cannot be written.
std::string reasonNotWritten(const std::string& path);

}  // namespace zro
