// The pull parser on any bytes: two that choose how to parse, then the document.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/ParserDriver.h"

using ZroCommon::fuzzing::ParseChoice;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    if (input.size() < ParseChoice::kBytes) {
        return 0;
    }
    const ZroCommon::fuzzing::Sandbox sandbox;
    ZroCommon::fuzzing::parseAll(input.substr(ParseChoice::kBytes), ParseChoice::from(input));
    return 0;
}
