#include "zro/dom/ZRNodeList.h"

#include "zro/dom/ZRNodeIterator.h"

namespace ZroCommon {

ZRNodeIterable::~ZRNodeIterable() = default;

unsigned int ZRNodeIterable::getTypeID() const {
    return getStaticTypeID();
}

bool ZRNodeIterable::isA(unsigned int typeID) const {
    return typeID == getStaticTypeID() || ZRRCObject::isA(typeID);
}

UnicodeString ZRNodeIterable::getTypeName() const {
    return u"ZRNodeIterable";
}

ZRNodeIterator ZRNodeIterable::getIterator() {
    return ZRNodeIterator(this);
}

ZRNodeList::~ZRNodeList() = default;

unsigned int ZRNodeList::getTypeID() const {
    return getStaticTypeID();
}

bool ZRNodeList::isA(unsigned int typeID) const {
    // On purpose: the base class is not in the list.
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    return typeID == getStaticTypeID() || ZRRCObject::isA(typeID);
}

UnicodeString ZRNodeList::getTypeName() const {
    return u"ZRNodeList";
}

int ZRNodeList::getLength() {
    int length = 0;
    for (ZRNode* node = getFirstNode(); node != nullptr; node = getNextNode(node)) {
        ++length;
    }
    return length;
}

ZRNode* ZRNodeList::item(int index) {
    if (index < 0) {
        return nullptr;
    }
    ZRNode* node = getFirstNode();
    for (; node != nullptr && index > 0; --index) {
        node = getNextNode(node);
    }
    return node;
}

ZRNamedNodeMap::~ZRNamedNodeMap() = default;

unsigned int ZRNamedNodeMap::getTypeID() const {
    return getStaticTypeID();
}

bool ZRNamedNodeMap::isA(unsigned int typeID) const {
    // On purpose: the base class is not in the list.
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    return typeID == getStaticTypeID() || ZRRCObject::isA(typeID);
}

UnicodeString ZRNamedNodeMap::getTypeName() const {
    return u"ZRNamedNodeMap";
}

}  // namespace ZroCommon
