#pragma once

#include <functional>
#include <istream>
#include <memory>
#include <string>

#include "tools/zro/Session.h"

namespace zro {

/// Bytes, and what is wrong with them.
struct CheckedBytes {
    std::unique_ptr<std::istream> stream;
    /// To be asked when the bytes have been read: "is damaged behind byte 7 of 9". Empty when
    /// nothing is known to be wrong, or not all have been read.
    std::function<std::string()> fault;
};

/// The bytes of an input; entries of local packages are compared with their headers, and addresses
/// with the limits on resources. Without a stream, and an error, when it cannot be opened.
CheckedBytes openChecked(Session& session, const Input& input);

/// What is packed as gzip data (RFC 1952) in other bytes: all members, compared with their
/// trailers. Without a stream when the bytes do not begin as such data.
CheckedBytes unpacked(CheckedBytes packed);

}  // namespace zro
