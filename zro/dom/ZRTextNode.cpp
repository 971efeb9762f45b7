#include "zro/dom/ZRTextNode.h"

#include "zro/dom/ZRDocument.h"
#include "zro/xml/internal/TextBuffer.h"

namespace ZroCommon {
namespace {

/// A text that shares a buffer much larger than itself would keep all of it.
UnicodeString withoutSlack(const UnicodeString& text) {
    const int32_t length = text.length();
    if (text.isBogus() || text.getCapacity() - length <= 32 + length / 8) {
        return text;
    }
    return {text.getBuffer(), length};
}

}  // namespace

ZRTextNode::ZRTextNode(ZRDocument* ownerDocument, const UnicodeString& data)
    : ZRNode(ownerDocument), m_data(withoutSlack(data)) {}

ZRTextNode::ZRTextNode(std::u16string_view data, ZRDocument& ownerDocument)
    : ZRNode(&ownerDocument), m_data(internal::makeText(data)) {}

ZRTextNode::~ZRTextNode() = default;

unsigned int ZRTextNode::getTypeID() const {
    return getStaticTypeID();
}

bool ZRTextNode::isA(unsigned int typeID) const {
    return typeID == getStaticTypeID() || ZRNode::isA(typeID);
}

UnicodeString ZRTextNode::getTypeName() const {
    return u"ZRTextNode";
}

ZRValue ZRTextNode::getNodeValue() const {
    return m_data;
}

void ZRTextNode::setNodeValue(const ZRValue& value) {
    m_data = value.toString();
}

ZRPtr<ZRNode> ZRTextNode::cloneNode(bool /*deep*/) {
    // On purpose: the copy of a processing instruction is a text node.
    if (ZRDocument* document = getOwnerDocument()) {
        return document->createTextNode(m_data);
    }
    return new ZRTextNode(nullptr, m_data);
}

void ZRTextNode::setText(const UnicodeString& text) {
    m_data = text;
}

int ZRTextNode::getLength() const {
    return m_data.length();
}

const UnicodeString& ZRTextNode::getData() const {
    return m_data;
}

void ZRTextNode::setData(const UnicodeString& data) {
    m_data = data;
}

ZRPINode::~ZRPINode() = default;

unsigned int ZRPINode::getTypeID() const {
    return getStaticTypeID();
}

bool ZRPINode::isA(unsigned int typeID) const {
    return typeID == getStaticTypeID() || ZRTextNode::isA(typeID);
}

UnicodeString ZRPINode::getTypeName() const {
    return u"ZRPINode";
}

}  // namespace ZroCommon
