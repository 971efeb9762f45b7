#include "tools/zro/OleProperties.h"

#include <array>
#include <vector>

#include "zro/values/ZRValue.h"

#include "tools/zro/CompoundInput.h"
#include "tools/zro/Text.h"
#include "tools/zro/Values.h"

namespace zro {
namespace {

using ZroCommon::OleCompFile;
using ZroCommon::OleDirPath;
using ZroCommon::OleStream;
using ZroCommon::OleSummaryInformation;
using ZroCommon::ZRValue;
using Json = nlohmann::ordered_json;

constexpr const char* kSummary = "\5SummaryInformation";
constexpr const char* kDocumentSummary = "\5DocumentSummaryInformation";

struct Options {
    std::string file;
};

struct Property {
    unsigned long id;
    const char* name;
};

constexpr std::array kProperties = {
    Property{1, "code page"},    Property{2, "title"},       Property{3, "subject"},
    Property{4, "author"},       Property{5, "keywords"},    Property{6, "comments"},
    Property{7, "template"},     Property{8, "last author"}, Property{9, "revision"},
    Property{14, "pages"},       Property{15, "words"},      Property{16, "characters"},
    Property{18, "application"}, Property{19, "security"},
};

void props(Session& session, const Options& options) {
    const auto input = openCompound(session, options.file);
    if (!input) {
        return;
    }
    OleSummaryInformation summary;
    bool isThere = false;
    const bool isSound = openSummary(*input->file, summary, isThere);
    Json object = Json::object();
    for (const auto& [id, name] : kProperties) {
        ZRValue value;
        if (summary.getProperty(id, value) > 0) {
            object[name] = value.isInteger() ? Json(value.getIntegerValue())
                                             : Json(toUtf8(value.getStringValue()));
        }
    }
    if (session.settings().json) {
        printLine(session, withKeys(object));
    } else {
        printRows(session, object);
    }
    if (!isThere) {
        session.note(options.file, "has no summary information");
    } else if (!isSound) {
        session.fail(options.file, "its summary information is damaged");
    }
}

void links(Session& session, const Options& options) {
    const auto input = openCompound(session, options.file);
    if (!input) {
        return;
    }
    OleSummaryInformation summary;
    std::vector<UnicodeString> found;
    const bool isSound = summary.initDocumentSummaryInformation(input->file.get()) > 0;
    const bool isWhole = summary.getHyperLinks(found) > 0;
    for (const UnicodeString& link : found) {
        if (session.settings().json) {
            printLine(session, {{"link", toUtf8(link)}});
        } else {
            session.out() << printable(link) << "\n";
        }
    }
    const bool isThere = hasStream(*input->file, kDocumentSummary);
    if (isThere && !isSound) {
        session.fail(options.file, "its document summary information is damaged");
    } else if (found.empty()) {
        session.note(options.file, "lists no hyperlinks");
    } else if (!isWhole) {
        session.fail(options.file, "its list of hyperlinks is damaged");
    }
}

}  // namespace

bool hasStream(OleCompFile& file, const char* name) {
    OleDirPath path{};
    path.count = 1;
    path.names[0] = name;
    OleStream* const stream = file.OLEopenStream(&path);
    file.OLEcloseStream(stream);
    return stream != nullptr;
}

bool openSummary(OleCompFile& file, OleSummaryInformation& summary, bool& isThere) {
    isThere = hasStream(file, kSummary);
    return summary.initSummaryInformation(&file) > 0;
}

void addOlePropertyOperations(const FileOperations& operations) {
    const auto options = std::make_shared<Options>();
    operations.add("props", "The properties: title, author and so on", options, props);
    operations.add("links", "The hyperlinks that the properties list", options, links);
}

}  // namespace zro
