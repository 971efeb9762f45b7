#pragma once

#include "zro/foundation/ZRRCObject.h"

namespace ZroCommon::testing {

/// An object that tells how many of its class live.
class Probe : public ZRRCObject {
public:
    static inline int living = 0;

    Probe() { ++living; }
    Probe(const Probe&) = delete;
    Probe& operator=(const Probe&) = delete;
    ~Probe() override { --living; }
    unsigned int getTypeID() const override { return 7; }
    UnicodeString getTypeName() const override { return u"Probe"; }

    using ZRRCObject::clearRefCount;
    using ZRRCObject::decrementRefCount;
};

}  // namespace ZroCommon::testing
