#pragma once

#include <string>

namespace zro {

/// The library's word on a failed request, "Cannot open URL: 2EFD", with what its number means
/// behind it in brackets. A message without a known number stays as it is.
std::string explainedNumber(const std::string& message);

}  // namespace zro
