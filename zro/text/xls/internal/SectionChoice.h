#pragma once

#include <cstddef>
#include <optional>

#include "zro/text/xls/XlsFormat.h"

namespace ZroCommon::internal {

constexpr int kShowAsGeneral = -1;  ///< no section is for this number
constexpr int kShowNothing = -2;    ///< conditions exclude it

/// The section for a number: its index, `kShowAsGeneral` or `kShowNothing`.
int chooseSection(double number, const FMT2& format);

/// The section for text: the first one of that kind.
std::optional<std::size_t> chooseTextSection(const FMT2& format);

/// Whether the section shows the number's sign itself, so that the digits go without one.
bool showsOwnSign(const FMT& section);

}  // namespace ZroCommon::internal
