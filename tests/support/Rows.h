#pragma once

#include <initializer_list>
#include <tuple>

namespace ZroCommon::testing {

/// A table of cases: for (const auto& [text, number] : Rows<const char*, int>{{"1", 1}, {"2", 2}})
template <class... Columns>
using Rows = std::initializer_list<std::tuple<Columns...>>;

}  // namespace ZroCommon::testing
