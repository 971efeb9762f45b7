#include "zro/foundation/ZRRCObject.h"

namespace ZroCommon {

ZRRCObject::~ZRRCObject() = default;

bool ZRRCObject::isA(unsigned int typeID) const {
    return typeID == getStaticTypeID() || typeID == ZRObjectBase::getStaticTypeID();
}

void ZRRCObject::destroy() const {
    delete this;
}

void ZRRCObject::DebugPrintInstanceCount(const char* /*title*/) {}

void ZRRCObject::DebugPrintInstanceId(const char* /*title*/, int /*instance*/) {}

}  // namespace ZroCommon
