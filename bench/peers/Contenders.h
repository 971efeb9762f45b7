#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace ZroCommon::bench {

/// What a contender saw of a document. Equal tallies show that all did the same work.
struct Tally {
    std::uint64_t elements = 0;
    std::uint64_t attributes = 0;  ///< namespace declarations included
    std::uint64_t units = 0;       ///< code units of all attribute values and texts

    Tally& operator+=(const Tally& other);
};

/// The code unit in which a contender hands out text; `Tally::units` compare within one form.
enum class Form { Utf8, Utf16 };

/// Reads one document to its end and takes every name, namespace, attribute value and text.
struct PullContender {
    std::string name;
    Form form;
    std::function<Tally(std::string_view document)> run;
};

/// Loads one document as a tree, calls `onLoaded`, walks all of it as a pull contender reads, and
/// frees it.
struct TreeContender {
    std::string name;
    Form form;
    std::function<Tally(std::string_view document, const std::function<void()>& onLoaded)> run;
    std::size_t largest = SIZE_MAX;  ///< bytes of a document that it still ends with in good time
};

/// One call of a writer, in UTF-8. Namespace declarations are attributes with the prefix "xmlns",
/// or with that name and no prefix.
struct WriteEvent {
    enum class Kind { Start, Attribute, Text, End };
    Kind kind;
    std::string namespaceUri;
    std::string prefix;
    std::string name;
    std::string value;  ///< of an attribute or text
};

/// Turns the events into the strings that the writer takes, and gives an action which writes one
/// document into memory and answers with its bytes.
struct WriteContender {
    std::string name;
    std::function<std::function<std::size_t()>(const std::vector<WriteEvent>& events)> prepare;
};

/// The same bytes in memory and as a file.
struct FirstInput {
    std::string_view bytes;
    std::string file;
};

/// Opens the input, and gives an action that makes a parser and stops at the root element. The
/// action is run once; what it made goes with it.
struct FirstContender {
    std::string name;
    std::function<std::function<void()>(const FirstInput& input)> prepare;
};

/// Everyone who takes part, in the order of the report.
struct Contenders {
    std::vector<PullContender> pull;
    std::vector<TreeContender> tree;
    std::vector<WriteContender> write;
    std::vector<FirstContender> first;
};

/// This library, and each peer that was there at build time.
Contenders allContenders();

void addZro(Contenders& contenders);
void addZroTree(Contenders& contenders);
void addExpat(Contenders& contenders);
void addLibxml(Contenders& contenders);
void addQt(Contenders& contenders);
void addXerces(Contenders& contenders);
void addPugixml(Contenders& contenders);

}  // namespace ZroCommon::bench
