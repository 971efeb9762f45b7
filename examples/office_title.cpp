// Says what kind of document an office file is, and its title: of the files of today, which are ZIP
// packages, and of those before them, which are compound files.
//
//     office_title letter.doc report.docx
#include <array>
#include <iostream>
#include <string>

#include <zro/ZroCommon.h>

namespace zro = ZroCommon;

namespace {

std::string utf8(const zro::UnicodeString& text) {
    std::string bytes;
    return text.toUTF8String(bytes);
}

constexpr std::array kOldKinds = {"another kind", "doc", "xls", "ppt", "another kind"};
constexpr std::array kKinds = {"another kind", "docx", "docm", "dotx", "dotm", "xlsx",
                               "xlsm",         "xltx", "xltm", "xlsb", "pptx", "pptm",
                               "ppsx",         "ppsm", "potx", "potm", "thmx"};

/// The title stands in a part of its own, to which a relationship of the package leads.
zro::UnicodeString titleOf(const zro::ZRZipFile& package) {
    const zro::UnicodeString name = package.getRelationshipTargetFromType(
        u"http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties",
        nullptr);
    zro::ZRZipFileEntry* const part = package.getFileEntry(name);
    if (part == nullptr) {
        return {};
    }
    const auto parser = zro::ZRXmlUtil::createXmlParser();
    zro::ZRLimits limits = zro::ZRLimits::strict();
    limits.skipExternal = true;  // a document must not make us open anything else
    parser->setLimits(limits);
    parser->setInput(*part->getUncompressedStream(false), u"", u"");
    while (parser->next() != zro::ZRXmlParser::END_DOCUMENT) {
        if (parser->getEventType() == zro::ZRXmlParser::START_TAG
            && parser->getName().toString() == u"title") {
            return parser->next() == zro::ZRXmlParser::TEXT ? parser->getText() : u"";
        }
    }
    return {};
}

/// \return whether the file is an office document, as far as one can see
bool tell(const char* path) {
    zro::OleCompFile file;
    if (file.OLEopen(path)) {
        zro::OlePropertySet properties;
        properties.init(&file);
        const auto uri = zro::ZRUri(zro::UnicodeString(path), zro::URISTR_PATH_OR_URI);
        std::cout << kOldKinds.at(zro::OleCompFile::detectOLEDocument(uri)) << ": "
                  << utf8(properties.getTitle()) << "\n";
        return true;
    }
    zro::ZRZipFile package(path);
    if (package.getFileEntryCount() == 0) {
        std::cerr << path << ": no compound file and no ZIP package\n";
        return false;
    }
    std::cout << kKinds.at(package.detectOOXDocument()) << ": " << utf8(titleOf(package)) << "\n";
    return true;
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 2) {
        std::cerr << "usage: office_title FILE...\n";
        return 2;
    }
    bool isGood = true;
    try {
        for (int i = 1; i < count; ++i) {
            isGood = tell(arguments[i]) && isGood;
        }
    } catch (const zro::ZRError& error) {
        std::cerr << utf8(error.getMessage()) << "\n";
        return 1;
    }
    return isGood ? 0 : 1;
}
