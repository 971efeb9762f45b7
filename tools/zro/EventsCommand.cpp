#include <array>
#include <memory>
#include <string>

#include <nlohmann/json.hpp>

#include "zro/xml/ZRXmlUtil.h"

#include "tools/zro/CommandLine.h"
#include "tools/zro/Commands.h"
#include "tools/zro/ElementPath.h"
#include "tools/zro/Names.h"
#include "tools/zro/ParserWatch.h"
#include "tools/zro/Text.h"

namespace zro {
namespace {

using Json = nlohmann::ordered_json;
using ZroCommon::ZRError;
using ZroCommon::ZRXmlParser;
using ZroCommon::ZRXmlUtil;

struct Options {
    std::string input;
    bool tokens = false;
};

constexpr std::array kEventNames = {
    "START_DOCUMENT",
    "END_DOCUMENT",
    "START_TAG",
    "END_TAG",
    "TEXT",
    "CDSECT",
    "ENTITY_REF",
    "IGNORABLE_WHITESPACE",
    "PROCESSING_INSTRUCTION",
    "COMMENT",
    "DOCDECL",
};

const char* nameOf(ZRXmlParser::EventType event) {
    return kEventNames.at(static_cast<std::size_t>(event));
}

std::string attributesOf(const ZRXmlParser& parser) {
    std::string result;
    for (int index = 0; index < parser.getAttributeCount(); ++index) {
        result += " "
                  + expandedName(parser.getAttributeNamespace(index),
                                 parser.getAttributePrefix(index), parser.getAttributeName(index))
                  + "=\"" + escaped(parser.getAttributeValue(index)) + "\"";
    }
    return result;
}

std::string tagOf(const ZRXmlParser& parser) {
    return expandedName(parser.getNamespace(), parser.getPrefix(), parser.getName());
}

std::string referenceOf(const ZRXmlParser& parser) {
    const UnicodeString text = parser.getText();
    return "&" + toUtf8(parser.getName().toString()) + "; "
           + (text.isBogus() ? "undefined" : "\"" + escaped(text) + "\"");
}

std::string detailOf(const ZRXmlParser& parser) {
    switch (parser.getEventType()) {
    case ZRXmlParser::START_DOCUMENT:
    case ZRXmlParser::END_DOCUMENT: return {};
    case ZRXmlParser::START_TAG:
        return tagOf(parser) + attributesOf(parser) + (parser.isEmptyElementTag() ? " /" : "");
    case ZRXmlParser::END_TAG: return tagOf(parser);
    case ZRXmlParser::ENTITY_REF: return referenceOf(parser);
    default: return "\"" + escaped(parser.getText()) + "\"";
    }
}

void printEvent(Session& session, const ZRXmlParser& parser) {
    const std::string position =
        std::to_string(parser.getLineNumber()) + ":" + std::to_string(parser.getColumnNumber());
    const std::string detail = detailOf(parser);
    const std::string event = nameOf(parser.getEventType());
    session.out() << session.outStyle().faint(leftAligned(position, 8)) << " "
                  << (detail.empty() ? event : leftAligned(event, 10) + " " + detail) << "\n";
}

void addTag(Json& object, const ZRXmlParser& parser) {
    object["namespace"] = toUtf8(parser.getNamespace().toString());
    object["prefix"] = toUtf8(parser.getPrefix().toString());
    object["name"] = toUtf8(parser.getName().toString());
}

void addAttributes(Json& object, const ZRXmlParser& parser) {
    Json attributes = Json::array();
    for (int index = 0; index < parser.getAttributeCount(); ++index) {
        Json attribute;
        attribute["namespace"] = toUtf8(parser.getAttributeNamespace(index).toString());
        attribute["prefix"] = toUtf8(parser.getAttributePrefix(index).toString());
        attribute["name"] = toUtf8(parser.getAttributeName(index).toString());
        attribute["value"] = toUtf8(parser.getAttributeValue(index));
        attributes.push_back(std::move(attribute));
    }
    object["attributes"] = std::move(attributes);
}

void addDetail(Json& object, const ZRXmlParser& parser) {
    switch (parser.getEventType()) {
    case ZRXmlParser::START_DOCUMENT:
    case ZRXmlParser::END_DOCUMENT: return;
    case ZRXmlParser::START_TAG:
        addTag(object, parser);
        object["empty"] = parser.isEmptyElementTag();
        addAttributes(object, parser);
        return;
    case ZRXmlParser::END_TAG: addTag(object, parser); return;
    case ZRXmlParser::ENTITY_REF:
        object["name"] = toUtf8(parser.getName().toString());
        [[fallthrough]];
    default: object["text"] = toUtf8(parser.getText());
    }
}

void printJson(Session& session, const ZRXmlParser& parser) {
    Json object;
    object["event"] = nameOf(parser.getEventType());
    object["line"] = parser.getLineNumber();
    object["column"] = parser.getColumnNumber();
    object["depth"] = parser.getDepth();
    addDetail(object, parser);
    session.out() << object.dump(-1, ' ', false, Json::error_handler_t::replace) << "\n";
}

void printAll(Session& session, ZRXmlParser& parser, ElementPath& path, bool tokens) {
    while (!session.isOutputLost()) {
        const auto event = tokens ? parser.nextToken() : parser.next();
        path.follow(parser);
        if (session.settings().json) {
            printJson(session, parser);
        } else {
            printEvent(session, parser);
        }
        if (event == ZRXmlParser::END_DOCUMENT) {
            return;
        }
    }
}

void printEvents(Session& session, const Options& options) {
    const Input input(options.input);
    const auto parser = ZRXmlUtil::createXmlParser();
    ParserWatch watch(session, input, *parser, 1);
    ElementPath path;
    watch.setOpenElements([&path] { return path.elements(); });
    try {
        watch.open();
        printAll(session, *parser, path, options.tokens);
    } catch (const ZRError& error) {
        watch.report(error);
    }
    session.end(input);
}

}  // namespace

void addEventsCommand(CLI::App& program, Task& task) {
    const auto options = std::make_shared<Options>();
    CLI::App& command =
        addCommand(program, "events", "Print what the pull parser delivers",
                   "One event a line: line and column as the parser counts them (its look-ahead\n"
                   "included), the event, and then names as {namespace}prefix:name, attributes,\n"
                   "and text in quotation marks with line feeds and the like escaped.",
                   "  zro events letter.fo | grep 'START_TAG.*fo:block'\n"
                   "  zro events --tokens page.xml | grep COMMENT\n"
                   "  zro events --json letter.fo | jq 'select(.event == \"TEXT\").text'\n");
    addInput(command, "URI", options->input);
    command.add_flag("--tokens", options->tokens,
                     "Every token, with comments and references as they stand");
    setTask(command, task, options, printEvents);
}

}  // namespace zro
