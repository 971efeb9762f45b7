#pragma once

#include <cstdint>

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"

namespace ZroCommon {

class ZRValue;

/// A name as a number: 0 is the empty name, 1 to 1582 are the builtin names below, and names that
/// come in with documents are numbered from 1583 in the order of first use.
enum ZRNameEnum : std::int32_t {
    ZRN_EMPTY = 0,
#define ZR_NAME(enumerator, text) ZRN_##enumerator,
#include "zro/vocabulary/BuiltinNames.inc"
    ZRN_LAST_BUILTIN = 1582,
};

/// An interned name: one number, compared as a number and copied freely.
///
/// Texts are exact, case and all. Any thread may make and read names. A number is not checked:
/// one that stands for nothing has the empty text.
class ZRO_API ZRName {
public:
    ZRName() = default;
    ZRName(ZRNameEnum number) : m_number(number) {}

    /// Interns the text in the shared table, for as long as that lives.
    ZRName(const UnicodeString& text);

    /// The stored number of a name value; any other value has its text interned.
    ZRName(const ZRValue& value);

    operator ZRNameEnum() const { return m_number; }

    /// True for the builtin names, the empty one included.
    bool isBuiltin() const { return m_number >= 0 && m_number <= ZRN_LAST_BUILTIN; }
    bool isEmpty() const { return m_number == ZRN_EMPTY; }

    /// The text, which lives as long as the library's tables (until `cleanup`).
    const UnicodeString& toString() const;
    operator const UnicodeString&() const { return toString(); }

    /// A name made of the prefix ("N" for an empty one), "-" and the next free number of the shared
    /// table. A name of that text which exists already is what comes back.
    static ZRName generateID(const UnicodeString& prefix);

    friend bool operator==(ZRName left, ZRName right) { return left.m_number == right.m_number; }
    friend bool operator==(ZRName left, ZRNameEnum right) { return left.m_number == right; }
    friend bool operator==(ZRNameEnum left, ZRName right) { return left == right.m_number; }

private:
    ZRNameEnum m_number = ZRN_EMPTY;
};

}  // namespace ZroCommon
