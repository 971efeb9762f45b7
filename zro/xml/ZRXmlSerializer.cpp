#include "zro/xml/ZRXmlSerializer.h"

namespace ZroCommon {

ZRXmlSerializer::~ZRXmlSerializer() = default;

unsigned int ZRXmlSerializer::getTypeID() const {
    return getStaticTypeID();
}

bool ZRXmlSerializer::isA(unsigned int typeID) const {
    return typeID == getStaticTypeID() || ZRRCObject::isA(typeID);
}

UnicodeString ZRXmlSerializer::getTypeName() const {
    return u"ZRXmlSerializer";
}

}  // namespace ZroCommon
