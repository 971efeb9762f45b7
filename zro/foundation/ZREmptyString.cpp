#include "zro/foundation/ZREmptyString.h"

namespace ZroCommon {

ZREmptyString::~ZREmptyString() = default;
ZRBogusString::~ZRBogusString() = default;

// Ahead of every ordinary initialiser, since static objects of other files and of clients use them.
__attribute__((init_priority(101))) const ZREmptyString ZREmptyString::EMPTY_VALUE;
__attribute__((init_priority(101))) const ZRBogusString ZRBogusString::BOGUS_VALUE{SetBogus{}};

}  // namespace ZroCommon
