#include "zro/xml/ZRXmlParser.h"

#include "zro/xml/internal/MathMLEntities.h"

namespace ZroCommon {

ZRXmlParser::~ZRXmlParser() = default;

unsigned int ZRXmlParser::getTypeID() const {
    return getStaticTypeID();
}

bool ZRXmlParser::isA(unsigned int typeID) const {
    return typeID == getStaticTypeID() || ZRRCObject::isA(typeID);
}

UnicodeString ZRXmlParser::getTypeName() const {
    return u"ZRXmlParser";
}

void ZRXmlParser::setStreamType(const UnicodeString& /*contentType*/,
                                const UnicodeString& /*extension*/) {}

void ZRXmlParser::setCallbackError(void (* /*callback*/)(const ZRError&, void*),
                                   void* /*userData*/) {}

UnicodeString ZRXmlParser::getBaseUri() const {
    return {};
}

void ZRXmlParser::addMathMLEntityMap() {}

void ZRXmlParser::rewind() {}

void ZRXmlParser::setLimits(const ZRLimits& /*limits*/) {}

const UnicodeString& ZRXmlParser::getMathMLEntity(ZRName name) {
    return internal::mathMLEntity(name);
}

}  // namespace ZroCommon
