#include "zro/xml/ZRXmlUtil.h"

#include "zro/vocabulary/ZRNameTable.h"

namespace ZroCommon {
namespace {

// Where the prefix ends, 0 when there is none: a colon at the very start counts as no separator of
// a prefix.
int32_t prefixLength(const UnicodeString& qName) {
    const int32_t colon = qName.indexOf(u':');
    return colon > 0 ? colon : 0;
}

}  // namespace

UnicodeString ZRXmlUtil::getPrefixFromQNameStr(const UnicodeString& qName) {
    return {qName, 0, prefixLength(qName)};
}

UnicodeString ZRXmlUtil::getLocalPartFromQNameStr(const UnicodeString& qName) {
    return {qName, qName.indexOf(u':') + 1};
}

ZRName ZRXmlUtil::getPrefixFromQName(ZRName qName) {
    const UnicodeString& text = ZRNameTable::getSharedNameString(qName);
    return prefixLength(text) == 0 ? ZRName() : ZRName(getPrefixFromQNameStr(text));
}

ZRName ZRXmlUtil::getLocalPartFromQName(ZRName qName) {
    const UnicodeString& text = ZRNameTable::getSharedNameString(qName);
    return text.indexOf(u':') < 0 ? qName : ZRName(getLocalPartFromQNameStr(text));
}

ZRName ZRXmlUtil::makeQName(ZRName prefix, ZRName localName) {
    return prefix.isEmpty() ? localName : ZRName(makeQNameStr(prefix, localName));
}

UnicodeString ZRXmlUtil::makeQNameStr(const UnicodeString& prefix, const UnicodeString& localName) {
    if (prefix.isEmpty()) {
        return localName;
    }
    UnicodeString qName(prefix);
    return qName.append(u':').append(localName);
}

UnicodeString ZRXmlUtil::makeNSQNameStr(const UnicodeString& namespaceUri,
                                        const UnicodeString& localName) {
    if (namespaceUri.isEmpty()) {
        return localName;
    }
    if (namespaceUri == ZRName(ZRN_ns_xml).toString()) {
        return makeQNameStr(u"xml", localName);
    }
    if (namespaceUri == ZRName(ZRN_ns_xmlns).toString()) {
        return localName == u"xmlns" ? localName : makeQNameStr(u"xmlns", localName);
    }
    UnicodeString expanded(u"{");
    // On purpose: the colon stands behind the brace.
    return expanded.append(namespaceUri).append(u"}:").append(localName);
}

}  // namespace ZroCommon
