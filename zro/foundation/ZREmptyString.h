#pragma once

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"

namespace ZroCommon {

/// The empty text as a value that can be handed out by reference.
class ZRO_API ZREmptyString : public UnicodeString {
public:
    ZREmptyString() = default;
    ZREmptyString(const ZREmptyString&) = default;
    ~ZREmptyString() override;
    ZREmptyString& operator=(const ZREmptyString& other) {
        UnicodeString::operator=(other);
        return *this;
    }

    /// Ready before any ordinary static initialiser runs, of the library or of its clients.
    static const ZREmptyString EMPTY_VALUE;
};

/// A bogus text: "no value" where the empty text is a value.
class ZRO_API ZRBogusString : public UnicodeString {
public:
    ZRBogusString() = default;
    ZRBogusString(const ZRBogusString&) = default;
    ~ZRBogusString() override;
    ZRBogusString& operator=(const ZRBogusString& other) {
        UnicodeString::operator=(other);
        return *this;
    }

    /// The bogus constant; ready as early as `ZREmptyString::EMPTY_VALUE`.
    static const ZRBogusString BOGUS_VALUE;

private:
    struct SetBogus {};
    explicit ZRBogusString(SetBogus) { setToBogus(); }
};

}  // namespace ZroCommon
