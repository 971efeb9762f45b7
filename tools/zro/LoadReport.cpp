#include "tools/zro/LoadReport.h"

#include <algorithm>

#include <nlohmann/json.hpp>

#include "tools/zro/Names.h"
#include "tools/zro/Text.h"

namespace zro {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t kLabelWidth = 16;

class Table {
public:
    Table(std::ostream& out, const Style& style) : m_out(out), m_style(style) {}

    void row(const std::string& label, const std::string& value) {
        m_out << "  " << m_style.faint(label)
              << std::string(kLabelWidth - std::min(kLabelWidth, label.size()), ' ') << value
              << "\n";
    }
    void count(const std::string& label, std::uint64_t number, const std::string& remark = {}) {
        std::string digits = withThousands(number);
        digits.insert(0, digits.size() < 11 ? 11 - digits.size() : 0, ' ');
        row(label, digits + (remark.empty() ? "" : "  " + m_style.faint(remark)));
    }
    void gap() { m_out << "\n"; }

private:
    std::ostream& m_out;
    const Style& m_style;
};

std::string rootOf(const TreeStatistics& tree) {
    return expandedName(tree.rootNamespace(), tree.rootPrefix(), tree.rootName());
}

void printNamespaces(Table& table, const TreeStatistics& tree) {
    std::string label = "namespaces";
    for (const auto& [uri, use] : tree.namespaces()) {
        const std::string name = uri.isEmpty() ? "(none)" : printable(uri.toString());
        std::string uses = use.elements == 0 ? "" : "  " + counted(use.elements, "element");
        uses += use.attributes == 0 ? "" : "  " + counted(use.attributes, "attribute");
        table.row(label, name + uses);
        label.clear();
    }
}

void printCounts(Table& table, const LoadReport& report) {
    const TreeStatistics& tree = report.tree;
    table.count("elements", tree.elements(), "depth " + withThousands(tree.depth()));
    table.count("attributes", tree.attributes(),
                withThousands(tree.declarations()) + " of them namespace declarations");
    table.count("text nodes", tree.texts(), counted(tree.textUnits(), "UTF-16 unit"));
    if (report.tokens) {
        table.count("instructions", report.tokens->processingInstructions,
                    "by a pass over the tokens, as the tree hides them;");
        table.count("comments", report.tokens->comments, "these too");
        table.count("CDATA sections", report.tokens->cdataSections);
        table.count("references", report.tokens->references, "in content");
    } else {
        table.row("instructions", "not counted: the input cannot be read twice");
    }
    table.count("names", tree.names(), withThousands(tree.newNames()) + " new to the vocabulary");
}

void printProperties(Table& table, const LoadReport& report) {
    std::string label = "properties";
    for (const auto& [name, uses] : report.tree.properties(report.shownProperties)) {
        table.count(label, uses, toUtf8(name.toString()));
        label.clear();
    }
}

void printFigures(Table& table, const LoadReport& report) {
    table.row("read",
              asSize(report.bytes) + (report.encoding.empty() ? "" : ", ") + report.encoding);
    table.row("first element", asDuration(report.firstElementSeconds));
    table.row(report.pulled ? "all, pulled" : "whole tree",
              asDuration(report.totalSeconds) + ", " + asFixed(report.megabytesPerSecond(), 1)
                  + " MB/s");
    table.row("peak memory", asSize(report.peakMemory));
    if (!report.savedTo.empty()) {
        table.row("saved", report.savedTo + ", " + asDuration(report.saveSeconds));
    }
}

Json jsonOfNamespaces(const TreeStatistics& tree) {
    Json list = Json::array();
    for (const auto& [uri, use] : tree.namespaces()) {
        Json item;
        item["uri"] = toUtf8(uri.toString());
        item["prefix"] = toUtf8(use.prefix.toString());
        item["elements"] = use.elements;
        item["attributes"] = use.attributes;
        list.push_back(std::move(item));
    }
    return list;
}

Json jsonOfProperties(const LoadReport& report) {
    Json list = Json::array();
    for (const auto& [name, uses] : report.tree.properties(report.shownProperties)) {
        Json item;
        item["name"] = toUtf8(name.toString());
        item["uses"] = uses;
        list.push_back(std::move(item));
    }
    return list;
}

void addTokens(Json& object, const LoadReport& report) {
    if (report.tokens) {
        object["processingInstructions"] = report.tokens->processingInstructions;
        object["comments"] = report.tokens->comments;
        object["cdataSections"] = report.tokens->cdataSections;
        object["references"] = report.tokens->references;
    }
}

void addCounts(Json& object, const LoadReport& report) {
    const TreeStatistics& tree = report.tree;
    object["elements"] = tree.elements();
    object["attributes"] = tree.attributes();
    object["namespaceDeclarations"] = tree.declarations();
    object["textNodes"] = tree.texts();
    object["textUnits"] = tree.textUnits();
    object["depth"] = tree.depth();
    addTokens(object, report);
    object["names"] = tree.names();
    object["newNames"] = tree.newNames();
}

}  // namespace

double LoadReport::megabytesPerSecond() const {
    return totalSeconds > 0 ? static_cast<double>(bytes) / 1e6 / totalSeconds : 0;
}

void printText(std::ostream& out, const LoadReport& report, const Style& style) {
    Table table(out, style);
    out << style.bold(report.file) << "\n";
    table.row("root", rootOf(report.tree));
    printNamespaces(table, report.tree);
    table.gap();
    printCounts(table, report);
    printProperties(table, report);
    table.gap();
    printFigures(table, report);
}

void printJson(std::ostream& out, const LoadReport& report) {
    Json object;
    object["kind"] = "load";
    object["file"] = report.file;
    object["encoding"] = report.encoding;
    object["root"] = {{"namespace", toUtf8(report.tree.rootNamespace().toString())},
                      {"prefix", toUtf8(report.tree.rootPrefix().toString())},
                      {"name", toUtf8(report.tree.rootName().toString())}};
    object["namespaces"] = jsonOfNamespaces(report.tree);
    addCounts(object, report);
    object["properties"] = jsonOfProperties(report);
    object["bytes"] = report.bytes;
    object["pulled"] = report.pulled;
    object["firstElementSeconds"] = report.firstElementSeconds;
    object["totalSeconds"] = report.totalSeconds;
    object["megabytesPerSecond"] = report.megabytesPerSecond();
    object["peakMemory"] = report.peakMemory;
    if (!report.savedTo.empty()) {
        object["savedTo"] = report.savedTo;
        object["saveSeconds"] = report.saveSeconds;
    }
    out << object.dump(-1, ' ', false, Json::error_handler_t::replace) << "\n";
}

}  // namespace zro
