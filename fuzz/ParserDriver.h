#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "zro/xml/ZRXmlParser.h"

namespace ZroCommon::fuzzing {

/// How one input is parsed, taken from its first bytes.
struct ParseChoice {
    bool tokens = false;        ///< `nextToken` instead of `next`
    bool tolerant = false;      ///< go on behind errors, by a callback
    std::uint8_t features = 0;  ///< a bit for each `ZRXmlParser::Feature`

    static constexpr std::size_t kBytes = 2;
    static ParseChoice from(std::string_view head);
};

/// Keeps parses away from the machine's files: every URI is answered by `serve`.
///
/// While it lives the names of documents are in a shared name table of its own, so that names do
/// not pile up from one input to the next.
class Sandbox {
public:
    Sandbox();
    Sandbox(const Sandbox&) = delete;
    Sandbox& operator=(const Sandbox&) = delete;
    ~Sandbox();
};

/// Limits that keep any input short of a second.
ZRLimits smallLimits();

/// Parses a document to its end or first thrown error, asks for everything at every event, and
/// stops the process where an answer cannot be.
void parseAll(std::string_view document, const ParseChoice& choice);

/// What the next parse gets for an external URI; the views must live as long.
void serve(std::string_view (*answer)(const UnicodeString& uri, const void* user),
           const void* user);

}  // namespace ZroCommon::fuzzing
