// A text read by each reader of links.
#include <cstddef>
#include <cstdint>
#include <span>

#include "zro/values/ZRValue.h"

#include "fuzz/Input.h"

namespace {

using namespace ZroCommon;  // NOLINT(google-build-using-namespace)

void checkDestination(const ZRValue& value) {
    fuzzing::require(value.isNull() || value.isCompound());
    const ZRValue view = value.getNamedItem(ZRN_view);
    fuzzing::require(view.isNull() || view.isName());
    const ZRValue page = value.getNamedItem(ZRN_page);
    fuzzing::require(page.isNull() || page.isInteger());
    const ZRValue zoom = value.getNamedItem(ZRN_zoom);
    fuzzing::require(zoom.isNull() || zoom.getRealValue(ZRValueUnitNumber) > 0);
    for (const ZRName side : {ZRN_left, ZRN_top, ZRN_width, ZRN_height}) {
        const ZRValue length = value.getNamedItem(side);
        fuzzing::require(length.isNull() || !length.getLengthValue().isAuto());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzzing::ExactText exact(fuzzing::utf16(std::span(data, size)));
    const UnicodeString& text = exact.text();
    checkDestination(ZRValue::parsePDFOpenParameters(text));
    checkDestination(ZRValue::parseXlinkHref(text));
    checkDestination(ZRValue::parseInternalDestination(text, 0));
    const ZRValue type = ZRValue::parseDestinationType(text);
    fuzzing::require(type.getNamedItem(ZRN_EMPTY).isName());
    const bool hasFragment = text.indexOf(u'#') >= 0;
    fuzzing::require(ZRValue::parseExcelOpenParameters(text).isCompound() == hasFragment);
    fuzzing::require(hasFragment
                     || ZRValue::parseUriFragmentParameters(text, true).toString() == text);
    ZRValue::parseUriFragmentParameters(text, false);
    return 0;
}
