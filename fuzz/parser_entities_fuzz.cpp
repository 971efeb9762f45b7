// The pull parser on a document with external entities and subsets. The input is two bytes that
// choose how to parse, then pieces parted by the byte 0xFF: the document, and what a URI gives by
// the digit it ends in.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "fuzz/ParserDriver.h"

using ZroCommon::UnicodeString;
using ZroCommon::fuzzing::ParseChoice;

namespace {

using Pieces = std::vector<std::string_view>;

Pieces piecesOf(std::string_view input) {
    Pieces pieces;
    while (true) {
        const std::size_t end = std::min(input.find('\xFF'), input.size());
        pieces.push_back(input.substr(0, end));
        if (end == input.size()) {
            return pieces;
        }
        input.remove_prefix(end + 1);
    }
}

std::string_view pieceOf(const UnicodeString& uri, const void* user) {
    const auto& pieces = *static_cast<const Pieces*>(user);
    const auto last = uri.isEmpty() ? std::size_t{0} : std::size_t{uri.charAt(uri.length() - 1)};
    return pieces[last % pieces.size()];
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    if (input.size() < ParseChoice::kBytes) {
        return 0;
    }
    const ZroCommon::fuzzing::Sandbox sandbox;
    Pieces pieces = piecesOf(input.substr(ParseChoice::kBytes));
    // '0' is 48: made so that the digit n names piece n of up to ten, the document being piece 0.
    pieces.resize(16);
    ZroCommon::fuzzing::serve(pieceOf, &pieces);
    ZroCommon::fuzzing::parseAll(pieces.front(), ParseChoice::from(input));
    return 0;
}
