#pragma once

#include "zro/vocabulary/ZRNameTable.h"

namespace ZroCommon::testing {

/// Keeps the numbers of names for a test that outlives the parsers and serializers it makes: the
/// shared table goes with the last of them otherwise.
class NamesStay {
public:
    NamesStay() { ZRNameTable::addRefSharedNameTable(); }
    NamesStay(const NamesStay&) = delete;
    NamesStay& operator=(const NamesStay&) = delete;
    ~NamesStay() { ZRNameTable::releaseSharedNameTable(); }
};

}  // namespace ZroCommon::testing
