#include "zro/foundation/ZRObjectBase.h"

namespace ZroCommon {

ZRObjectBase::~ZRObjectBase() = default;

bool ZRObjectBase::isA(unsigned int typeID) const {
    return typeID == getStaticTypeID();
}

}  // namespace ZroCommon
