#include "zro/vocabulary/SVGName.h"

namespace ZroCommon {

void SVGName::cleanup() {}

}  // namespace ZroCommon
