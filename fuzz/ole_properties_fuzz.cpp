// Any bytes as both property-set streams of a compound file: nothing may come out that is not in
// them, and asking twice gives the same.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/OleBuilder.h"
#include "zro/containers/ole/OleCompFile.h"
#include "zro/containers/ole/OlePropertySet.h"
#include "zro/containers/ole/OleSummaryInformation.h"
#include "zro/values/ZRValue.h"

#include "fuzz/Input.h"

namespace {

using ZroCommon::JZStreamIOobj;
using ZroCommon::OleCompFile;
using ZroCommon::OlePropertySet;
using ZroCommon::OleSummaryInformation;
using ZroCommon::UnicodeString;
using ZroCommon::ZRValue;
using ZroCommon::fuzzing::require;

void askSummary(OleCompFile& file, std::size_t size) {
    OleSummaryInformation summary;
    const int result = summary.initSummaryInformation(&file);
    require(result == 1 || result == -1);
    for (unsigned long id = 0; id < 22; ++id) {
        ZRValue value;
        ZRValue again;
        const int found = summary.getProperty(id, value);
        require(found == 1 ? value.isInteger() || value.isString() : found == -1);
        require(summary.getProperty(id, again) == found);
        require(value.getStringValue() == again.getStringValue());
        require(static_cast<std::size_t>(value.getStringValue().length()) <= size);
    }
    OlePropertySet set;
    set.init(&file);
    ZRValue title;
    const bool hasTitle = result == 1 && summary.getProperty(2, title) == 1;
    require(set.getTitle() == (hasTitle ? title.getStringValue() : UnicodeString()));
    summary.getSummaryInformation();
}

void askDocumentSummary(OleCompFile& file, std::size_t size) {
    OleSummaryInformation summary;
    summary.initDocumentSummaryInformation(&file);
    std::vector<UnicodeString> links;
    summary.getHyperLinks(links);
    std::size_t bytes = 0;
    for (const UnicodeString& link : links) {
        require(!link.isEmpty() && link.indexOf(u'\0') < 0);
        bytes += 8 + 2 * static_cast<std::size_t>(link.length());
    }
    require(bytes <= size);
}

}  // namespace

// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    std::istringstream stream(ZroCommon::testing::OleBuilder()
                                  .stream(u"\5SummaryInformation", bytes)
                                  .stream(u"\5DocumentSummaryInformation", bytes)
                                  .build()
                                  .bytes);
    JZStreamIOobj io(&stream);
    OleCompFile file;
    require(file.OLEopen(&io));
    askSummary(file, size);
    askDocumentSummary(file, size);
    return 0;
}
