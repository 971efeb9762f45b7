#include "tools/zro/UriSteps.h"

#include <unicode/uchar.h>

#include "zro/uri/ZRDataUri.h"

#include "tools/zro/Text.h"

namespace zro {
namespace {

using ZroCommon::URISTR_PATH_OR_URI_CSS;
using ZroCommon::ZRDataUri;
using ZroCommon::ZRUri;
using Steps = std::vector<OpeningStep>;

// The library opens none; the program does.
std::string describedData(const UnicodeString& text) {
    const ZRDataUri uri(text, URISTR_PATH_OR_URI_CSS);
    if (uri.getDataPos() < 0) {
        return "finds no data in the text, as there is no comma";
    }
    const UnicodeString& type = uri.getMediaType();
    const auto length = static_cast<std::uint64_t>(uri.toString().length() - uri.getDataPos());
    return "reads the data out of the text: " + counted(length, "character")
           + (uri.isBase64() ? " of base64" : "") + (type.isEmpty() ? "" : ", " + toUtf8(type));
}

bool isWeb(const ZRUri& uri) {
    const UnicodeString scheme = uri.getScheme();
    return scheme.caseCompare(u"http", U_FOLD_CASE_DEFAULT) == 0
           || scheme.caseCompare(u"https", U_FOLD_CASE_DEFAULT) == 0;
}

void addPlain(Steps& steps, const ZRUri& uri) {
    steps.push_back({"resolver", "asked for " + toUtf8(uri.toString())});
    if (uri.isFile()) {
        steps.push_back({"file", toUtf8(uri.getLocalPath())});
        return;
    }
    const bool isWhole = steps.size() == 1;  // no package that is named by it
    steps.push_back({"http", isWeb(uri) ? "GET " + toUtf8(uri.toString())
                                        : "refused, as it is neither http nor https"});
    if (uri.isDataScheme() && isWhole) {
        steps.push_back({"zro", describedData(uri.toString())});
    }
}

void addEntries(Steps& steps, const UnicodeString& path) {
    const UnicodeString separator(u"!/");
    for (int32_t start = 0; start < path.length();) {
        const int32_t end = path.indexOf(separator, start);
        const int32_t length = (end < 0 ? path.length() : end) - start;
        steps.push_back({"jar", "entry " + toUtf8(UnicodeString(path, start, length))});
        start = end < 0 ? path.length() : end + separator.length();
    }
}

}  // namespace

std::vector<OpeningStep> openingSteps(const ZRUri& uri) {
    constexpr int32_t kJarLength = 4;
    Steps steps;
    ZRUri outer = uri;
    UnicodeString path;
    while (outer.isJarScheme()) {
        const UnicodeString text = outer.toString();
        const int32_t end = text.indexOf(u"!/");
        steps.push_back({"resolver", "asked for " + toUtf8(text)});
        if (end >= 0) {
            path = UnicodeString(text, end + 2);  // of the outermost only: none is left in the rest
        }
        outer = ZRUri(UnicodeString(text, kJarLength, (end < 0 ? text.length() : end) - kJarLength),
                      URISTR_PATH_OR_URI_CSS);
    }
    addPlain(steps, outer);
    addEntries(steps, path);
    return steps;
}

}  // namespace zro
