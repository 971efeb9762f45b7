#pragma once

namespace ZroCommon::internal {

/// After this no text is a builtin name any more; the texts of the numbers stay. Part of `cleanup`.
void forgetBuiltinNames();

}  // namespace ZroCommon::internal
