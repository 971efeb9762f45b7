// What links say behind their "#": the parameters of PDF files and spreadsheets, plain key=value
// lists, and destinations within the document.

#include "zro/values/ZRValue.h"

#include <unicode/locid.h>

#include "zro/uri/ZRUri.h"
#include "zro/values/internal/OpenParameters.h"
#include "zro/values/internal/ValueReader.h"

namespace ZroCommon {
namespace {

using internal::TokenKind;
using internal::ValueReader;

/// A reference, parted at its first "#".
struct Reference {
    explicit Reference(const UnicodeString& text)
        : hash(text.indexOf(u'#')),
          uri(text, 0, hash < 0 ? text.length() : hash),
          fragment(hash < 0 ? UnicodeString() : UnicodeString(text, hash + 1)) {}

    bool hasFragment() const { return hash >= 0; }
    bool isFragmentAlone() const { return hash == 0; }

    int32_t hash;
    UnicodeString uri;
    UnicodeString fragment;
};

void setDefault(ZRValue& target, ZRName item, const ZRValue& value) {
    if (target.getNamedItem(item).isNull()) {
        target.setNamedItem(item, value);
    }
}

void setDefaults(ZRValue& target) {
    if (target.getNamedItem(ZRN_nameddest).isEmpty()) {
        setDefault(target, ZRN_page, 1);
        setDefault(target, ZRN_view, ZRN_xyz);
    }
}

// A name is a destination, unless it is the key of a parameter.
void readXlinkFragment(const UnicodeString& fragment, ZRValue& target) {
    ValueReader reader(fragment);
    const ZRValue value = reader.nextValue();
    if (!value.isName()) {
        return;
    }
    if (reader.scanSeparator(u'=')) {
        internal::readOpenParameters(fragment, target);
    } else {
        target.setNamedItem(ZRN_nameddest, value);
    }
}

void readFragmentAlone(UnicodeString text, ZRValue& target) {
    if (text.trim().startsWith(u'#')) {
        internal::readOpenParameters(text.tempSubString(1), target);
    }
}

// A percentage by its hundred, a number as it is; NaN for anything else.
float zoomOf(const ZRValue& value) {
    return value.getRealValue(value.isPercentage() ? ZRValueUnitPercent : ZRValueUnitNumber);
}

ZRValue withZoom(ZRName type, float zoom) {
    ZRValue destination(type);
    if (zoom > 0) {
        destination.setNamedItem(ZRN_zoom, ZRValue(zoom, ZRValueUnitNumber));
    }
    return destination;
}

// A key and its value, each as it was before it was escaped.
void readPlainParameter(const UnicodeString& item, bool lowerKeys, ZRValue& target) {
    const int32_t equals = item.indexOf(u'=');
    if (equals <= 0) {
        return;
    }
    UnicodeString key = ZRUri::unescape(item.tempSubString(0, equals)).trim();
    if (lowerKeys) {
        key.toLower(icu::Locale::getRoot());
    }
    target.setNamedItem(ZRName(key),
                        ZRValue(ZRUri::unescape(item.tempSubString(equals + 1)).trim()));
}

}  // namespace

ZRValue ZRValue::parsePDFOpenParameters(const UnicodeString& text) {
    const Reference reference(text);
    if (reference.isFragmentAlone()) {
        return {};
    }
    ZRValue result;
    result.setNamedItem(ZRN_uri, ZRValue(reference.uri));
    internal::readOpenParameters(reference.fragment, result);
    setDefaults(result);
    return result;
}

ZRValue ZRValue::parseXlinkHref(const UnicodeString& text) {
    if (text.isEmpty()) {
        return {};
    }
    const Reference reference(text);
    ZRValue result;
    if (!reference.isFragmentAlone()) {
        result.setNamedItem(ZRN_uri, ZRValue(reference.uri));
    }
    readXlinkFragment(reference.fragment, result);
    setDefaults(result);
    return result;
}

ZRValue ZRValue::parseInternalDestination(const UnicodeString& text, int /*flags*/) {
    ValueReader reader(text);
    const ZRValue value = reader.nextValue();
    ZRValue result;
    if (value.isName()) {
        result.setNamedItem(ZRN_nameddest, value);
    } else if (reader.token().kind == TokenKind::kNumber) {
        result.setNamedItem(ZRN_page, value.getIntegerValue());
    } else {
        readFragmentAlone(text, result);
        return result;
    }
    if (reader.skipSeparator(u'#')) {
        internal::readOpenParameters(internal::textOf(reader.rest()), result);
    }
    return result;
}

ZRValue ZRValue::parseDestinationType(const UnicodeString& text) {
    ValueReader reader(text);
    UnicodeString item;
    reader.nextSeparated(u' ', item);
    ZRValue type = parse(item.toLower(icu::Locale::getRoot()));
    if (internal::isFitName(type)) {
        return type;
    }
    const ZRNameEnum name = type.getNameValue();
    if (name >= ZRN_xyz && name <= ZRN_xyz_top) {
        return withZoom(name, zoomOf(reader.nextValue()));
    }
    return withZoom(ZRN_xyz_top, zoomOf(type));
}

ZRValue ZRValue::parseExcelOpenParameters(const UnicodeString& text) {
    const Reference reference(text);
    if (!reference.hasFragment()) {
        return {};
    }
    ValueReader reader(reference.fragment);
    ZRValue result;
    result.makeCompound();
    UnicodeString item;
    internal::Parameter parameter;
    for (reader.nextSeparated(u'&', item); !item.isEmpty(); reader.nextSeparated(u'&', item)) {
        if (!internal::readParameter(item, parameter)
            || (parameter.key != ZRN_sheet && parameter.key != ZRN_chart)) {
            continue;
        }
        const ZRValue value = parse(parameter.argument);
        if (value.isInteger() && value.isNumber() && value.getIntegerValue() >= 0) {
            result.setNamedItem(parameter.key, value);
        }
    }
    return result;
}

ZRValue ZRValue::parseUriFragmentParameters(const UnicodeString& text, bool lowerKeys) {
    const Reference reference(text);
    ZRValue result = reference.isFragmentAlone() ? ZRValue() : ZRValue(reference.uri);
    const UnicodeString& items = reference.fragment;
    for (int32_t start = 0; start < items.length();) {
        const int32_t ampersand = items.indexOf(u'&', start);
        const int32_t end = ampersand < 0 ? items.length() : ampersand;
        readPlainParameter(items.tempSubStringBetween(start, end), lowerKeys, result);
        start = end + 1;
    }
    return result;
}

}  // namespace ZroCommon
