#include "zro/dom/ZRDocumentFragment.h"

#include "zro/dom/ZRDocument.h"
#include "zro/dom/internal/TreeCopy.h"

namespace ZroCommon {

ZRDocumentFragment::~ZRDocumentFragment() = default;

unsigned int ZRDocumentFragment::getTypeID() const {
    return getStaticTypeID();
}

bool ZRDocumentFragment::isA(unsigned int typeID) const {
    return typeID == getStaticTypeID() || ZRNode::isA(typeID);
}

UnicodeString ZRDocumentFragment::getTypeName() const {
    return u"ZRDocumentFragment";
}

ZRPtr<ZRNode> ZRDocumentFragment::cloneNode(bool deep) {
    ZRDocument* document = getOwnerDocument();
    const ZRPtr<ZRDocumentFragment> copy(document != nullptr
                                             ? document->createDocumentFragment()
                                             : ZRPtr(new ZRDocumentFragment(nullptr)));
    if (deep && copy.get() != nullptr) {
        internal::appendClones(*this, *copy);
    }
    return copy;
}

}  // namespace ZroCommon
