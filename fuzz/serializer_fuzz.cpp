// Calls of the serializer, made from the bytes of the input. The first byte decides: any calls in
// any order, which must not do harm, or a sensible document in UTF-8 or Shift_JIS, which a parser
// must find unchanged.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>

#include "fuzz/SerializerScript.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const ZroCommon::fuzzing::Decisions decisions({data + 1, size - 1});
    if (data[0] % 4 < 2) {
        ZroCommon::fuzzing::makeWildCalls(decisions);
        return 0;
    }
    const ZroCommon::fuzzing::SensibleDocument document(decisions, data[0] % 4 == 3);
    const std::string found = ZroCommon::fuzzing::parsedBack(document.bytes());
    if (found != document.expected()) {
        std::fprintf(stderr, "%s\nexpected %s\nfound    %s\n", document.bytes().c_str(),
                     document.expected().c_str(), found.c_str());
        std::abort();
    }
    return 0;
}
