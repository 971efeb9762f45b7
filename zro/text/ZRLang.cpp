#include "zro/text/ZRLang.h"

namespace ZroCommon {

void ZRLang::cleanup() {}

}  // namespace ZroCommon
