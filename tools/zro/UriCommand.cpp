#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "zro/uri/ZRUri.h"

#include "tools/zro/CommandLine.h"
#include "tools/zro/Commands.h"
#include "tools/zro/Text.h"
#include "tools/zro/UriSteps.h"
#include "tools/zro/Values.h"

namespace zro {
namespace {

using ZroCommon::URISTRTYPE;
using ZroCommon::ZRUri;

// In the order of the library's numbers.
constexpr std::array kTypeNames = {"guess", "path-or-uri", "guess-css", "path-or-uri-css"};

struct Arguments {
    std::string first;
    std::string second;
    std::string typeName = "path-or-uri-css";

    URISTRTYPE type() const {
        const auto name = std::find(kTypeNames.begin(), kTypeNames.end(), typeName);
        return static_cast<URISTRTYPE>(std::distance(kTypeNames.begin(), name));
    }
    ZRUri uri() const { return {fromUtf8(first), type()}; }
    ZRUri secondUri() const { return {fromUtf8(second), type()}; }
};

struct Operation {
    const char* name;
    const char* help;
    const char* firstName;
    const char* secondName;  // null for operations on one text
    UnicodeString (*apply)(const Arguments& arguments);
};

constexpr std::array kOperations = {
    Operation{"normalise", "The text as the library holds it", "TEXT", nullptr,
              [](const Arguments& given) -> UnicodeString {
                  return given.uri().toString();
              }},
    Operation{"resolve", "A reference, resolved against a base", "BASE", "REFERENCE",
              [](const Arguments& given) -> UnicodeString {
                  return ZRUri(given.uri(), fromUtf8(given.second), given.type()).toString();
              }},
    Operation{"relative", "A URI, as seen from the directory of a base", "TEXT", "BASE",
              [](const Arguments& given) -> UnicodeString {
                  return given.uri().getRelativeUri(given.secondUri().toString());
              }},
    Operation{"local", "The local path", "TEXT", nullptr,
              [](const Arguments& given) -> UnicodeString {
                  return given.uri().getLocalPath();
              }},
    Operation{"base", "What references in the resource resolve against", "TEXT", nullptr,
              [](const Arguments& given) -> UnicodeString {
                  return given.uri().getBaseString();
              }},
    Operation{"name", "The file name", "TEXT", nullptr,
              [](const Arguments& given) -> UnicodeString {
                  return given.uri().getFileName();
              }},
    Operation{"extension", "The extension, with its dot", "TEXT", nullptr,
              [](const Arguments& given) -> UnicodeString {
                  return given.uri().getExtension();
              }},
    Operation{"unescape", "The text without percent-escapes", "TEXT", nullptr,
              [](const Arguments& given) -> UnicodeString {
                  return ZRUri::unescape(fromUtf8(given.first));
              }},
};

void print(Session& session, const Operation& operation, const Arguments& arguments) {
    const UnicodeString result = operation.apply(arguments);
    if (!session.settings().json) {
        session.out() << printable(result) << "\n";
        return;
    }
    printLine(session, {{"operation", operation.name}, {"result", toUtf8(result)}});
}

nlohmann::ordered_json explanation(const ZRUri& uri) {
    return {{"normalised", toUtf8(uri.toString())},
            {"scheme", toUtf8(uri.getScheme())},
            {"absolute", uri.isAbsolute()},
            {"file", uri.isFile()},
            {"package entry", uri.isJarScheme()},
            {"data", uri.isDataScheme()},
            {"local path", toUtf8(uri.getLocalPath())},
            {"exists", uri.isFileExists()},
            {"base", toUtf8(uri.getBaseString())},
            {"file name", toUtf8(uri.getFileName())},
            {"extension", toUtf8(uri.getExtension())}};
}

std::string shown(const nlohmann::ordered_json& value) {
    if (value.is_boolean()) {
        return value.get<bool>() ? "yes" : "no";
    }
    const auto text = value.get<std::string>();
    return text.empty() ? "-" : printable(fromUtf8(text));
}

void printJson(Session& session, const ZRUri& uri) {
    nlohmann::ordered_json object = withKeys(explanation(uri));
    object["steps"] = nlohmann::ordered_json::array();
    for (const auto& [means, what] : openingSteps(uri)) {
        object["steps"].push_back({{"means", means}, {"what", what}});
    }
    printLine(session, object);
}

void explain(Session& session, const Arguments& arguments) {
    const ZRUri uri = arguments.uri();
    if (session.settings().json) {
        printJson(session, uri);
        return;
    }
    const Style& style = session.outStyle();
    const auto printRow = [&](std::string label, const std::string& text) {
        label.resize(15, ' ');
        session.out() << style.faint(label) << text << "\n";
    };
    const nlohmann::ordered_json rows = explanation(uri);
    for (const auto& [label, value] : rows.items()) {
        printRow(label, shown(value));
    }
    int number = 0;
    for (const auto& [means, what] : openingSteps(uri)) {
        printRow("step " + std::to_string(++number),
                 std::string(means) + ": " + printable(fromUtf8(what)));
    }
}

CLI::App& addOperation(CLI::App& command, const char* name, const char* help,
                       const std::shared_ptr<Arguments>& arguments) {
    CLI::App& operation = addCommand(command, name, help, "", "");
    addOption(operation, "--type", arguments->typeName, "TYPE",
              "What the texts are: guess, path-or-uri, guess-css or path-or-uri-css (the default)")
        ->check(CLI::IsMember(std::vector<std::string>(kTypeNames.begin(), kTypeNames.end())));
    return operation;
}

void addTextOperation(CLI::App& command, Task& task, const Operation& operation) {
    const auto arguments = std::make_shared<Arguments>();
    CLI::App& app = addOperation(command, operation.name, operation.help, arguments);
    addOption(app, operation.firstName, arguments->first, " ", "A path or URI")->required();
    if (operation.secondName != nullptr) {
        addOption(app, operation.secondName, arguments->second, " ", "Another")->required();
    }
    setTask(app, task, arguments, [&operation](Session& session, const Arguments& given) {
        print(session, operation, given);
    });
}

void addExplain(CLI::App& command, Task& task) {
    const auto arguments = std::make_shared<Arguments>();
    CLI::App& app = addOperation(
        command, "explain", "What the library reads out of a text, and how it opens it", arguments);
    addOption(app, "TEXT", arguments->first, " ", "A path or URI")->required();
    setTask(app, task, arguments, explain);
}

}  // namespace

void addUriCommand(CLI::App& program, Task& task) {
    CLI::App& command = addCommand(
        program, "uri", "Show how names of resources are understood",
        "The rules are the library's own and the same on every platform: drive letters,\n"
        "backslashes and network names are understood everywhere.",
        "  zro uri normalise 'C:\\a b\\c.xml'\n"
        "  zro uri resolve http://h/a/b.html ../c.png\n"
        "  zro uri explain jar:file:///tmp/p.zip!/d/x.xml\n");
    command.require_subcommand(1);
    for (const Operation& operation : kOperations) {
        addTextOperation(command, task, operation);
    }
    command.get_subcommand("normalise")->alias("normalize");
    addExplain(command, task);
}

}  // namespace zro
