#pragma once

#include <cstddef>
#include <istream>

namespace ZroCommon::internal {

/// Reads up to `count` bytes and sets the state of the stream as `istream::read` does, with one
/// difference: a failed allocation passes, so that it cannot be taken for the end of the data. Any
/// other exception is a failure of the stream and ends there.
/// \return the number of bytes read
std::size_t readSource(std::istream& source, char* bytes, std::size_t count);

/// The same, but content with what the stream's buffer holds or gets by one refill, so that a slow
/// source is read as early as it delivers.
/// \return the number of bytes read; 0 at the end alone
std::size_t readReady(std::istream& source, char* bytes, std::size_t count);

}  // namespace ZroCommon::internal
