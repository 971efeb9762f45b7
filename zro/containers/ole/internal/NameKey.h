#pragma once

#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// A name that is looked for among many, without regard to case: two names are the same when their
/// upper-case forms are.
class NameKey {
public:
    /// \param name  in the default code page
    explicit NameKey(const char* name);

    bool matches(const UnicodeString& name) const;

private:
    UnicodeString m_upper;
};

}  // namespace ZroCommon::internal
