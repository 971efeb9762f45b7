#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "zro/containers/ole/OleCompFile.h"
#include "zro/containers/ole/OleSummaryInformation.h"
#include "zro/containers/zip/ZRZipFile.h"
#include "zro/values/ZRValue.h"

#include "tools/zro/CommandLine.h"
#include "tools/zro/Commands.h"
#include "tools/zro/CompoundInput.h"
#include "tools/zro/CoreProperties.h"
#include "tools/zro/OfficeParts.h"
#include "tools/zro/OleProperties.h"
#include "tools/zro/Opening.h"
#include "tools/zro/PackageInput.h"
#include "tools/zro/Text.h"
#include "tools/zro/Values.h"

namespace zro {
namespace {

using ZroCommon::JZStreamIOobj;
using ZroCommon::OleCompFile;
using ZroCommon::OLEDOCUMENT_NONE;
using ZroCommon::OleSummaryInformation;
using ZroCommon::ZRValue;
using ZroCommon::ZRZipFile;
using Json = nlohmann::ordered_json;

constexpr const char16_t* kMainPart =
    u"http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument";

struct Options {
    std::vector<std::string> files;
};

struct Type {
    const char* name;
    const char* meaning;
};

// In the order of OOXDOCUMENT_TYPE.
constexpr std::array kOoxTypes = {
    Type{"other", "office document of another kind"},
    Type{"docx", "Word document"},
    Type{"docm", "Word document with macros"},
    Type{"dotx", "Word template"},
    Type{"dotm", "Word template with macros"},
    Type{"xlsx", "Excel workbook"},
    Type{"xlsm", "Excel workbook with macros"},
    Type{"xltx", "Excel template"},
    Type{"xltm", "Excel template with macros"},
    Type{"xlsb", "Excel binary workbook"},
    Type{"pptx", "PowerPoint presentation"},
    Type{"pptm", "PowerPoint presentation with macros"},
    Type{"ppsx", "PowerPoint slide show"},
    Type{"ppsm", "PowerPoint slide show with macros"},
    Type{"potx", "PowerPoint template"},
    Type{"potm", "PowerPoint template with macros"},
    Type{"thmx", "Office theme"},
};

// In the order of OLEDOCUMENT_TYPE.
constexpr std::array kOleTypes = {
    Type{"other", "compound file of another kind"},
    Type{"word", "Word document of the time before OOXML"},
    Type{"excel", "Excel workbook of the time before OOXML"},
    Type{"powerpoint", "PowerPoint presentation of the time before OOXML"},
    Type{"viewstyles", "document with view styles"},
};

constexpr Type kEncrypted{"encrypted", "encrypted OOXML document"};

/// What is to be told of a file.
struct Report {
    Type type;
    const char* container = "";
    Introduction introduction = {};
    const char* partsName = "parts";
    std::vector<std::string> parts = {};
};

Json jsonOf(const Input& input, const Report& report) {
    Json object;
    object["file"] = input.shownName();
    object["container"] = report.container;
    object["type"] = report.type.name;
    return object;
}

void addTexts(Json& object, const Introduction& introduction) {
    for (const auto& [name, text] :
         {std::pair("title", &introduction.title), std::pair("subject", &introduction.subject),
          std::pair("author", &introduction.author),
          std::pair("keywords", &introduction.keywords)}) {
        if (!text->isEmpty()) {
            object[name] = toUtf8(*text);
        }
    }
}

void print(Session& session, const Input& input, const Report& report) {
    if (session.settings().json) {
        Json object = jsonOf(input, report);
        addTexts(object, report.introduction);
        object[report.partsName] = report.parts;
        printLine(session, object);
        return;
    }
    Json object;
    object["type"] = report.type.meaning;
    addTexts(object, report.introduction);
    object[report.partsName] = report.parts.size();
    session.out() << printable(fromUtf8(input.shownName())) << "\n";
    printRows(session, object, 2);
}

// Why the library finds no main part, which may be there all the same.
std::string reasonForNoMainPart(const ZRZipFile& package) {
    const unsigned count = package.getFileEntryCount();
    if (count > 0 && isSizeBehindData(*package.getFileEntry(count - 1))) {
        return "whose entries are out of reach: the size of "
               + quoted(package.getFileEntry(count - 1)->getFileName())
               + " stands only behind its data, as it was written to a stream";
    }
    const UnicodeString target = package.getRelationshipTargetFromType(kMainPart, nullptr);
    if (target.isEmpty()) {
        return "without a relationship to the main part of an office document";
    }
    return partOf(package, target) == nullptr ? "without its main part " + quoted(target)
                                              : "whose main part is called " + quoted(target)
                                                    + ", and no entry has just that name";
}

void tellPackage(Session& session, const Input& input, std::istream& stream) {
    ZRZipFile package(&stream, false);
    if (package.getOfficeDocument() == nullptr) {
        session.fail(
            input.shownName(), "is a ZIP package " + reasonForNoMainPart(package),
            "zro zip why tells how far entries are found, zro ooxml rels what leads where");
        return;
    }
    Report report{kOoxTypes[package.detectOOXDocument()], "ooxml"};
    for (unsigned i = 0; i < package.getFileEntryCount(); ++i) {
        const UnicodeString& name = package.getFileEntry(i)->getFileName();
        if (!name.endsWith(u"/")) {  // a folder
            report.parts.push_back(toUtf8(name));
        }
    }
    report.introduction = corePropertiesOf(session, input.shownName(), package);
    print(session, input, report);
    complainAboutContentTypes(session, input.shownName(), package);
}

UnicodeString textOf(OleSummaryInformation& summary, unsigned long id) {
    ZRValue value;
    return summary.getProperty(id, value) > 0 ? value.getStringValue() : UnicodeString();
}

void tellCompound(Session& session, const Input& input, std::istream& stream) {
    JZStreamIOobj bytes(&stream);
    OleCompFile file;
    if (!file.OLEopen(&bytes)) {
        session.fail(input.shownName(), reasonOf(file.getRefusal()));
        return;
    }
    Report report{kOleTypes[OLEDOCUMENT_NONE], "ole"};
    report.partsName = "streams";
    for (const CompoundEntry& entry : entriesOf(file)) {
        if (file.getDirInfo(entry.index)->isStream()) {
            report.parts.push_back(shownPath(entry.path));
        }
    }
    OleSummaryInformation summary;
    bool isThere = false;
    const bool isDamaged = !openSummary(file, summary, isThere) && isThere;
    report.introduction = {textOf(summary, 2), textOf(summary, 3), textOf(summary, 4),
                           textOf(summary, 5)};
    report.type = hasStream(file, "EncryptedPackage")
                      ? kEncrypted
                      : kOleTypes[OleCompFile::detectOLEDocument(stream)];
    print(session, input, report);
    if (isDamaged) {
        session.fail(input.shownName(), "its summary information is damaged");
    }
}

bool isCompound(std::istream& stream) {
    const bool is = OleCompFile::isOLEUri(stream);
    stream.clear();
    stream.seekg(0);
    return is;
}

void office(Session& session, const Options& options) {
    for (const std::string& name : options.files) {
        const Input input(name);
        const auto stream = openSeekableInput(session, input);
        if (stream == nullptr) {
            continue;
        }
        if (isCompound(*stream)) {
            tellCompound(session, input, *stream);
        } else if (ZRZipFile::isZipFile(stream.get())) {
            tellPackage(session, input, *stream);
        } else {
            session.fail(input.shownName(), "is neither a ZIP package nor a compound file");
        }
    }
}

}  // namespace

void addOfficeCommand(CLI::App& program, Task& task) {
    CLI::App& command = addCommand(
        program, "office", "Say what office documents are: type, title, author, parts",
        "Reads documents of both kinds: OOXML, which are ZIP packages, and the compound files of\n"
        "the time before. `zro ooxml`, `zro ole` and `zro zip` look further into them.",
        "  zro office letter.doc report.docx\n"
        "  zro office --json *.xls* | jq -r .title\n");
    const auto options = std::make_shared<Options>();
    addOption(command, "FILE", options->files, "...",
              "Office documents: paths, URIs, or - for standard input")
        ->required();
    setTask(command, task, options, office);
}

}  // namespace zro
