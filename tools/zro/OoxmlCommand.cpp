#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tools/zro/CommandLine.h"
#include "tools/zro/Commands.h"
#include "tools/zro/OfficeParts.h"
#include "tools/zro/PackageInput.h"
#include "tools/zro/Text.h"
#include "tools/zro/Values.h"

namespace zro {
namespace {

using ZroCommon::ZRZipFile;
using ZroCommon::ZRZipFileEntry;
using Json = nlohmann::ordered_json;

struct Options {
    std::string file;
};

using Row = std::vector<std::string>;

// Columns side by side, the last one as it is.
void printTable(Session& session, const std::vector<Row>& rows, const char* indent) {
    std::vector<std::size_t> widths;
    for (const Row& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], row[i].size());
        }
    }
    for (const Row& row : rows) {
        session.out() << indent;
        for (std::size_t i = 0; i + 1 < row.size(); ++i) {
            session.out() << leftAligned(row[i], widths[i] + 2);
        }
        session.out() << row.back() << "\n";
    }
}

std::string orDash(const UnicodeString& text) {
    return text.isEmpty() ? "-" : printable(text);
}

void types(Session& session, const Options& options) {
    auto input = openPackage(session, options.file);
    if (!input) {
        return;
    }
    std::vector<Row> rows;
    for (unsigned i = 0; i < input->entries(); ++i) {
        ZRZipFileEntry& entry = input->entry(i);
        const UnicodeString& type = input->package.getContentType(&entry);
        if (session.settings().json) {
            Json object;
            object["part"] = toUtf8(entry.getFileName());
            object["type"] = type.isEmpty() ? Json() : Json(toUtf8(type));
            printLine(session, object);
        }
        rows.push_back({printable(entry.getFileName()), orDash(type)});
    }
    if (!session.settings().json) {
        printTable(session, rows, "");
    }
    complainAboutContentTypes(session, options.file, input->package);
}

void printJson(Session& session, ZRZipFileEntry* entry, const Relationship& relationship) {
    Json object;
    object["part"] = entry == nullptr ? Json() : Json(toUtf8(entry->getFileName()));
    object["id"] = toUtf8(relationship.id);
    object["type"] = toUtf8(relationship.type);
    object["target"] = toUtf8(relationship.target);
    object["mode"] = toUtf8(relationship.mode);
    object["missing"] = relationship.isMissing;
    printLine(session, object);
}

void printRelationships(Session& session, const Options& options, ZRZipFileEntry* entry,
                        const Relationships& found) {
    std::vector<Row> rows;
    for (const Relationship& relationship : found.all) {
        if (session.settings().json) {
            printJson(session, entry, relationship);
        }
        rows.push_back({printable(relationship.id), printable(shortType(relationship.type)),
                        relationship.isMissing ? "missing" : printable(relationship.mode),
                        printable(relationship.target)});
    }
    if (!session.settings().json && !rows.empty()) {
        session.out() << (entry == nullptr ? "package" : printable(entry->getFileName())) << "\n";
        printTable(session, rows, "  ");
    }
    complainAboutPart(session, options.file, found.part, found.fault);
}

Relationships ofPackage(Session& session, const Options& options, const ZRZipFile& package) {
    Relationships found = relationshipsOf(package, nullptr);
    if (!found.isThere) {
        session.fail(options.file, "has no relationships that the walk reaches (see zro zip why)");
    }
    return found;
}

void rels(Session& session, const Options& options) {
    const auto input = openPackage(session, options.file);
    if (!input) {
        return;
    }
    printRelationships(session, options, nullptr, ofPackage(session, options, input->package));
    for (unsigned i = 0; i < input->entries(); ++i) {
        ZRZipFileEntry* const entry = &input->entry(i);
        if (input->package.getFileEntry(entry->getFileName()) == entry) {
            printRelationships(session, options, entry, relationshipsOf(input->package, entry));
        }
    }
}

/// The parts of a package in the order in which relationships lead to them.
class PartWalk {
public:
    PartWalk(Session& session, const Options& options, PackageInput& input)
        : m_session(session), m_options(options), m_input(input) {}

    void follow(ZRZipFileEntry* from, const Relationships& found) {
        complainAboutPart(m_session, m_options.file, found.part, found.fault);
        for (const Relationship& relationship : found.all) {
            if (relationship.isMissing) {
                m_session.fail(m_options.file, printable(relationship.target) + " is missing: "
                                                   + printable(found.part) + " leads there");
            } else {
                take(relationship.part, from, relationship.type);
            }
        }
    }

    void followAll() {
        std::size_t next = 0;
        while (next < m_reached.size()) {
            ZRZipFileEntry* const entry = m_reached[next++];  // more come in meanwhile
            follow(entry, relationshipsOf(m_input.package, entry));
        }
    }

    void tell() {
        for (unsigned i = 0; i < m_input.entries(); ++i) {
            if (!isDescription(m_input.entry(i).getFileName())) {
                take(&m_input.entry(i), nullptr, {});
            }
        }
        if (!m_session.settings().json) {
            printTable(m_session, m_rows, "");
        }
    }

private:
    void take(ZRZipFileEntry* entry, const ZRZipFileEntry* from, const UnicodeString& type) {
        if (entry == nullptr || !m_taken.insert(entry).second) {
            return;
        }
        m_reached.push_back(entry);
        const UnicodeString& mediaType = m_input.package.getContentType(entry);
        m_rows.push_back(
            {printable(entry->getFileName()), orDash(shortType(type)), orDash(mediaType)});
        if (m_session.settings().json) {
            Json object;
            object["part"] = toUtf8(entry->getFileName());
            object["from"] = from == nullptr ? Json() : Json(toUtf8(from->getFileName()));
            object["relationship"] = type.isEmpty() ? Json() : Json(toUtf8(type));
            object["type"] = mediaType.isEmpty() ? Json() : Json(toUtf8(mediaType));
            object["size"] = entry->getUncompressedSize();
            printLine(m_session, object);
        }
    }

    Session& m_session;
    const Options& m_options;
    PackageInput& m_input;
    std::set<const ZRZipFileEntry*> m_taken;
    std::vector<ZRZipFileEntry*> m_reached;
    std::vector<Row> m_rows;
};

void parts(Session& session, const Options& options) {
    auto input = openPackage(session, options.file);
    if (!input) {
        return;
    }
    PartWalk walk(session, options, *input);
    walk.follow(nullptr, ofPackage(session, options, input->package));
    walk.followAll();
    walk.tell();
    complainAboutContentTypes(session, options.file, input->package);
}

}  // namespace

void addOoxmlCommand(CLI::App& program, Task& task) {
    CLI::App& command = addCommand(
        program, "ooxml", "Look into office documents that are ZIP packages (docx, xlsx, pptx)",
        "What cannot be read, and for parts where relationships lead to nothing, is an error.",
        "  zro ooxml parts letter.docx\n"
        "  zro ooxml rels letter.docx --json | jq 'select(.mode == \"External\").target'\n"
        "  zro ooxml types 'jar:file:///tmp/outer.zip!/letter.docx'\n");
    command.require_subcommand(1);
    const auto options = std::make_shared<Options>();
    const FileOperations operations(command, task, "FILE", "An office document");
    operations.add("types", "The media type of each entry", options, types);
    operations.add("rels", "The relationships of the package and of its parts", options, rels);
    operations.add("parts", "The parts, in the order in which relationships lead to them", options,
                   parts);
}

}  // namespace zro
