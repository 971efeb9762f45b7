#pragma once

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"

namespace ZroCommon {

/// Root of every polymorphic object of the library, with a hand-made run-time type scheme: each
/// class has a fixed 32-bit ID, and `isA` compares against a flat list of IDs. No RTTI is needed
/// and no chain is walked.
class ZRO_API ZRObjectBase {
public:
    ZRObjectBase() = default;
    ZRObjectBase(const ZRObjectBase&) = default;
    virtual ~ZRObjectBase();
    ZRObjectBase& operator=(const ZRObjectBase&) = default;

    static unsigned int getStaticTypeID() { return 0xA4EBD8C4U; }

    /// The ID of the object's own class.
    virtual unsigned int getTypeID() const = 0;

    /// True when `typeID` is the ID of the object's class or of a base that its class lists.
    virtual bool isA(unsigned int typeID) const;

    /// The name of the object's own class.
    virtual UnicodeString getTypeName() const = 0;
};

}  // namespace ZroCommon
