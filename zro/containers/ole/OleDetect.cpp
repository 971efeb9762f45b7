#include <array>
#include <memory>

#include "zro/containers/ole/OleCompFile.h"
#include "zro/containers/ole/internal/CompoundHeader.h"

namespace ZroCommon {
namespace {

using internal::CompoundHeader;

constexpr long kNoStream = -1;

// The size of a stream that can be opened, or -1.
long sizeOf(OleCompFile& file, OleDirPath path) {
    OleStream* const stream = file.OLEopenStream(&path);
    const long size = stream == nullptr ? kNoStream : stream->GetStreamSize();
    file.OLEcloseStream(stream);
    return size;
}

bool hasStream(OleCompFile& file, const char* name) {
    return sizeOf(file, {1, {name}}) != kNoStream;
}

// A presentation has a stream about its user. Of a file that holds it in two formats, the newer one
// counts; in the others that stream has a least size.
bool isPowerPoint(OleCompFile& file) {
    constexpr const char* kTwofold = "PP97_DUALSTORAGE";
    constexpr const char* kUser = "Current User";
    constexpr const char* kDocument = "PowerPoint Document";
    constexpr long kLeastUserSize = 20;
    if (sizeOf(file, {2, {kTwofold, kUser}}) != kNoStream) {
        return sizeOf(file, {2, {kTwofold, kDocument}}) != kNoStream;
    }
    return sizeOf(file, {1, {kUser}}) >= kLeastUserSize && hasStream(file, kDocument);
}

OLEDOCUMENT_TYPE typeOf(OleCompFile& file) {
    if (hasStream(file, "WordDocument")) {
        return OLEDOCUMENT_WORD;
    }
    if (hasStream(file, "Workbook")) {
        return OLEDOCUMENT_EXCEL;
    }
    if (isPowerPoint(file)) {
        return OLEDOCUMENT_POWERPOINT;
    }
    return hasStream(file, "DocumentViewStyles") ? OLEDOCUMENT_DOCUMENT_VIEW_STYLES
                                                 : OLEDOCUMENT_NONE;
}

// Null also when memory runs out.
std::unique_ptr<std::istream> openStream(const ZRUri& uri) {
    try {
        return std::unique_ptr<std::istream>(uri.getStream(nullptr));
    } catch (...) {
        return nullptr;
    }
}

}  // namespace

bool OleCompFile::isOLEUri(std::istream& stream) {
    try {
        std::array<char, CompoundHeader::kSize> bytes{};
        if (stream.fail() || !stream.read(bytes.data(), bytes.size())) {
            return false;
        }
        return CompoundHeader::hasSignature(reinterpret_cast<const unsigned char*>(bytes.data()));
    } catch (...) {
        return false;
    }
}

bool OleCompFile::isOLEUri(ZRUri uri) {  // NOLINT(performance-unnecessary-value-param)
    const auto stream = openStream(uri);
    return stream && isOLEUri(*stream);
}

OLEDOCUMENT_TYPE OleCompFile::detectOLEDocument(std::istream& stream) {
    JZStreamIOobj io(&stream);
    OleCompFile file;
    return file.OLEopen(&io) ? typeOf(file) : OLEDOCUMENT_NONE;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param)
OLEDOCUMENT_TYPE OleCompFile::detectOLEDocument(ZRUri uri) {
    const auto stream = openStream(uri);
    return stream ? detectOLEDocument(*stream) : OLEDOCUMENT_NONE;
}

}  // namespace ZroCommon
