#include "zro/text/ZRUtil.h"

namespace ZroCommon {

void ZRUtil::cleanup() {}

void ZRUtil::checkLink() {}

}  // namespace ZroCommon
