// What kind of office document a package is.
#include "zro/containers/zip/ZRZipFile.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "zro/containers/zip/internal/PackageReader.h"
#include "zro/foundation/internal/TextView.h"

namespace ZroCommon {
namespace {

// The media types of main parts, as ECMA-376 and the makers' notes on macros and binary sheets have
// them, in the order of the enumeration from `OOXDOCUMENT_DOCX` on.
constexpr std::array<std::u16string_view, OOXDOCUMENT_THMX> kMediaTypes = {
    u"application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml",
    u"application/vnd.ms-word.document.macroEnabled.main+xml",
    u"application/vnd.openxmlformats-officedocument.wordprocessingml.template.main+xml",
    u"application/vnd.ms-word.template.macroEnabledTemplate.main+xml",
    u"application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml",
    u"application/vnd.ms-excel.sheet.macroEnabled.main+xml",
    u"application/vnd.openxmlformats-officedocument.spreadsheetml.template.main+xml",
    u"application/vnd.ms-excel.template.macroEnabled.main+xml",
    u"application/vnd.ms-excel.sheet.binary.macroEnabled.main",
    u"application/vnd.openxmlformats-officedocument.presentationml.presentation.main+xml",
    u"application/vnd.ms-powerpoint.presentation.macroEnabled.main+xml",
    u"application/vnd.openxmlformats-officedocument.presentationml.slideshow.main+xml",
    u"application/vnd.ms-powerpoint.slideshow.macroEnabled.main+xml",
    u"application/vnd.openxmlformats-officedocument.presentationml.template.main+xml",
    u"application/vnd.ms-powerpoint.template.macroEnabled.main+xml",
    u"application/vnd.openxmlformats-officedocument.themeManager+xml",
};

OOXDOCUMENT_TYPE documentTypeOf(const UnicodeString& mediaType) {
    const auto* const found =
        std::find(kMediaTypes.begin(), kMediaTypes.end(), internal::viewOf(mediaType));
    return found == kMediaTypes.end()
               ? OOXDOCUMENT_NONE
               : static_cast<OOXDOCUMENT_TYPE>(found - kMediaTypes.begin() + OOXDOCUMENT_DOCX);
}

}  // namespace

// On purpose: the target is taken as a name as it stands, so one with a leading slash names
// nothing.
ZRZipFileEntry* ZRZipFile::getOfficeDocument() const {
    return getFileEntry(getRelationshipTargetFromType(
        u"http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument",
        nullptr));
}

OOXDOCUMENT_TYPE ZRZipFile::detectOOXDocument() {
    return documentTypeOf(getContentType(getOfficeDocument()));
}

OOXDOCUMENT_TYPE ZRZipFile::detectOOXDocument(const UnicodeString& path) {
    return ZRZipFile(path).detectOOXDocument();
}

OOXDOCUMENT_TYPE ZRZipFile::detectOOXDocument(const char* path) {
    return ZRZipFile(path).detectOOXDocument();
}

OOXDOCUMENT_TYPE ZRZipFile::detectOOXDocument(std::istream* stream) {
    if (stream == nullptr) {
        return OOXDOCUMENT_NONE;
    }
    internal::PackageReader reader(*stream);
    const std::int64_t start = reader.position();
    const OOXDOCUMENT_TYPE type = ZRZipFile(stream, false).detectOOXDocument();
    reader.seek(start);
    return type;
}

}  // namespace ZroCommon
