#include <algorithm>
#include <memory>
#include <string>

#include <nlohmann/json.hpp>

#include "zro/dom/ZRTreeIterator.h"

#include "tools/zro/CommandLine.h"
#include "tools/zro/Commands.h"
#include "tools/zro/DocumentReader.h"
#include "tools/zro/Names.h"
#include "tools/zro/Text.h"

namespace zro {
namespace {

using Json = nlohmann::ordered_json;
using ZroCommon::ZRNamedNodeMap;
using ZroCommon::ZRNode;
using ZroCommon::ZRTreeIterator;

struct Options {
    std::string input;
    bool lines = false;
    bool wholeText = false;
};

constexpr std::size_t kDeepestIndent = 40;
constexpr int32_t kShownText = 60;

template <class Visit>
void forEachAttribute(ZRNode& element, Visit&& visit) {
    if (!element.hasAttributes()) {
        return;
    }
    ZRNamedNodeMap& map = *element.getAttributes();
    for (ZRNode* node = map.getFirstNode(); node != nullptr; node = map.getNextNode(node)) {
        visit(*node);
    }
}

// Deep trees are told by number, or their indents would be most of the output.
std::string indent(std::size_t depth) {
    if (depth <= kDeepestIndent) {
        return std::string(2 * depth, ' ');
    }
    return std::string(2 * kDeepestIndent, ' ') + "(depth " + std::to_string(depth) + ") ";
}

std::string textOf(const ZRNode& node, const Options& options) {
    const UnicodeString text = node.getText();
    if (options.wholeText || text.countChar32() <= kShownText) {
        return "\"" + escaped(text) + "\"";
    }
    const UnicodeString start(text, 0, text.moveIndex32(0, kShownText));
    return "\"" + escaped(start) + "\" ... "
           + withThousands(static_cast<std::uint64_t>(text.countChar32())) + " characters";
}

// The namespace is told where it changes.
std::string elementOf(ZRNode& node, const Style& style) {
    const ZRNode* parent = node.getParentNodeFast();
    std::string line = style.bold(qualifiedName(node.getPrefix(), node.getLocalName()));
    if (parent == nullptr || parent->getNamespaceUri() != node.getNamespaceUri()) {
        line += style.faint(" {" + printable(node.getNamespaceUri().toString()) + "}");
    }
    forEachAttribute(node, [&line](const ZRNode& attribute) {
        line += " " + qualifiedName(attribute.getPrefix(), attribute.getLocalName()) + "=\""
                + escaped(attribute.getText()) + "\"";
    });
    return line;
}

std::string lineNumber(const ZRNode& node) {
    const std::string number = std::to_string(node.getSourceLineNumber());
    return std::string(number.size() < 6 ? 6 - number.size() : 0, ' ') + number + "  ";
}

void printNode(Session& session, ZRNode& node, std::size_t depth, const Options& options) {
    if (options.lines) {
        session.out() << session.outStyle().faint(lineNumber(node));
    }
    session.out() << indent(depth);
    if (node.isElementNode()) {
        session.out() << elementOf(node, session.outStyle()) << "\n";
    } else if (node.isText()) {
        session.out() << textOf(node, options) << "\n";
    } else {
        session.out() << toUtf8(node.getLocalName().toString()) << "\n";
    }
}

void addNames(Json& object, const ZRNode& node) {
    object["namespace"] = toUtf8(node.getNamespaceUri().toString());
    object["prefix"] = toUtf8(node.getPrefix().toString());
    object["name"] = toUtf8(node.getLocalName().toString());
}

// A tree that was loaded has no others.
const char* typeName(const ZRNode& node) {
    if (node.isElementNode()) {
        return "element";
    }
    return node.isText() ? "text" : "document";
}

void printJson(Session& session, ZRNode& node, std::size_t depth) {
    Json object;
    object["depth"] = depth;
    object["type"] = typeName(node);
    if (node.isElementNode()) {
        object["line"] = node.getSourceLineNumber();
        addNames(object, node);
        Json attributes = Json::array();
        forEachAttribute(node, [&attributes](const ZRNode& attribute) {
            Json item;
            addNames(item, attribute);
            item["value"] = toUtf8(attribute.getText());
            attributes.push_back(std::move(item));
        });
        object["attributes"] = std::move(attributes);
    } else if (node.isText()) {
        object["text"] = toUtf8(node.getText());
    }
    session.out() << object.dump(-1, ' ', false, Json::error_handler_t::replace) << "\n";
}

void printAll(Session& session, ZRNode& root, const Options& options) {
    ZRTreeIterator iterator(&root, ZRTreeIterator::PRE_AND_POST_ORDER);
    std::size_t depth = 0;
    while (ZRNode* node = iterator.nextNode()) {
        if (session.isOutputLost()) {
            return;
        }
        const bool isParent = node->isElementNode() || node == &root;
        if (isParent && iterator.atPostVisit()) {
            --depth;
            continue;
        }
        if (session.settings().json) {
            printJson(session, *node, depth);
        } else {
            printNode(session, *node, depth, options);
        }
        depth += isParent ? 1 : 0;
    }
}

void printTree(Session& session, const Options& options) {
    const Input input(options.input);
    DocumentReader reader(session, input);
    reader.attempt([&reader] { reader.load(); });
    session.end(input);
    reader.attempt([&] { printAll(session, reader.document(), options); });
}

}  // namespace

void addTreeCommand(CLI::App& program, Task& task) {
    const auto options = std::make_shared<Options>();
    CLI::App& command =
        addCommand(program, "tree", "Print the tree of a document",
                   "One node a line, indented by depth, a namespace where it changes. When the\n"
                   "document has an error, the tree up to there is printed.",
                   "  zro tree letter.fo\n"
                   "  zro tree --lines --whole-text report.fo | less\n");
    addInput(command, "URI", options->input);
    command.add_flag("--lines", options->lines, "Begin each line with the line in the source");
    command.add_flag("--whole-text", options->wholeText, "Do not cut long texts off");
    setTask(command, task, options, printTree);
}

}  // namespace zro
