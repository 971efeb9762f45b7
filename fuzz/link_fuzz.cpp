// A text read by each reader of links.
#include <cstddef>
#include <cstdint>
#include <span>

#include "zro/values/ZRValue.h"

#include "fuzz/Utf16Input.h"

namespace {

using namespace ZroCommon;  // NOLINT(google-build-using-namespace)

void checkDestination(const ZRValue& value) {
    fuzz::require(value.isNull() || value.isCompound());
    const ZRValue view = value.getNamedItem(ZRN_view);
    fuzz::require(view.isNull() || view.isName());
    const ZRValue page = value.getNamedItem(ZRN_page);
    fuzz::require(page.isNull() || page.isInteger());
    const ZRValue zoom = value.getNamedItem(ZRN_zoom);
    fuzz::require(zoom.isNull() || zoom.getRealValue(ZRValueUnitNumber) > 0);
    for (const ZRName side : {ZRN_left, ZRN_top, ZRN_width, ZRN_height}) {
        const ZRValue length = value.getNamedItem(side);
        fuzz::require(length.isNull() || !length.getLengthValue().isAuto());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const UnicodeString text = fuzz::utf16(std::span(data, size));
    checkDestination(ZRValue::parsePDFOpenParameters(text));
    checkDestination(ZRValue::parseXlinkHref(text));
    checkDestination(ZRValue::parseInternalDestination(text, 0));
    const ZRValue type = ZRValue::parseDestinationType(text);
    fuzz::require(type.getNamedItem(ZRN_EMPTY).isName());
    const bool hasFragment = text.indexOf(u'#') >= 0;
    fuzz::require(ZRValue::parseExcelOpenParameters(text).isCompound() == hasFragment);
    fuzz::require(hasFragment
                  || ZRValue::parseUriFragmentParameters(text, true).toString() == text);
    ZRValue::parseUriFragmentParameters(text, false);
    return 0;
}
