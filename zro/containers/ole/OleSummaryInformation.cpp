#include "zro/containers/ole/OleSummaryInformation.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <utility>

#include "zro/containers/ole/OleCompFile.h"
#include "zro/containers/ole/internal/PropertyReader.h"
#include "zro/containers/ole/internal/PropertySections.h"
#include "zro/platform/internal/CodeConverter.h"
#include "zro/values/ZRValue.h"

namespace ZroCommon {

using internal::CodeConverter;
using internal::PropertyReader;
using internal::PropertyRecord;
using internal::PropertySection;

namespace {

constexpr int kDone = 1;
constexpr int kFailed = -1;

// The types of values, as the format numbers them.
constexpr std::uint32_t kInt16 = 2;
constexpr std::uint32_t kInt32 = 3;
constexpr std::uint32_t kNarrowText = 30;
constexpr std::uint32_t kWideText = 31;
constexpr std::uint32_t kBlob = 65;
constexpr std::uint32_t kVector = 0x1000;

constexpr unsigned long kCodePage = 1;
constexpr const char* kUnstatedCodePage =
    "cp932";  // On purpose: such files are taken for Japanese.

// On purpose: without dates, which are 10 to 13, and the picture, 17.
bool isServed(unsigned long id) {
    return (id >= kCodePage && id <= 9) || (id >= 14 && id <= 19 && id != 17);
}

UnicodeString decoded(CodeConverter& converter, const std::string& bytes) {
    if (bytes.empty() || bytes.front() == '\0') {
        return {};
    }
    alignas(char16_t) std::array<char, 1024> out{};
    internal::ConversionBlock block{.in = bytes.data(),
                                    .inLength = std::min(bytes.size(), bytes.find('\0')),
                                    .out = out.data(),
                                    .outCapacity = out.size()};
    UnicodeString text;
    do {
        block.outLength = 0;
        if (!converter.convert(block, true)) {
            break;
        }
        for (std::size_t i = 0; i + 1 < block.outLength; i += 2) {
            const auto low = static_cast<unsigned char>(out[i]);
            const auto high = static_cast<unsigned char>(out[i + 1]);
            text.append(static_cast<char16_t>(high << 8U | low));
        }
    } while (block.outLength > 0);
    return text;
}

// On purpose: the number makes the name, whether or not ICU calls its converter so.
std::string codePageName(int number) {
    constexpr int kUtf8 = 65001;
    return number == kUtf8 ? "UTF-8" : "cp" + std::to_string(number);
}

}  // namespace

struct OleSummaryInformation::Content {
    PropertyReader reader;
    std::vector<PropertySection> sections = {};
    bool isDocumentSummary = false;
    std::unique_ptr<CodeConverter> converter = nullptr;  // null for an unknown code page

    int parse();
    const PropertyRecord* findProperty(unsigned long id) const;
    const PropertyRecord* findHyperlinks() const;
    int readValue(std::uint32_t type, ZRValue& value);
    int readLinks(std::vector<UnicodeString>& links);
};

int OleSummaryInformation::Content::parse() {
    sections.clear();
    return internal::parsePropertySet(reader, sections) ? kDone : kFailed;
}

const PropertyRecord* OleSummaryInformation::Content::findProperty(unsigned long id) const {
    for (const PropertySection& section : sections) {
        const auto found =
            std::find_if(section.properties.begin(), section.properties.end(),
                         [id](const PropertyRecord& property) { return property.id == id; });
        if (!section.hasDictionary && found != section.properties.end()) {
            return &*found;
        }
    }
    return nullptr;
}

const PropertyRecord* OleSummaryInformation::Content::findHyperlinks() const {
    for (const PropertySection& section : sections) {
        const auto found = std::find_if(section.properties.begin(), section.properties.end(),
                                        [&section](const PropertyRecord& property) {
                                            return property.id > 1 && property.type == kBlob
                                                   && section.hyperlinkIds.contains(property.id);
                                        });
        if (found != section.properties.end()) {
            return &*found;
        }
    }
    return nullptr;
}

int OleSummaryInformation::Content::readValue(std::uint32_t type, ZRValue& value) {
    std::uint32_t number = 0;
    switch (type) {
    case kInt16:  // On purpose: four bytes as well, of which two fill up.
    case kInt32:
        if (!reader.readNumber(number)) {
            return kFailed;
        }
        value = ZRValue(static_cast<std::int32_t>(number));
        return kDone;
    case kNarrowText: {
        std::string bytes;
        if (!reader.readNumber(number) || !reader.readString(number, bytes)) {
            return kFailed;
        }
        value = ZRValue(converter == nullptr ? UnicodeString() : decoded(*converter, bytes));
        return kDone;
    }
    default: return kFailed;
    }
}

int OleSummaryInformation::Content::readLinks(std::vector<UnicodeString>& links) {
    std::array<std::uint32_t, 2> sizeAndCount{};
    if (reader.readNumbers(sizeAndCount) < sizeAndCount.size()) {
        return kFailed;
    }
    int result = kDone;
    for (std::uint32_t i = 0; i < sizeAndCount[1]; ++i) {
        std::uint32_t type = 0;
        std::uint32_t number = 0;
        reader.expect(std::uint64_t{sizeAndCount[1] - i} * sizeof(type));
        if (!reader.readNumber(type)) {
            return kFailed;
        }
        if (type != kInt32 && type != kWideText) {
            continue;  // On purpose: nothing is stepped over, the next type is read right here.
        }
        UnicodeString text;
        if (!reader.readNumber(number)
            || (type == kWideText && !reader.readUnits(std::uint64_t{number} + number % 2, text))) {
            result = kFailed;
            continue;
        }
        if (const int32_t end = text.indexOf(u'\0'); end >= 0) {
            text.truncate(end);
        }
        if (!text.isEmpty()) {
            links.push_back(text);
        }
    }
    return result;
}

OleSummaryInformation::OleSummaryInformation() = default;
OleSummaryInformation::~OleSummaryInformation() = default;

bool OleSummaryInformation::openStream(OleCompFile* file, const char* name) {
    m_content.reset();
    if (file == nullptr) {
        return false;
    }
    OleDirPath path{};
    path.count = 1;
    path.names[0] = name;
    std::unique_ptr<OleStream> stream(file->OLEopenStream(&path));
    if (stream == nullptr) {
        return false;
    }
    m_content = std::make_unique<Content>(Content{PropertyReader(std::move(stream))});
    return true;
}

int OleSummaryInformation::initSummaryInformation(OleCompFile* file) {
    if (!openStream(file, "\5SummaryInformation")) {
        return kFailed;
    }
    const int result = m_content->parse();
    ZRValue number;
    const bool isStated = getProperty(kCodePage, number) == kDone && number.isInteger();
    const std::string name = isStated ? codePageName(number.getIntegerValue()) : kUnstatedCodePage;
    m_content->converter = CodeConverter::openReader(name.c_str(), "");
    return result;
}

int OleSummaryInformation::initDocumentSummaryInformation(OleCompFile* file) {
    if (!openStream(file, "\5DocumentSummaryInformation")) {
        return kFailed;
    }
    m_content->isDocumentSummary = true;
    return m_content->parse();
}

int OleSummaryInformation::getSummaryInformation() {
    return m_content == nullptr ? kFailed : m_content->parse();
}

int OleSummaryInformation::getProperty(unsigned long id, ZRValue& value) {
    if (m_content == nullptr || m_content->isDocumentSummary || !isServed(id)) {
        return kFailed;
    }
    const PropertyRecord* const property = m_content->findProperty(id);
    PropertyReader& reader = m_content->reader;
    std::uint32_t count = 1;
    if (property == nullptr || !reader.seek(property->dataPosition)
        || ((property->type & kVector) != 0 && !reader.readNumber(count))) {
        return kFailed;
    }
    int result = kFailed;
    const std::uint32_t type = property->type & ~kVector;
    for (std::uint32_t i = 0; i < count; ++i) {
        reader.expect(std::uint64_t{count - i} * sizeof(type));
        result = m_content->readValue(type, value);
        if (result == kFailed) {
            break;  // also for a type that is not served, of which no element would change a thing
        }
    }
    reader.expect(0);
    return result;
}

int OleSummaryInformation::getHyperLinks(std::vector<UnicodeString>& links) {
    const PropertyRecord* const property =
        m_content == nullptr ? nullptr : m_content->findHyperlinks();
    if (property == nullptr || !m_content->reader.seek(property->dataPosition)) {
        return kFailed;
    }
    return m_content->readLinks(links);
}

}  // namespace ZroCommon
