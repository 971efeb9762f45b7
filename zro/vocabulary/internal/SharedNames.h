#pragma once

#include <string_view>

#include "zro/vocabulary/ZRName.h"

namespace ZroCommon::internal {

/// The builtin name of this text, or `ZRN_EMPTY`; no lock, no string made.
ZRNameEnum findBuiltinName(std::u16string_view text);

/// Interns a text in the shared table (`ZRNameTable::getSharedNameEnum` without a string made for
/// a name that exists). Builtin names are found first and take no lock.
ZRNameEnum internSharedName(std::u16string_view text);

/// The same for a text that is known to be no builtin name.
/// \param hash  `keyedNameHash(text)`
ZRNameEnum internSharedNonBuiltinName(std::u16string_view text, std::uint64_t hash);

}  // namespace ZroCommon::internal
