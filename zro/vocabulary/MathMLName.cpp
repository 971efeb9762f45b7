#include "zro/vocabulary/MathMLName.h"

namespace ZroCommon {

void MathMLName::cleanup() {}

}  // namespace ZroCommon
